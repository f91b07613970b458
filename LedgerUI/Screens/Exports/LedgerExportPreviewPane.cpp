#include "LedgerUI/Screens/Exports/LedgerExportPreviewPane.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr std::array figureKeys{"preview.transactions", "preview.entries", "preview.accounts", "preview.receipts"};

TextLabel* paragraph(TypeStep step, Token tone, QWidget* parent)
{
    auto* label = new TextLabel(step, tone, parent);
    label->setWordWrap(true);
    return label;
}

}

LedgerExportPreviewPane::LedgerExportPreviewPane(QWidget* parent) : QScrollArea{parent}
{
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    auto* body = new QWidget(this);
    setWidget(body);
    m_title = new TextLabel(TypeStep::body, Token::text, body);
    m_title->setBold(true);
    auto* rows = new QVBoxLayout(body);
    rows->setContentsMargins(Space::dialogMargin, Space::step4, Space::dialogMargin, Space::step4);
    rows->setSpacing(Space::step2);
    rows->addWidget(m_title);
    for (std::size_t at = 0; at < m_figures.size(); ++at) {
        m_figures[at] = {new TextLabel(TypeStep::body, Token::text, body),
                         new TextLabel(TypeStep::body, Token::text, body)};
        m_figures[at].count->setObjectName(QString::fromLatin1(figureKeys[at]));
        m_figures[at].count->setBold(true);
        auto* row = new QHBoxLayout;
        row->addWidget(m_figures[at].name, 1);
        row->addWidget(m_figures[at].count);
        rows->addLayout(row);
        rows->addWidget(new Line(Qt::Horizontal, body));
    }
    m_rows = paragraph(TypeStep::small, Token::text2, body);
    m_fileLabel = new TextLabel(TypeStep::small, Token::text2, body);
    m_file = paragraph(TypeStep::body, Token::text, body);
    m_file->setObjectName(QStringLiteral("exportFileName"));
    m_file->setBold(true);
    m_recheck = paragraph(TypeStep::small, Token::text2, body);
    rows->addWidget(m_rows);
    rows->addStretch(1);
    rows->addWidget(m_fileLabel);
    rows->addWidget(m_file);
    rows->addWidget(m_recheck);
}

QSize LedgerExportPreviewPane::sizeHint() const
{
    const int width = this->width();
    return {width, widget()->layout()->totalHeightForWidth(width)};
}

void LedgerExportPreviewPane::present(const std::optional<LedgerExportPreview>& counts, bool isCounting,
                                      const QString& fileName)
{
    const auto& locale = InterfaceLanguage::tag();
    const auto shown = counts.value_or(LedgerExportPreview{});
    const std::array figures{shown.transactionCount, shown.entryCount, shown.accountCount, shown.receiptCount};
    m_title->setText(word(exportWords(), "preview"));
    for (std::size_t at = 0; at < m_figures.size(); ++at) {
        m_figures[at].name->setText(word(exportWords(), figureKeys[at]));
        m_figures[at].count->setText(counts ? qString(groupedNumber(figures[at], locale)) : QStringLiteral("–"));
        m_figures[at].count->setTone(isCounting ? Token::text2 : Token::text);
    }
    m_rows->setText(word(exportWords(), "rows"));
    m_fileLabel->setText(word(exportWords(), "fileName"));
    m_file->setText(fileName);
    m_recheck->setText(word(exportWords(), "recheck"));
}

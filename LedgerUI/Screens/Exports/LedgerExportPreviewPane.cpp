#include "LedgerUI/Screens/Exports/LedgerExportPreviewPane.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Exports/ExportWords.h"
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

LedgerExportPreviewPane::LedgerExportPreviewPane(QWidget* parent) : QWidget{parent}
{
    setAttribute(Qt::WA_StyledBackground); // its own ground, as a pane of the dialog
    m_title = new TextLabel(TypeStep::body, Token::text, this);
    m_title->setBold(true);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(Space::dialogMargin, Space::step4, Space::dialogMargin, Space::step4);
    rows->setSpacing(Space::step2);
    rows->addWidget(m_title);
    for (std::size_t at = 0; at < m_figures.size(); ++at) {
        m_figures[at] = {new TextLabel(TypeStep::body, Token::text, this),
                         new TextLabel(TypeStep::body, Token::text, this)};
        m_figures[at].count->setObjectName(QString::fromLatin1(figureKeys[at]));
        m_figures[at].count->setBold(true);
        auto* row = new QHBoxLayout;
        row->addWidget(m_figures[at].name, 1);
        row->addWidget(m_figures[at].count);
        rows->addLayout(row);
        rows->addWidget(new Line(Qt::Horizontal, this));
    }
    m_rows = paragraph(TypeStep::small, Token::text2, this);
    m_fileLabel = new TextLabel(TypeStep::small, Token::text2, this);
    m_file = paragraph(TypeStep::body, Token::text, this);
    m_file->setObjectName(QStringLiteral("exportFileName"));
    m_file->setBold(true);
    m_recheck = paragraph(TypeStep::small, Token::text2, this);
    rows->addWidget(m_rows);
    rows->addStretch(1);
    rows->addWidget(m_fileLabel);
    rows->addWidget(m_file);
    rows->addWidget(m_recheck);
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

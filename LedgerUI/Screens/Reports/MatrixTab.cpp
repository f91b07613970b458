#include "LedgerUI/Screens/Reports/MatrixTab.h"

#include <limits>

#include <QCheckBox>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QVBoxLayout>

#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Reports/ReportWords.h"
#include "LedgerUI/Screens/Reports/CurrencySegments.h"
#include "LedgerUI/Screens/Reports/ReportTable.h"
#include "LedgerUI/Theme/Space.h"

namespace {

TextLabel* title(QWidget* parent)
{
    auto* label = new TextLabel(TypeStep::section, Token::text, parent);
    label->setContentsMargins(Space::pageMargin, Space::step3, Space::pageMargin, Space::step2);
    return label;
}

}

MatrixTab::MatrixTab(QWidget* parent) : ReportTab{parent}
{
    setObjectName(QStringLiteral("matrixTab"));
    auto* strip = new QWidget(this);
    strip->setFixedHeight(Space::filterRow);
    m_currency = new CurrencySegments(QStringLiteral("matrixCurrency"), strip);
    m_hides = new QCheckBox(strip);
    m_hides->setObjectName(QStringLiteral("matrixHides"));
    auto* stripRow = new QHBoxLayout(strip);
    stripRow->setContentsMargins(Space::pageMargin, 0, Space::pageMargin, 0);
    stripRow->addWidget(m_currency);
    stripRow->addStretch(1);
    stripRow->addWidget(m_hides);

    auto* scroll = new QScrollArea(this);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* body = new QWidget(scroll);
    m_movementsTitle = title(body);
    m_movements = new ReportTable(QStringLiteral("movementTable"), RowDelegate::Density::oneLine, body);
    m_monthEndsTitle = title(body);
    m_monthEnds = new ReportTable(QStringLiteral("monthEndTable"), RowDelegate::Density::oneLine, body);
    auto* bodyRows = new QVBoxLayout(body);
    bodyRows->setContentsMargins(0, 0, 0, 0);
    bodyRows->setSpacing(0);
    for (auto* part : {static_cast<QWidget*>(m_movementsTitle), static_cast<QWidget*>(m_movements),
                       static_cast<QWidget*>(m_monthEndsTitle), static_cast<QWidget*>(m_monthEnds)})
        bodyRows->addWidget(part);
    for (auto* table : {m_movements, m_monthEnds})
        table->showWhole(std::numeric_limits<int>::max());
    bodyRows->addStretch(1);
    scroll->setWidget(body);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(strip);
    rows->addWidget(new Line(Qt::Horizontal, this));
    rows->addWidget(scroll, 1);
    bindParts();
}

void MatrixTab::bindParts()
{
    for (auto* table : {m_movements, m_monthEnds}) {
        connect(table, &ReportTable::backingWanted, this, &ReportTab::backingWanted);
        connect(table, &ReportTable::copied, this, &ReportTab::copied);
    }
    connect(m_currency, &CurrencySegments::currencyChosen, this, [this](const QString& code) {
        auto query = m_query;
        query.currency = code.toStdString();
        Q_EMIT queryWanted(query);
    });
    connect(m_hides, &QCheckBox::clicked, this, [this](bool isOn) {
        auto query = m_query;
        query.hidesStillColumns = isOn;
        Q_EMIT queryWanted(query);
    });
}

void MatrixTab::present(const ReportSheet& sheet, const ChartColors& colors)
{
    m_query = sheet.query;
    std::vector<std::string> codes;
    for (const auto& each : sheet.overview.currencies)
        codes.push_back(each.currency);
    m_currency->present(std::move(codes), m_query.currency);
    m_hides->setText(word(reportWords(), "matrix.hides"));
    m_hides->setChecked(m_query.hidesStillColumns);
    m_movementsTitle->setText(sheet.matrix.movements.name);
    m_monthEndsTitle->setText(sheet.matrix.monthEnds.name);
    m_movements->present(sheet.matrix.movements, colors);
    m_monthEnds->present(sheet.matrix.monthEnds, colors);
}

QList<QWidget*> MatrixTab::panes() const
{
    return {m_currency, m_movements, m_monthEnds};
}

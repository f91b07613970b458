#include "LedgerUI/Screens/Reports/FundsTab.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Reports/ReportWords.h"
#include "LedgerUI/Screens/Reports/CurrencySegments.h"
#include "LedgerUI/Screens/Reports/ReportTable.h"
#include "LedgerUI/Screens/Reports/TitledTables.h"
#include "LedgerUI/Theme/Space.h"

FundsTab::FundsTab(QWidget* parent) : ReportTab{parent}
{
    setObjectName(QStringLiteral("movementsTab"));
    auto* strip = new QWidget(this);
    strip->setFixedHeight(Space::filterRow);
    m_currency = new CurrencySegments(QStringLiteral("fundsCurrency"), strip);
    auto* stripRow = new QHBoxLayout(strip);
    stripRow->setContentsMargins(Space::pageMargin, 0, Space::pageMargin, 0);
    stripRow->addWidget(m_currency);
    stripRow->addStretch(1);
    m_tables = new TitledTables(this);
    m_sums = m_tables->addTable(QStringLiteral("fundSumTable"));
    m_list = m_tables->addTable(QStringLiteral("fundTable"));
    m_note = m_tables->addNote(QStringLiteral("fundNote"));
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(strip);
    rows->addWidget(new Line(Qt::Horizontal, this));
    rows->addWidget(m_tables, 1);
    bindParts();
}

void FundsTab::bindParts()
{
    for (auto* table : {m_sums, m_list}) {
        connect(table, &ReportTable::backingWanted, this, &ReportTab::backingWanted);
        connect(table, &ReportTable::copied, this, &ReportTab::copied);
    }
    connect(m_list, &ReportTable::rowOpened, this, [this](const QString& id) {
        const auto row = id.toStdString();
        Q_EMIT entryWanted(qString(FundMovementGrids::entryOf(row)));
    });
    connect(m_currency, &CurrencySegments::currencyChosen, this, [this](const QString& code) {
        auto query = m_query;
        query.currency = code.toStdString();
        Q_EMIT queryWanted(query);
    });
}

void FundsTab::present(const ReportSheet& sheet, const ChartColors& colors)
{
    m_query = sheet.query;
    std::vector<std::string> codes;
    for (const auto& each : sheet.overview.currencies)
        codes.push_back(each.currency);
    m_currency->present(std::move(codes), m_query.currency);
    const auto& funds = sheet.funds;
    m_tables->present(*m_sums, funds.sums, colors);
    m_tables->present(*m_list, funds.list, colors);
    const auto shown = funds.list.rows.size();
    const auto& locale = InterfaceLanguage::tag();
    if (funds.count == 0)
        m_note->setText(word(reportWords(), "funds.none"));
    else
        m_note->setText(
            word(reportWords(), "funds.latest", {groupedNumber(shown, locale), groupedNumber(funds.count, locale)}));
    m_note->setVisible(funds.count == 0 || funds.count > shown);
}

QList<QWidget*> FundsTab::panes() const
{
    QList<QWidget*> all{m_currency};
    for (auto* table : {m_sums, m_list}) {
        if (!table->isHidden())
            all.append(table);
    }
    return all;
}

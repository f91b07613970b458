#include "LedgerUI/Screens/Reports/ReportTab.h"

#include <utility>

#include "LedgerUI/Components/Chart/ChartView.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportGridModel.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportSorting.h"
#include "LedgerUI/Screens/Reports/CurrencySegments.h"
#include "LedgerUI/Screens/Reports/ReportTable.h"

void ReportTab::follow(const ReportTable& table)
{
    connect(&table, &ReportTable::backingWanted, this, &ReportTab::backingWanted);
    connect(&table, &ReportTable::copied, this, &ReportTab::copied);
    connect(&table, &ReportTable::wholeCopyWanted, this, &ReportTab::wholeCopyWanted);
    connect(&table, &ReportTable::saveWanted, this, &ReportTab::saveWanted);
    connect(&table, &ReportTable::sortWanted, this, [this, &table](const std::optional<ReportSort>& sort) {
        Q_EMIT queryWanted(ReportSorting::asked(m_query, table.grid().grid(), sort));
    });
}

void ReportTab::offerSaving(bool isOffered)
{
    for (auto* table : findChildren<ReportTable*>())
        table->offerSaving(isOffered);
}

void ReportTab::follow(const ChartView& chart, ReportTable& table, std::function<std::string(std::size_t slot)> rowOf)
{
    connect(&chart, &ChartView::menuWanted, &table,
            [&table, rowOf](std::size_t slot, QPoint place) { table.openRowMenu(rowOf(slot), place); });
    connect(&chart, &ChartView::copyWanted, &table,
            [&table, rowOf = std::move(rowOf)](std::size_t slot) { table.copyRow(rowOf(slot)); });
}

void ReportTab::follow(const CurrencySegments& currency)
{
    connect(&currency, &CurrencySegments::currencyChosen, this, [this](const QString& code) {
        auto query = m_query;
        query.currency = code.toStdString();
        Q_EMIT queryWanted(query);
    });
}

void ReportTab::presentCurrencies(CurrencySegments& currency, const ReportSheet& sheet)
{
    std::vector<std::string> codes;
    codes.reserve(sheet.overview.currencies.size());
    for (const auto& each : sheet.overview.currencies)
        codes.push_back(each.currency);
    currency.present(std::move(codes), sheet.query.currency);
}

#include "LedgerUI/Presentation/Reports/Sheets/ReportPart.h"

namespace {

std::vector<const ReportGrid*> allTables(const ReportSheet& sheet, ReportPart part)
{
    switch (part) {
    case ReportPart::overview:
        return {&sheet.currencies, &sheet.months, &sheet.largestExpenses, &sheet.largestIncome};
    case ReportPart::income:
        return {&sheet.trend.table, &sheet.trend.categories};
    case ReportPart::matrix:
        return {&sheet.matrix.movements, &sheet.matrix.monthEnds};
    case ReportPart::movements:
        return {&sheet.funds.sums, &sheet.funds.list};
    case ReportPart::summary:
        return {&sheet.own.accounts, &sheet.own.latest, &sheet.largestExpenses};
    }
    return {};
}

}

std::string_view ReportParts::idOf(ReportPart part)
{
    switch (part) {
    case ReportPart::overview:
        return "overview";
    case ReportPart::income:
        return "income";
    case ReportPart::matrix:
        return "matrix";
    case ReportPart::movements:
        return "movements";
    case ReportPart::summary:
        return "summary";
    }
    return {};
}

std::vector<const ReportGrid*> ReportParts::tables(const ReportSheet& sheet, ReportPart part)
{
    auto tables = allTables(sheet, part);
    std::erase_if(tables, [](const ReportGrid* table) { return table->rows.empty(); });
    return tables;
}

std::vector<std::string> ReportParts::currencies(const ReportSheet& sheet, ReportPart part)
{
    if (part != ReportPart::overview && part != ReportPart::summary)
        return {sheet.query.currency};
    std::vector<std::string> codes;
    codes.reserve(sheet.overview.currencies.size());
    for (const auto& each : sheet.overview.currencies)
        codes.push_back(each.currency);
    return codes;
}

#include "LedgerUI/Presentation/Reports/ReportPart.h"

namespace {

std::vector<ReportParts::Table> allTables(const ReportSheet& sheet, ReportPart part)
{
    switch (part) {
    case ReportPart::overview:
        return {{"currencies", &sheet.currencies},
                {"months", &sheet.months},
                {"expenses", &sheet.largestExpenses},
                {"income", &sheet.largestIncome}};
    case ReportPart::income:
        return {{"periods", &sheet.trend.table}, {"categories", &sheet.trend.categories}};
    case ReportPart::matrix:
        return {{"accounts", &sheet.matrix.movements}, {"monthEnds", &sheet.matrix.monthEnds}};
    case ReportPart::movements:
        return {{"fundSums", &sheet.funds.sums}, {ReportParts::fundMovements, &sheet.funds.list}};
    case ReportPart::summary:
        return {}; // it is only looked at
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

std::vector<ReportParts::Table> ReportParts::tables(const ReportSheet& sheet, ReportPart part)
{
    auto tables = allTables(sheet, part);
    std::erase_if(tables, [](const Table& table) { return table.grid->rows.empty(); });
    return tables;
}

std::vector<std::string> ReportParts::currencies(const ReportSheet& sheet, ReportPart part)
{
    if (part != ReportPart::overview)
        return {sheet.query.currency};
    std::vector<std::string> codes;
    for (const auto& each : sheet.overview.currencies)
        codes.push_back(each.currency);
    return codes;
}

#include "LedgerUI/Presentation/Reports/ReportPart.h"

namespace {

std::vector<const ReportGrid*> allGrids(const ReportSheet& sheet, ReportPart part)
{
    switch (part) {
    case ReportPart::overview:
        return {&sheet.currencies, &sheet.largestExpenses};
    case ReportPart::income:
        return {&sheet.trend.table, &sheet.trend.categories};
    case ReportPart::matrix:
        return {&sheet.matrix.movements, &sheet.matrix.monthEnds};
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
    }
    return {};
}

std::vector<const ReportGrid*> ReportParts::grids(const ReportSheet& sheet, ReportPart part)
{
    auto grids = allGrids(sheet, part);
    std::erase_if(grids, [](const ReportGrid* grid) { return grid->rows.empty(); });
    return grids;
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

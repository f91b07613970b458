#pragma once

#include "LedgerUI/Presentation/Reports/Grids/ReportGrid.h"
#include "LedgerUI/Presentation/Reports/ReportOverview.h"

/// The tables of the overview, each figure with the entries behind it.
namespace ReportOverviewGrids {

/// What the figures are about.
struct Frame {
    Period period;
    std::optional<std::set<std::string, std::less<>>> accountIDs;
    std::chrono::year_month_day firstDay; // of the books: where balances begin to add up
};

/// A row for each currency: opening, income, expense, net, other movements, closing and twelve month ends.
ReportGrid currencies(const ReportOverview& overview, const Frame& frame, std::string_view locale);

/// The months of the chart in figures, the newest first.
ReportGrid months(const ReportOverview& overview, const Frame& frame, std::string_view locale);

/// What was spent on or earned by, most first, in rows of two lines.
ReportGrid largestExpenses(const ReportOverview& overview, const Frame& frame, std::string_view locale);
ReportGrid largestIncome(const ReportOverview& overview, const Frame& frame, std::string_view locale);

}

#pragma once

#include <expected>

#include "LedgerUI/Presentation/Reports/Grids/ReportGrid.h"
#include "LedgerUI/Presentation/Reports/ReportQuery.h"

/// What a member who sees only some of the books is shown of them. There are no totals over accounts.
struct ReportOwnGrids {
    ReportGrid accounts; // a line for each account and currency: what was there, what came and went, what is left
    ReportGrid latest;   // the latest entries of the period

    static std::expected<ReportOwnGrids, ReportError> of(const ReportBooks& books, const ReportQuery& query,
                                                         std::string_view locale);
};

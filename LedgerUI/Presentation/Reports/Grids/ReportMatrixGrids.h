#pragma once

#include <expected>

#include "LedgerUI/Presentation/Reports/Grids/ReportGrid.h"
#include "LedgerUI/Presentation/Reports/ReportQuery.h"

/// Accounts by kind of movement, and accounts by month.
struct ReportMatrixGrids {
    ReportGrid movements; // of the period: opening, what moved and why, closing
    ReportGrid monthEnds; // balances at the end of six months, the last one holding the end of the period or today

    static std::expected<ReportMatrixGrids, ReportError> of(const ReportBooks& books, const ReportQuery& query,
                                                            std::string_view locale);
};

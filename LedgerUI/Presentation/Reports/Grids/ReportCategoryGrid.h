#pragma once

#include <expected>

#include "LedgerUI/Presentation/Reports/Grids/ReportGrid.h"
#include "LedgerUI/Presentation/Reports/ReportQuery.h"

namespace ReportCategoryGrids {

/// What one side of a period was booked to, most first: parents, each followed by its children, then the total. Each
/// with its share of the whole and its change against the period before and the same period of last year.
std::expected<ReportGrid, ReportError> categories(const ReportBooks& books, const ReportQuery& query,
                                                  const Period& period, std::string_view locale);

}

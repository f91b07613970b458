#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string_view>

#include "LedgerUI/Presentation/Reports/Grids/ReportGrid.h"
#include "LedgerUI/Presentation/Reports/ReportQuery.h"

/// Sorts the tables of reports by a column: figures by their value and those of each currency among themselves, names
/// as readers expect them. Parts stay below what they belong to, rows within their heading, totals at their place, and
/// cells without a value come last.
namespace ReportSorting {

/// Whether the table can be sorted by this column. Not by figures that are of a currency each.
bool isOffered(const ReportGrid& grid, std::size_t column);

/// What pressing a head leads to: its column, figures the largest first and those that take away by how much they take;
/// then the other way; then the books' order.
std::optional<ReportSort> pressed(const ReportGrid& grid, std::size_t column);
/// The next column that is offered and shown; after the last one the books' order.
std::optional<ReportSort> next(const ReportGrid& grid, const std::function<bool(std::size_t)>& isShown);
/// The other way around, where the table is sorted.
std::optional<ReportSort> turned(const ReportGrid& grid);

/// The same question with this table in another order; unset for that of the books.
ReportQuery asked(ReportQuery query, const ReportGrid& grid, const std::optional<ReportSort>& sort);

/// Puts a table in the books' order into the one that is asked for it, if there is one that it offers.
void apply(ReportGrid& grid, const ReportSorts& sorts, std::string_view locale);

}

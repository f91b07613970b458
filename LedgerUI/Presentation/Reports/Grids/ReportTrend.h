#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "LedgerUI/Presentation/Reports/Grids/ReportGrid.h"
#include "LedgerUI/Presentation/Reports/ReportQuery.h"

/// Income and expense over time, and by category in one part of it.
struct ReportTrend {
    Period::Span grain = Period::Span::month; // what the periods are
    std::vector<Period::Span> grains;         // on offer: those with no more periods than a chart can show
    std::vector<Period> periods;              // oldest first
    std::optional<std::size_t> chosen;        // the one that the categories are of; unset for all of them
    ChartData chart = {};
    ReportGrid table = {};      // newest first
    QString of = {};            // what the categories are of: "November 2026"
    ReportGrid categories = {}; // of the chosen side: parents, each followed by its children, and the total
};

namespace ReportTrends {

/// The periods of the trend: those of the asked grain that the page's period has, or the twelve up to it where it has
/// but one.
std::vector<Period> periodsOf(const Period& period, Period::Span grain, const ReportBooks& books,
                              std::chrono::year_month_day today);

/// The grain that suits a period when none is asked for.
Period::Span grainFor(const Period& period, const ReportBooks& books, std::chrono::year_month_day today);

/// The same period a year earlier: the same dates, of weeks the week 52 weeks before; nothing for all time.
std::optional<Period> yearBefore(const Period& period);

/// The change from one amount to another in tenths of a percent of the first, up to what is told of it; nothing where
/// there was nothing.
std::optional<std::int64_t> changeTenths(std::int64_t before, std::int64_t now);

/// The change from one amount to another, in tenths of a percent of the first: "+2.6 %"; a word where there was
/// nothing, a dash where there is nothing now either. Amounts without their signs' sense: more spent is an increase.
QString changeText(std::int64_t before, std::int64_t now, std::string_view locale);

std::expected<ReportTrend, ReportError> trend(const ReportBooks& books, const ReportQuery& query,
                                              std::string_view locale);

}

#pragma once

#include <chrono>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Calendar/Period.h"

/// Whole days that a report looks at, first and last included.
struct ReportRange {
    std::chrono::sys_days first;
    std::chrono::sys_days last;

    bool operator==(const ReportRange&) const = default;
};

namespace ReportRanges {

/// The days of a period as one range.
ReportRange of(const Period& period);

/// `whole` cut at the edges of days, weeks, months, quarters or years, the first and last part as long as `whole`
/// reaches. One part for all time and for dates; none when `whole` ends before it begins.
std::vector<ReportRange> cut(ReportRange whole, Period::Span span);

/// Whether the ranges follow each other day by day, with at least one day each.
bool areContiguous(const std::vector<ReportRange>& ranges);

}

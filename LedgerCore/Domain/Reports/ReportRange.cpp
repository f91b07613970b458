#include "LedgerCore/Domain/Reports/ReportRange.h"

#include <algorithm>
#include <functional>

using std::chrono::days;

ReportRange ReportRanges::of(const Period& period)
{
    return {period.firstDay(), period.lastDay()};
}

std::vector<ReportRange> ReportRanges::cut(ReportRange whole, Period::Span span)
{
    const bool isCut = span != Period::Span::allTime && span != Period::Span::dates;
    std::vector<ReportRange> parts;
    auto day = whole.first;
    while (day <= whole.last) {
        const auto last = isCut ? std::chrono::sys_days{Period::containing(span, day).lastDay()} : whole.last;
        parts.push_back({day, std::min(last, whole.last)});
        day = parts.back().last + days{1};
    }
    return parts;
}

bool ReportRanges::areContiguous(const std::vector<ReportRange>& ranges)
{
    const auto follows = [](const ReportRange& range, const ReportRange& next) {
        return next.first == range.last + days{1};
    };
    return std::ranges::all_of(ranges, [](const auto& range) { return range.first <= range.last; }) &&
           std::ranges::adjacent_find(ranges, std::not_fn(follows)) == ranges.end();
}

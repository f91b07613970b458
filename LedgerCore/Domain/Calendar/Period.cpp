#include "LedgerCore/Domain/Calendar/Period.h"

#include <algorithm>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Contract.h"

namespace {

using std::chrono::days;
using std::chrono::months;
using std::chrono::sys_days;
using std::chrono::year;
using std::chrono::year_month_day;
using std::chrono::year_month_day_last;
using Span = Period::Span;

constexpr year_month_day firstOfCalendar{year{1}, std::chrono::January, std::chrono::day{1}};
constexpr year_month_day lastOfCalendar{year{9999}, std::chrono::December, std::chrono::day{31}};

sys_days mondayOf(year_month_day day)
{
    const sys_days date{day};
    return date - (std::chrono::weekday{date} - std::chrono::Monday);
}

/// The first day of the run of `length` months, counted from January, that holds `day`.
year_month_day firstOfRun(year_month_day day, unsigned length)
{
    const auto index = static_cast<unsigned>(day.month()) - 1;
    return day.year() / std::chrono::month{index - index % length + 1} / std::chrono::day{1};
}

year_month_day lastOfRun(year_month_day first, unsigned length)
{
    const auto last = std::chrono::year_month{first.year(), first.month()} + months{length - 1};
    return year_month_day_last{last.year(), std::chrono::month_day_last{last.month()}};
}

unsigned monthsOf(Span span)
{
    return span == Span::month ? 1 : span == Span::quarter ? 3 : 12;
}

}

Period::Period(Span span, year_month_day first, year_month_day last)
    : m_span(span), m_first(first), m_last(std::min(last, lastOfCalendar)), m_firstText(LedgerDay::format(m_first)),
      m_lastText(LedgerDay::format(m_last))
{
}

Period Period::containing(Span span, year_month_day day)
{
    require(day.ok() && day >= firstOfCalendar && day <= lastOfCalendar, "a period is asked about a day that exists");
    switch (span) {
    case Span::day:
    case Span::dates:
        return {span, day, day};
    case Span::week:
        return {span, mondayOf(day), mondayOf(day) + days{6}};
    case Span::month:
    case Span::quarter:
    case Span::year: {
        const auto first = firstOfRun(day, monthsOf(span));
        return {span, first, lastOfRun(first, monthsOf(span))};
    }
    case Span::allTime:
        break;
    }
    return allTime();
}

Period Period::allTime()
{
    return {Span::allTime, firstOfCalendar, lastOfCalendar};
}

std::optional<Period> Period::between(year_month_day first, year_month_day last)
{
    if (!first.ok() || !last.ok() || first > last || first < firstOfCalendar || last > lastOfCalendar)
        return std::nullopt;
    return Period{Span::dates, first, last};
}

bool Period::contains(std::string_view day) const
{
    return isAllTime() || (day >= m_firstText && day <= m_lastText);
}

std::optional<Period> Period::next() const
{
    if (isAllTime() || m_last >= lastOfCalendar)
        return std::nullopt;
    const auto first = sys_days{m_last} + days{1};
    if (m_span == Span::dates)
        return Period{m_span, first, first + (sys_days{m_last} - sys_days{m_first})};
    return containing(m_span, first);
}

std::optional<Period> Period::previous() const
{
    if (isAllTime() || m_first <= firstOfCalendar)
        return std::nullopt;
    const auto last = sys_days{m_first} - days{1};
    if (m_span != Span::dates)
        return containing(m_span, last);
    const auto first = last - (sys_days{m_last} - sys_days{m_first});
    return Period{m_span, std::max(year_month_day{first}, firstOfCalendar), last};
}

Period Period::movedTo(year_month_day day) const
{
    if (m_span != Span::dates)
        return containing(m_span, day);
    const auto first = sys_days{day} - (sys_days{m_last} - sys_days{m_first});
    return {m_span, std::max(year_month_day{first}, firstOfCalendar), day};
}

IsoWeek isoWeek(year_month_day day)
{
    const year_month_day thursday{mondayOf(day) + days{3}};
    const auto firstDay = sys_days{thursday.year() / std::chrono::January / 1};
    return {static_cast<int>(thursday.year()), static_cast<unsigned>((sys_days{thursday} - firstDay).count() / 7) + 1};
}

#include "LedgerCore/Domain/Templates/RecurrenceDays.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <utility>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Contract.h"

namespace {

using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr int lastYear = 9999;

year_month_day dayOf(std::string_view text)
{
    return promised(LedgerDay::parse(text), "a recurrence is asked about days that exist");
}

/// Units of days, or of months.
struct Step {
    bool isMonths = false;
    std::int64_t length = 1;
};

Step stepOf(const Recurrence& recurrence)
{
    if (recurrence.unit == RecurrenceUnit::day)
        return {.length = recurrence.every};
    if (recurrence.unit == RecurrenceUnit::week)
        return {.length = std::int64_t{7} * recurrence.every};
    const int months = recurrence.unit == RecurrenceUnit::year ? 12 : 1;
    return {.isMonths = true, .length = std::int64_t{months} * recurrence.every};
}

std::int64_t monthsSinceYearZero(year_month_day day)
{
    return std::int64_t{static_cast<int>(day.year())} * 12 + static_cast<unsigned>(day.month()) - 1;
}

/// The day after `count` steps; nothing past the end of the calendar.
std::optional<std::string> after(year_month_day first, Step step, std::int64_t count)
{
    if (!step.isMonths) {
        const auto day = year_month_day{sys_days{first} + std::chrono::days{step.length * count}};
        return static_cast<int>(day.year()) > lastYear ? std::nullopt : std::optional{LedgerDay::format(day)};
    }
    const auto months = monthsSinceYearZero(first) + step.length * count;
    const auto year = months / 12;
    if (year > lastYear)
        return std::nullopt;
    const auto month = std::chrono::year{static_cast<int>(year)} / std::chrono::month{unsigned(months % 12) + 1};
    const auto last = year_month_day{month / std::chrono::last};
    return LedgerDay::format(std::min(year_month_day{month / first.day()}, last));
}

/// How many steps lead to the last day that is surely not after `day`, or to the first one.
std::int64_t stepsBefore(year_month_day first, Step step, year_month_day day)
{
    const std::int64_t distance = step.isMonths ? monthsSinceYearZero(day) - monthsSinceYearZero(first)
                                                : (sys_days{day} - sys_days{first}).count();
    return distance <= 0 ? 0 : std::max<std::int64_t>(0, distance / step.length - 1);
}

bool isOver(const Recurrence& recurrence, std::string_view day)
{
    return recurrence.lastDay && day > *recurrence.lastDay;
}

}

bool RecurrenceDays::isSound(const Recurrence& recurrence)
{
    if (std::ranges::find(RecurrenceUnit::all, recurrence.unit) == RecurrenceUnit::all.end())
        return false;
    if (recurrence.every < 1 || recurrence.every > mostUnits || !LedgerDay::isValid(recurrence.firstDay))
        return false;
    return !recurrence.lastDay ||
           (LedgerDay::isValid(*recurrence.lastDay) && *recurrence.lastDay >= recurrence.firstDay);
}

bool RecurrenceDays::occursOn(const Recurrence& recurrence, std::string_view day)
{
    return onOrAfter(recurrence, day) == day;
}

std::optional<std::string> RecurrenceDays::onOrAfter(const Recurrence& recurrence, std::string_view day)
{
    auto days = between(recurrence, day, lastOfCalendar, 1);
    return days.empty() ? std::nullopt : std::optional{std::move(days.front())};
}

std::vector<std::string> RecurrenceDays::between(const Recurrence& recurrence, std::string_view first,
                                                 std::string_view last, std::size_t most)
{
    const auto begin = dayOf(recurrence.firstDay);
    const auto step = stepOf(recurrence);
    std::vector<std::string> days;
    for (auto count = stepsBefore(begin, step, dayOf(first)); days.size() < most; ++count) {
        auto day = after(begin, step, count);
        if (!day || isOver(recurrence, *day) || *day > last)
            break;
        if (*day >= first)
            days.push_back(*std::move(day));
    }
    return days;
}

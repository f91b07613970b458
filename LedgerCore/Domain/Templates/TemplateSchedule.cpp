#include "LedgerCore/Domain/Templates/TemplateSchedule.h"

#include <algorithm>
#include <chrono>

#include <fmt/core.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Templates/RecurrenceDays.h"

namespace {

constexpr std::string_view mark = "occurrence:";

std::string moved(std::string_view day, int days)
{
    return LedgerDay::format(std::chrono::sys_days{promised(LedgerDay::parse(day), "today is a day")} +
                             std::chrono::days{days});
}

std::optional<std::string> firstAfter(const Recurrence& recurrence, std::string_view day)
{
    return day < RecurrenceDays::lastOfCalendar ? RecurrenceDays::onOrAfter(recurrence, moved(day, 1)) : std::nullopt;
}

}

std::string TemplateOccurrence::key() const
{
    return fmt::format("{}{}:{}", mark, templateID, day);
}

std::optional<TemplateOccurrence> TemplateOccurrence::ofKey(std::string_view key)
{
    const auto end = key.rfind(':');
    if (!key.starts_with(mark) || end <= mark.size())
        return std::nullopt;
    const auto day = key.substr(end + 1);
    if (!LedgerDay::isValid(day))
        return std::nullopt;
    return TemplateOccurrence{.templateID = std::string{key.substr(mark.size(), end - mark.size())},
                              .day = std::string{day}};
}

std::string TemplateSchedule::firstProposed(std::string_view today)
{
    return moved(today, -daysRemembered);
}

bool TemplateSchedule::takesActionOn(std::string_view day, std::string_view today)
{
    return firstProposed(today) <= day && day <= moved(today, daysRemembered);
}

const SettledDay* TemplateSchedule::settled(const EntryTemplate& kept, std::string_view day)
{
    const auto found = std::ranges::find(kept.settled, day, &SettledDay::day);
    return found == kept.settled.end() ? nullptr : &*found;
}

std::vector<std::string> TemplateSchedule::openDays(const EntryTemplate& kept, std::string_view today)
{
    if (!kept.recurrence || !RecurrenceDays::isSound(*kept.recurrence))
        return {};
    auto days = RecurrenceDays::between(*kept.recurrence, firstProposed(today), today);
    std::erase_if(days, [&](const std::string& day) { return settled(kept, day) != nullptr; });
    return days;
}

std::optional<std::string> TemplateSchedule::nextDay(const EntryTemplate& kept, std::string_view today)
{
    if (auto open = openDays(kept, today); !open.empty())
        return std::move(open.front());
    if (!kept.recurrence || !RecurrenceDays::isSound(*kept.recurrence))
        return std::nullopt;
    auto day = firstAfter(*kept.recurrence, today);
    while (day && settled(kept, *day))
        day = firstAfter(*kept.recurrence, *day);
    return day;
}

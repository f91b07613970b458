#include "LedgerCore/Domain/Calendar/LedgerDay.h"

#include <algorithm>
#include <ctime>

#include <fmt/core.h>

#include "LedgerCore/Domain/Contract.h"

namespace {

using std::chrono::sys_days;
using std::chrono::system_clock;

/// Reads exactly `text`, all of it digits.
std::optional<int> number(std::string_view text)
{
    int value = 0;
    for (const char each : text) {
        if (each < '0' || each > '9')
            return std::nullopt;
        value = value * 10 + (each - '0');
    }
    return value;
}

std::tm localTime(system_clock::time_point instant)
{
    const auto seconds = system_clock::to_time_t(std::chrono::floor<std::chrono::seconds>(instant));
    std::tm parts{};
    require(localtime_r(&seconds, &parts) != nullptr, "a present-day instant has a local time");
    return parts;
}

/// The milliseconds of a fraction ".125", and the rest of the text after it.
std::optional<std::chrono::milliseconds> fraction(std::string_view& rest)
{
    if (!rest.starts_with('.'))
        return std::chrono::milliseconds{0};
    const auto end = rest.find_first_not_of("0123456789", 1);
    if (end == std::string_view::npos || end < 2)
        return std::nullopt;
    std::string digits{rest.substr(1, std::min<std::size_t>(end - 1, 3))};
    digits.resize(3, '0');
    const auto milliseconds = number(digits);
    if (!milliseconds)
        return std::nullopt;
    rest.remove_prefix(end);
    return std::chrono::milliseconds{*milliseconds};
}

}

std::optional<std::chrono::year_month_day> LedgerDay::parse(std::string_view text)
{
    if (text.size() != 10 || text[4] != '-' || text[7] != '-')
        return std::nullopt;
    const auto year = number(text.substr(0, 4));
    const auto month = number(text.substr(5, 2));
    const auto day = number(text.substr(8, 2));
    if (!year || !month || !day || *year < 1)
        return std::nullopt;
    const std::chrono::year_month_day date{std::chrono::year{*year}, std::chrono::month{static_cast<unsigned>(*month)},
                                           std::chrono::day{static_cast<unsigned>(*day)}};
    if (!date.ok())
        return std::nullopt;
    return date;
}

bool LedgerDay::isValid(std::string_view text)
{
    return parse(text).has_value();
}

std::string LedgerDay::format(std::chrono::year_month_day day)
{
    return fmt::format("{:04}-{:02}-{:02}", static_cast<int>(day.year()), static_cast<unsigned>(day.month()),
                       static_cast<unsigned>(day.day()));
}

std::string LedgerDay::LocalGregorian::day(system_clock::time_point instant) const
{
    const auto parts = localTime(instant);
    return fmt::format("{:04}-{:02}-{:02}", parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday);
}

std::string LedgerDay::LocalGregorian::time(system_clock::time_point instant) const
{
    const auto parts = localTime(instant);
    return fmt::format("{:02}:{:02}", parts.tm_hour, parts.tm_min);
}

std::optional<system_clock::time_point> LedgerDay::parseStamp(std::string_view stamp)
{
    if (stamp.size() < 20 || stamp[10] != 'T' || stamp[13] != ':' || stamp[16] != ':')
        return std::nullopt;
    const auto day = parse(stamp.substr(0, 10));
    const auto hour = number(stamp.substr(11, 2));
    const auto minute = number(stamp.substr(14, 2));
    const auto second = number(stamp.substr(17, 2));
    auto rest = stamp.substr(19);
    const auto part = fraction(rest);
    if (!day || !hour || !minute || !second || !part || rest != "Z" || *hour > 23 || *minute > 59 || *second > 60)
        return std::nullopt;
    return sys_days{*day} + std::chrono::hours{*hour} + std::chrono::minutes{*minute} + std::chrono::seconds{*second} +
           *part;
}

std::string LedgerDay::stamp(system_clock::time_point instant)
{
    const auto whole = std::chrono::floor<std::chrono::milliseconds>(instant);
    const auto day = std::chrono::floor<std::chrono::days>(whole);
    const std::chrono::hh_mm_ss time{whole - day};
    return fmt::format("{}T{:02}:{:02}:{:02}.{:03}Z", format(day), time.hours().count(), time.minutes().count(),
                       time.seconds().count(), time.subseconds().count());
}

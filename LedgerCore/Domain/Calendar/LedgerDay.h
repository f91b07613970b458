#pragma once

#include <chrono>
#include <compare>
#include <optional>
#include <string>
#include <string_view>

/// Calendar days as "YYYY-MM-DD" texts of the Gregorian calendar; as texts they sort in the order of time.
namespace LedgerDay {

/// The day that a text names; nothing unless it is exactly "YYYY-MM-DD" and exists (years 0001 to 9999).
std::optional<std::chrono::year_month_day> parse(std::string_view text);

bool isValid(std::string_view text);

std::string format(std::chrono::year_month_day day);

/// The calendar of the machine's own time zone.
struct LocalGregorian {
    /// The day that `instant` falls on here.
    [[nodiscard]] std::string day(std::chrono::system_clock::time_point instant) const;
    /// The hour and minute of `instant` here, as "HH:MM".
    [[nodiscard]] std::string time(std::chrono::system_clock::time_point instant) const;
};
inline LocalGregorian localGregorian()
{
    return {};
}

/// The instant that a service stamp ("2026-11-20T09:41:07Z") names; nothing when it is not such a stamp.
std::optional<std::chrono::system_clock::time_point> parseStamp(std::string_view stamp);

/// `instant` as a service stamp, in UTC and whole milliseconds: "2026-11-20T09:41:07.125Z".
std::string stamp(std::chrono::system_clock::time_point instant);

}

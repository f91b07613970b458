#pragma once

#include <array>
#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/EntryTemplate.h"

namespace RecurrenceUnit {

inline constexpr std::string_view day = "day";
inline constexpr std::string_view week = "week";
inline constexpr std::string_view month = "month";
inline constexpr std::string_view year = "year";
inline constexpr std::array all{day, week, month, year};

}

/// The days of a recurrence. Every one is counted from the first day, so that one on the 31st stands on the last day of
/// a shorter month and is back on the 31st after it, and one of 29 February stands on the 28th of common years.
namespace RecurrenceDays {

inline constexpr int mostUnits = 366; // between two days
inline constexpr std::string_view lastOfCalendar = "9999-12-31";

/// Whether it names a unit, a distance of 1 to `mostUnits` and real days in their order.
bool isSound(const Recurrence& recurrence);

/// All of the functions below expect a sound recurrence and real days.
bool occursOn(const Recurrence& recurrence, std::string_view day);

/// The first of its days that is not before `day`; nothing when there is none any more.
std::optional<std::string> onOrAfter(const Recurrence& recurrence, std::string_view day);

/// Its days from `first` to `last`, both included, and of many only the first ones.
std::vector<std::string> between(const Recurrence& recurrence, std::string_view first, std::string_view last,
                                 std::size_t most = std::numeric_limits<std::size_t>::max());

}

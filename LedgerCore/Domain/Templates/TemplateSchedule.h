#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/EntryTemplate.h"

/// A due day of a template. An entry that is recorded for it is sent with the key of the day, whoever records it, from
/// whichever machine, so that a day gets one entry.
struct TemplateOccurrence {
    std::string templateID;
    std::string day; // "YYYY-MM-DD"

    [[nodiscard]] std::string key() const;
    /// The day that a key stands for, or nothing for the keys of other entries.
    static std::optional<TemplateOccurrence> ofKey(std::string_view key);

    bool operator==(const TemplateOccurrence&) const = default;
};

/// Which days of templates wait for a person. All days are "YYYY-MM-DD".
namespace TemplateSchedule {

inline constexpr int daysRemembered = 366; // what was due longer ago is not proposed any more

/// The first day that is still proposed today, and of which the service tells what became of it.
std::string firstProposed(std::string_view today);

/// Whether a person may skip the day, or have it proposed again: one that is still proposed, or due within as many days
/// to come. So what is remembered of a template stays small.
bool takesActionOn(std::string_view day, std::string_view today);

/// What became of a due day; null while nobody has acted on it.
const SettledDay* settled(const EntryTemplate& kept, std::string_view day);

/// The days up to today on which nobody has acted, the oldest first.
std::vector<std::string> openDays(const EntryTemplate& kept, std::string_view today);

/// The first open day, else the next one after today that is not settled; nothing when none is to come.
std::optional<std::string> nextDay(const EntryTemplate& kept, std::string_view today);

}

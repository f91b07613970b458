#pragma once

#include <cstddef>
#include <expected>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include <boost/describe.hpp>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// The actions of a financial settings command, as they stand on the wire.
namespace FinancialSettingsAction {
inline constexpr std::string_view initialize = "initialize"; // confirms the first day of the books
inline constexpr std::string_view configure = "configure";   // sets both switches
}

/// Body of a change to the financial settings, based on the revision that its author saw. Built once for a
/// confirmation and sent again as it stands while its outcome is unknown.
struct FinancialSettingsCommand {
    std::string action; // a `FinancialSettingsAction`
    int expectedRevision = 0;
    std::string idempotencyKey;
    std::optional<bool> contributionsEnabled;
    std::optional<bool> dividendsEnabled;
    std::optional<std::string> bookkeepingStartDate; // "YYYY-MM-DD"
    std::optional<std::string> initializationMode;

    bool operator==(const FinancialSettingsCommand&) const = default;
};
BOOST_DESCRIBE_STRUCT(FinancialSettingsCommand, (),
                      (action, expectedRevision, idempotencyKey, contributionsEnabled, dividendsEnabled,
                       bookkeepingStartDate, initializationMode))

/// Which changes of the financial settings are accepted, what they lead to, and the commands that ask for them.
namespace FinancialSettingsRules {

/// The last revision that settings can reach.
inline constexpr int lastRevision = std::numeric_limits<int>::max();

/// No books reach further back: whoever names an earlier day has mistyped the year.
inline constexpr std::string_view earliestStart = "1900-01-01";

/// The most characters of a setup mode. The known ones are in `InitializationMode`; others are kept as they are sent.
inline constexpr std::size_t modeLength = 40;

enum class Refusal {
    unknownAction,
    foreignField, // one of the other action
    noAuthority,
    staleRevision,
    revisionLimit,
    alreadyInitialized, // the start is confirmed once
    invalidStartDate,
    startTooEarly,     // no books reach so far back, and the start cannot be taken back
    startInFuture,     // until then nothing could be recorded, and the start cannot be taken back
    startAfterEntries, // the books already hold an earlier entry
    modeRequired,
    modeUnsound, // no word of ASCII letters, digits and hyphens
    switchesRequired
};

/// What the rules look at beside the command.
struct Ground {
    const Member& member;
    std::optional<FinancialSettings> settings;
    std::optional<std::string> earliestEntryDay; // of the whole books
    std::string latestEntryDay;                  // the last on which an entry can be booked today
};

/// What is wrong with the command itself, whoever sends it, or nothing.
std::optional<Refusal> whyNotShaped(const FinancialSettingsCommand& command);

/// What keeps the command from being accepted, or nothing.
std::optional<Refusal> whyNot(const FinancialSettingsCommand& command, const Ground& ground);

/// The settings after an accepted command. `now` is the stamp of the change.
FinancialSettings changed(const std::optional<FinancialSettings>& settings, const FinancialSettingsCommand& command,
                          std::string_view now);

/// Confirms the first day of the books, once and for all.
std::expected<FinancialSettingsCommand, Refusal> initialize(const LedgerSnapshot& snapshot,
                                                            std::string_view latestEntryDay, std::string startDate,
                                                            std::string mode, std::string idempotencyKey);

/// The two features as a screen shows them.
struct Switches {
    bool contributions = false;
    bool dividends = false;
};

/// Sets both switches.
std::expected<FinancialSettingsCommand, Refusal> configure(const LedgerSnapshot& snapshot, Switches switches,
                                                           std::string idempotencyKey);

}

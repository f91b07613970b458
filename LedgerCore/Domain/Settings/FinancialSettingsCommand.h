#pragma once

#include <expected>
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

/// Which changes of the financial settings are accepted, and the commands that ask for them.
namespace FinancialSettingsRules {

enum class Refusal {
    unknownAction,
    noAuthority,
    staleRevision,
    alreadyInitialized, // the start is confirmed once
    invalidStartDate,
    startAfterEntries, // the books already hold an earlier entry
    modeRequired,
    switchesRequired
};

/// What keeps this member's command from being accepted, or nothing. `earliestEntryDay` is that of the whole books.
std::optional<Refusal> whyNot(const FinancialSettingsCommand& command, const Member& member,
                              const std::optional<FinancialSettings>& settings,
                              const std::optional<std::string>& earliestEntryDay);

/// Confirms the first day of the books, once and for all.
std::expected<FinancialSettingsCommand, Refusal> initialize(const LedgerSnapshot& snapshot, std::string startDate,
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

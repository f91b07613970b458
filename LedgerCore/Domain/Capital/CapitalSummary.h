#pragma once

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Capital/CapitalMath.h"
#include "LedgerCore/Domain/Records/CapitalState.h"

/// One owner's row of a capital summary, amounts in minor units.
struct CapitalParticipantSummary {
    std::string participantID;
    std::string name;
    std::int64_t recordedMinor = 0; // everything recorded, the historical entry included and reversals taken off
    std::optional<std::int64_t> totalMinor;
    std::optional<std::int64_t> periodMinor;
    std::optional<int> ownershipBps; // unset while no version is in force or it does not name the owner

    bool operator==(const CapitalParticipantSummary&) const = default;
};

/// What each owner paid in, in one currency. Ownership is never derived from amounts.
struct CapitalSummary {
    std::vector<CapitalParticipantSummary> participants; // in the order of the section
    std::string currency;
    std::int64_t recordedMinor = 0;
    std::optional<std::int64_t> totalMinor; // `recordedMinor`, unset while the history is unknown
    std::int64_t periodMinor = 0;           // dated within the requested days; without a bound, all of them
    bool historyKnown = false;              // the currency has a baseline
    std::optional<CapitalOwnershipVersion> ownershipVersion; // in force at the end of the requested days

    bool operator==(const CapitalSummary&) const = default;

    /// Fails rather than give part of the figures when the section breaks a rule. Days are inclusive; a missing bound
    /// leaves the range open on its side.
    static std::expected<CapitalSummary, CapitalError> create(const CapitalState& state, std::string_view currency,
                                                              std::optional<std::string_view> fromDay,
                                                              std::optional<std::string_view> throughDay);
};

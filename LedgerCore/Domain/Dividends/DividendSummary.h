#pragma once

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Dividends/DividendError.h"
#include "LedgerCore/Domain/Records/DividendState.h"

/// One participant's row, in minor units. The cutoff is the last requested day. Unpaid amounts and advances stay
/// apart: they are never set off against each other here.
struct DividendParticipantSummary {
    std::string participantID;
    std::string name;
    std::int64_t paidMinor = 0;     // payments and advances paid out within the days
    std::int64_t returnedMinor = 0; // advances given back within the days
    std::int64_t netPaidMinor = 0;
    std::int64_t unpaidMinor = 0;  // of all lines, at the cutoff
    std::int64_t advanceMinor = 0; // left of all advances, at the cutoff
    std::int64_t settledMinor = 0; // payments and applied advances up to the cutoff

    bool operator==(const DividendParticipantSummary&) const = default;
};

/// How the dividends of one currency stand.
struct DividendSummary {
    std::string currency;
    std::vector<DividendParticipantSummary> participants; // in the order of the section
    std::int64_t paidMinor = 0;
    std::int64_t unpaidMinor = 0;

    bool operator==(const DividendSummary&) const = default;

    /// Fails rather than give part of the figures when the section breaks a rule. Days are inclusive; a missing bound
    /// leaves the range open on its side.
    static std::expected<DividendSummary, DividendError> create(const DividendState& state, std::string_view currency,
                                                                std::optional<std::string_view> fromDay,
                                                                std::optional<std::string_view> throughDay);
};

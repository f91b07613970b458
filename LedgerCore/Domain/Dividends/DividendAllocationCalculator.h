#pragma once

#include <cstdint>
#include <expected>
#include <span>
#include <vector>

#include "LedgerCore/Domain/Dividends/DividendError.h"
#include "LedgerCore/Domain/Records/DividendState.h"

/// Splits a dividend by basis points so that the lines add up to the total to the minor unit.
namespace DividendAllocationCalculator {

inline constexpr std::size_t maximumShares = 100;
inline constexpr int wholeBps = 10000;

/// One line per share, in the order of the shares. Each gets its exact part rounded down; the units left over go to the
/// largest remainders, equal ones by participant identifier.
std::expected<std::vector<DividendLine>, DividendError> allocate(std::int64_t totalMinor,
                                                                 std::span<const DividendShare> shares,
                                                                 std::span<const DividendParticipant> participants);

}

#pragma once

#include <cstddef>
#include <cstdint>
#include <expected>
#include <optional>
#include <string_view>

#include "LedgerCore/Domain/Records/CapitalState.h"

/// Why capital figures could not be computed.
enum class CapitalError {
    invalidState,  // the section breaks one of its rules
    invalidAmount, // an amount outside the allowed range
    amountOverflow // a sum exceeds the limit of amounts
};

/// The rules by which a capital section is whole, and what holds on a day. Pointers in results point into the state.
namespace CapitalMath {

/// The most lines that a baseline or an ownership version may hold.
inline constexpr std::size_t maximumLines = 100;

bool validDay(std::string_view text);

/// What is wrong with the section as far as this currency is concerned, or nothing: participants with one identifier
/// each, baselines and ownership versions within their rules, contributions linked both ways with their reversals.
std::optional<CapitalError> whyInvalid(const CapitalState& state, std::string_view currency);

/// The currency's baseline that no other supersedes, or null. Asked of a valid state only.
const CapitalBaseline* currentBaseline(const CapitalState& state, std::string_view currency);

/// The last day that any baseline of the currency covers, superseded ones included; empty without one. Contributions
/// come after it.
std::string_view coveredThrough(const CapitalState& state, std::string_view currency);

/// The latest ownership version that starts on or before `day`; without a day the latest of all. Of one start day the
/// one created last counts.
const CapitalOwnershipVersion* ownershipInForce(const CapitalState& state, std::optional<std::string_view> day);

}

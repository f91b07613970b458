#include "LedgerCore/Domain/Capital/CapitalMath.h"

#include <algorithm>
#include <tuple>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Money/BasisPoints.h"
#include "LedgerCore/Domain/Money/Money.h"

namespace {

using Identifiers = std::unordered_set<std::string_view>;
using ContributionIndex = std::unordered_map<std::string_view, const CapitalContribution*>;

/// Nothing when two participants bear one identifier.
std::optional<Identifiers> identifiersOf(const CapitalState& state)
{
    Identifiers known;
    for (const auto& participant : state.participants) {
        if (!known.insert(participant.id).second)
            return std::nullopt;
    }
    return known;
}

bool isValid(const CapitalBaseline& baseline, const Identifiers& participants)
{
    if (!LedgerDay::isValid(baseline.date) || !LedgerDay::isValid(baseline.throughDate) ||
        baseline.throughDate > baseline.date || baseline.entries.size() > CapitalMath::maximumLines)
        return false;
    Identifiers listed;
    std::int64_t sum = 0; // at most 100 lines of at most the limit
    for (const auto& line : baseline.entries) {
        if (!listed.insert(line.participantID).second || !participants.contains(line.participantID))
            return false;
        if (line.amountMinor < 0 || line.amountMinor > Money::maximumMinor)
            return false;
        sum += line.amountMinor;
    }
    return sum <= Money::maximumMinor;
}

bool isValid(const CapitalOwnershipVersion& version, const Identifiers& participants)
{
    if (!LedgerDay::isValid(version.date) || version.entries.empty() ||
        version.entries.size() > CapitalMath::maximumLines)
        return false;
    Identifiers listed;
    int sum = 0;
    for (const auto& line : version.entries) {
        if (!listed.insert(line.participantID).second || !participants.contains(line.participantID))
            return false;
        if (line.ownershipBps < 0 || line.ownershipBps > BasisPoints::whole)
            return false;
        sum += line.ownershipBps;
    }
    return sum == BasisPoints::whole;
}

/// The baselines of one currency supersede each other in a single line, so that no amount can count twice.
bool areChained(const std::vector<const CapitalBaseline*>& baselines)
{
    std::unordered_map<std::string_view, const CapitalBaseline*> byID;
    for (const auto* baseline : baselines) {
        if (!byID.emplace(baseline->id, baseline).second)
            return false;
    }
    Identifiers replaced;
    for (const auto* baseline : baselines) {
        if (baseline->replacesID &&
            (!byID.contains(*baseline->replacesID) || !replaced.insert(*baseline->replacesID).second))
            return false;
    }
    const auto current =
        std::ranges::find_if(baselines, [&](const auto* each) { return !replaced.contains(each->id); });
    if (current == baselines.end())
        return baselines.empty();
    std::size_t length = 1;
    for (const auto* at = *current; at->replacesID; at = byID.at(*at->replacesID))
        ++length;
    return length == baselines.size();
}

bool isReversalOf(const CapitalContribution& reversal, const CapitalContribution& original)
{
    return reversal.reversalOf == original.id && original.reversedBy == reversal.id && !original.reversalOf &&
           !reversal.reversedBy && reversal.amountMinor == -original.amountMinor &&
           reversal.participantID == original.participantID && reversal.date >= original.date;
}

std::optional<CapitalError> whyInvalid(const CapitalContribution& contribution, const ContributionIndex& byID,
                                       const Identifiers& participants)
{
    const auto find = [&](const std::optional<std::string>& id) {
        const auto found = byID.find(*id);
        return found == byID.end() ? nullptr : found->second;
    };
    if (!LedgerDay::isValid(contribution.date) || !participants.contains(contribution.participantID))
        return CapitalError::invalidState;
    const auto amount = contribution.reversalOf ? -contribution.amountMinor : contribution.amountMinor;
    if (!Money::isWithinLimit(contribution.amountMinor) || amount < 1)
        return CapitalError::invalidAmount;
    if (contribution.reversedBy) {
        const auto* reversal = find(contribution.reversedBy);
        if (!reversal || !isReversalOf(*reversal, contribution))
            return CapitalError::invalidState;
    }
    if (contribution.reversalOf) {
        const auto* original = find(contribution.reversalOf);
        if (!original || !isReversalOf(contribution, *original))
            return CapitalError::invalidState;
    }
    return std::nullopt;
}

std::optional<CapitalError> whyInvalidContributions(const CapitalState& state, std::string_view currency,
                                                    const Identifiers& participants)
{
    const auto covered = CapitalMath::coveredThrough(state, currency);
    ContributionIndex byID;
    for (const auto& contribution : state.contributions) {
        if (contribution.currency == currency && !byID.emplace(contribution.id, &contribution).second)
            return CapitalError::invalidState;
    }
    for (const auto& contribution : state.contributions) {
        if (contribution.currency != currency)
            continue;
        if (const auto failed = ::whyInvalid(contribution, byID, participants))
            return failed;
        if (contribution.date <= covered)
            return CapitalError::invalidState;
    }
    return std::nullopt;
}

}

bool CapitalMath::validDay(std::string_view text)
{
    return LedgerDay::isValid(text);
}

std::optional<CapitalError> CapitalMath::whyInvalid(const CapitalState& state, std::string_view currency)
{
    const auto participants = identifiersOf(state);
    if (!participants)
        return CapitalError::invalidState;
    std::vector<const CapitalBaseline*> baselines;
    for (const auto& baseline : state.baselines) {
        if (baseline.currency != currency)
            continue;
        if (!isValid(baseline, *participants))
            return CapitalError::invalidState;
        baselines.push_back(&baseline);
    }
    const auto isValidVersion = [&](const auto& version) { return isValid(version, *participants); };
    if (!areChained(baselines) || !std::ranges::all_of(state.ownershipVersions, isValidVersion))
        return CapitalError::invalidState;
    return whyInvalidContributions(state, currency, *participants);
}

const CapitalBaseline* CapitalMath::currentBaseline(const CapitalState& state, std::string_view currency)
{
    Identifiers replaced;
    for (const auto& baseline : state.baselines) {
        if (baseline.replacesID)
            replaced.insert(*baseline.replacesID);
    }
    const auto found = std::ranges::find_if(state.baselines, [&](const CapitalBaseline& baseline) {
        return baseline.currency == currency && !replaced.contains(baseline.id);
    });
    return found == state.baselines.end() ? nullptr : &*found;
}

std::string_view CapitalMath::coveredThrough(const CapitalState& state, std::string_view currency)
{
    std::string_view last;
    for (const auto& baseline : state.baselines) {
        if (baseline.currency == currency)
            last = std::max(last, std::string_view{baseline.throughDate});
    }
    return last;
}

const CapitalOwnershipVersion* CapitalMath::ownershipInForce(const CapitalState& state,
                                                             std::optional<std::string_view> day)
{
    const CapitalOwnershipVersion* inForce = nullptr;
    for (const auto& version : state.ownershipVersions) {
        if (day && version.date > *day)
            continue;
        if (!inForce || std::tie(version.date, version.createdAt) >= std::tie(inForce->date, inForce->createdAt))
            inForce = &version;
    }
    return inForce;
}

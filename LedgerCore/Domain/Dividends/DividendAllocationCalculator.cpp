#include "LedgerCore/Domain/Dividends/DividendAllocationCalculator.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Money/Money.h"

namespace {

using DividendAllocationCalculator::maximumShares;
using DividendAllocationCalculator::wholeBps;

/// 10000 basis points of the largest amount stay far inside 64 bits, so the products below cannot overflow.
static_assert(Money::maximumMinor <= std::numeric_limits<std::int64_t>::max() / wholeBps);

bool areWhole(std::span<const DividendShare> shares)
{
    if (shares.empty() || shares.size() > maximumShares)
        return false;
    std::unordered_set<std::string_view> seen;
    int total = 0;
    for (const auto& share : shares) {
        if (share.participantID.empty() || !seen.insert(share.participantID).second)
            return false;
        if (share.ratioBps < 0 || share.ratioBps > wholeBps)
            return false;
        total += share.ratioBps; // at most 100 shares of at most 10000
    }
    return total == wholeBps;
}

using ParticipantIndex = std::unordered_map<std::string_view, const DividendParticipant*>;

/// Nothing when two participants bear one identifier.
std::optional<ParticipantIndex> indexed(std::span<const DividendParticipant> participants)
{
    ParticipantIndex byID;
    for (const auto& participant : participants) {
        if (!byID.emplace(participant.id, &participant).second)
            return std::nullopt;
    }
    return byID;
}

struct Part {
    std::int64_t baseMinor = 0;
    std::int64_t remainder = 0; // in ten-thousandths of a minor unit
};

Part partOf(std::int64_t totalMinor, std::int64_t ratioBps)
{
    const auto rest = (totalMinor % wholeBps) * ratioBps;
    return {(totalMinor / wholeBps) * ratioBps + rest / wholeBps, rest % wholeBps};
}

/// Gives the `leftover` units to the largest remainders, one each.
void giveLeftover(std::vector<DividendLine>& lines, const std::vector<Part>& parts, std::size_t leftover)
{
    std::vector<std::size_t> order(lines.size());
    for (std::size_t at = 0; at < order.size(); ++at)
        order[at] = at;
    std::ranges::sort(order, [&](std::size_t left, std::size_t right) {
        if (parts[left].remainder != parts[right].remainder)
            return parts[left].remainder > parts[right].remainder;
        return lines[left].participantID < lines[right].participantID;
    });
    for (std::size_t at = 0; at < leftover; ++at)
        ++lines[order[at]].amountMinor;
}

}

std::expected<std::vector<DividendLine>, DividendError>
DividendAllocationCalculator::allocate(std::int64_t totalMinor, std::span<const DividendShare> shares,
                                       std::span<const DividendParticipant> participants)
{
    using enum DividendError;
    if (totalMinor < 1 || totalMinor > Money::maximumMinor)
        return std::unexpected(invalidAmount);
    if (!areWhole(shares))
        return std::unexpected(invalidShares);
    const auto byID = indexed(participants);
    if (!byID)
        return std::unexpected(participantUnavailable);

    std::vector<DividendLine> lines;
    std::vector<Part> parts;
    auto leftover = totalMinor;
    for (const auto& share : shares) {
        const auto found = byID->find(share.participantID);
        if (found == byID->end() || found->second->archived)
            return std::unexpected(participantUnavailable);
        const auto& part = parts.emplace_back(partOf(totalMinor, share.ratioBps));
        lines.push_back({share.participantID, found->second->name, share.ratioBps, part.baseMinor});
        leftover -= part.baseMinor;
    }
    require(leftover >= 0 && leftover < std::ssize(lines), "each line is rounded down by less than one unit");
    giveLeftover(lines, parts, static_cast<std::size_t>(leftover));
    return lines;
}

#include "LedgerCore/Domain/Dividends/OwnershipRatios.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <unordered_set>

#include "LedgerCore/Domain/Text/TextFold.h"

namespace {

using Taken = std::unordered_set<std::string_view>; // participants who stand for an owner already

std::optional<std::string> memberOf(const CapitalOwnershipLine& line, std::span<const CapitalParticipant> owners)
{
    const auto owner = std::ranges::find(owners, line.participantID, &CapitalParticipant::id);
    return owner == owners.end() ? std::nullopt : owner->memberID;
}

std::string nameOf(const CapitalOwnershipLine& line, std::span<const CapitalParticipant> owners)
{
    const auto owner = std::ranges::find(owners, line.participantID, &CapitalParticipant::id);
    return owner == owners.end() ? line.participantName : owner->name;
}

const DividendParticipant* sameMember(const std::optional<std::string>& memberID,
                                      std::span<const DividendParticipant> participants)
{
    const auto found = std::ranges::find_if(
        participants, [&](const DividendParticipant& each) { return memberID && each.memberID == memberID; });
    return found == participants.end() ? nullptr : &*found;
}

const DividendParticipant* sameName(std::string_view name, std::span<const DividendParticipant> participants,
                                    const Taken& taken)
{
    const auto found = std::ranges::find_if(participants, [&](const DividendParticipant& each) {
        return !each.memberID && !taken.contains(each.id) &&
               TextFold::areSame(TextFold::trimmed(each.name), TextFold::trimmed(name));
    });
    return found == participants.end() ? nullptr : &*found;
}

}

std::vector<DividendParticipant> OwnershipRatios::changed(const CapitalOwnershipVersion& shares,
                                                          std::span<const CapitalParticipant> owners,
                                                          std::span<const DividendParticipant> participants)
{
    std::vector<DividendParticipant> changed;
    Taken taken;
    for (const auto& line : shares.entries) {
        if (line.ownershipBps == 0)
            continue;
        const auto memberID = memberOf(line, owners);
        const auto name = nameOf(line, owners);
        const auto* known = sameMember(memberID, participants);
        if (!known)
            known = sameName(name, participants, taken);
        DividendParticipant participant;
        participant.name = name;
        if (known)
            participant = *known;
        if (memberID)
            participant.memberID = memberID;
        participant.ratioBps = line.ownershipBps;
        participant.archived = false;
        if (known)
            taken.insert(known->id);
        if (!known || participant != *known)
            changed.push_back(std::move(participant));
    }
    for (const auto& other : participants) {
        if (taken.contains(other.id) || other.archived || other.ratioBps == 0)
            continue;
        changed.push_back(other);
        changed.back().ratioBps = 0;
    }
    return changed;
}

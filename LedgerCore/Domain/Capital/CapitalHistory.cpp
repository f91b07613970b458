#include "LedgerCore/Domain/Capital/CapitalHistory.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Text/TextFold.h"

namespace {

namespace Action = CapitalAction;
using Made = decltype(CapitalChange::made);

template <class Record>
const Record* find(const std::vector<Record>& records, const std::optional<std::string>& id)
{
    const auto found = std::ranges::find_if(records, [&](const Record& record) { return record.id == id; });
    return found == records.end() ? nullptr : &*found;
}

const CapitalParticipant& participant(const CapitalState& state, const std::optional<std::string>& id)
{
    const auto* const found = find(state.participants, id);
    require(found != nullptr, "an accepted command names owners of the section");
    return *found;
}

CapitalParticipant participantFor(const CapitalCommand& command, const CapitalState& state, const SectionStamp& stamp)
{
    const auto* const known = find(state.participants, command.participantID);
    return {.id = known ? known->id : stamp.recordID,
            .name = std::string{TextFold::trimmed(command.name.value_or(""))},
            .memberID = command.memberID,
            .archived = command.archived.value_or(known && known->archived)};
}

CapitalContribution contributionFor(const CapitalCommand& command, const CapitalState& state, const SectionStamp& stamp)
{
    const auto& owner = participant(state, command.participantID);
    return {.id = stamp.recordID,
            .participantID = owner.id,
            .participantName = owner.name,
            .currency = command.currency.value_or(""),
            .amountMinor = command.amountMinor.value_or(0),
            .date = command.date,
            .createdAt = stamp.createdAt,
            .transactionID = stamp.entryID,
            .reversalOf = {},
            .reversedBy = {}};
}

CapitalContribution reversalFor(const CapitalCommand& command, const CapitalState& state, const SectionStamp& stamp)
{
    const auto* const original = find(state.contributions, command.contributionID);
    require(original != nullptr, "an accepted reversal names a contribution of the section");
    auto reversal = *original;
    reversal.id = stamp.recordID;
    reversal.amountMinor = -original->amountMinor;
    reversal.date = command.date;
    reversal.createdAt = stamp.createdAt;
    reversal.transactionID = stamp.entryID;
    reversal.reversalOf = original->id;
    return reversal;
}

/// The owners' names are those of the section, whatever the command calls them.
CapitalBaseline baselineFor(const CapitalCommand& command, const CapitalState& state, const SectionStamp& stamp)
{
    CapitalBaseline baseline{.id = stamp.recordID,
                             .currency = command.currency.value_or(""),
                             .throughDate = command.throughDate.value_or(""),
                             .date = command.date,
                             .createdAt = stamp.createdAt,
                             .entries = command.entries.value_or(std::vector<CapitalAmountLine>{}),
                             .replacesID = command.replacesID};
    for (auto& line : baseline.entries)
        line.participantName = participant(state, line.participantID).name;
    return baseline;
}

CapitalOwnershipVersion ownershipFor(const CapitalCommand& command, const CapitalState& state,
                                     const SectionStamp& stamp)
{
    CapitalOwnershipVersion version{.id = stamp.recordID,
                                    .date = command.date,
                                    .createdAt = stamp.createdAt,
                                    .entries = command.ownership.value_or(std::vector<CapitalOwnershipLine>{})};
    for (auto& line : version.entries)
        line.participantName = participant(state, line.participantID).name;
    return version;
}

Made madeBy(const CapitalCommand& command, const CapitalState& state, const SectionStamp& stamp)
{
    if (command.action == Action::setParticipant)
        return participantFor(command, state, stamp);
    if (command.action == Action::contribute)
        return contributionFor(command, state, stamp);
    if (command.action == Action::reverse)
        return reversalFor(command, state, stamp);
    if (command.action == Action::setBaseline)
        return baselineFor(command, state, stamp);
    if (command.action == Action::setOwnership)
        return ownershipFor(command, state, stamp);
    require(command.action == Action::setVisibility, "only known actions are accepted");
    return SidebarVisibility{command.showInSidebar.value_or(true)};
}

/// Adds what a change made to a section.
struct Addition {
    CapitalState& state;

    void operator()(const CapitalParticipant& made) const
    {
        const auto known = std::ranges::find(state.participants, made.id, &CapitalParticipant::id);
        if (known == state.participants.end())
            state.participants.push_back(made);
        else
            *known = made;
    }
    void operator()(const CapitalContribution& made) const
    {
        if (made.reversalOf) {
            const auto original = std::ranges::find(state.contributions, *made.reversalOf, &CapitalContribution::id);
            if (original != state.contributions.end())
                original->reversedBy = made.id;
        }
        state.contributions.push_back(made);
        addCurrency(made.currency);
    }
    void operator()(const CapitalBaseline& made) const
    {
        state.baselines.push_back(made);
        addCurrency(made.currency);
    }
    void operator()(const CapitalOwnershipVersion& made) const { state.ownershipVersions.push_back(made); }
    void operator()(const SidebarVisibility& made) const { state.showInSidebar = made.shown; }

private:
    void addCurrency(const std::string& currency) const
    {
        if (std::ranges::find(state.currencies, currency) == state.currencies.end())
            state.currencies.push_back(currency);
    }
};

}

CapitalChange CapitalHistory::changeFor(const CapitalCommand& command, const CapitalState& state,
                                        const SectionStamp& stamp)
{
    return {.revision = state.revision + 1,
            .action = command.action,
            .date = command.date,
            .note = command.note.value_or(""),
            .memberID = stamp.memberID,
            .createdAt = stamp.createdAt,
            .made = madeBy(command, state, stamp)};
}

void CapitalHistory::apply(const CapitalChange& change, CapitalState& state)
{
    state.revision = change.revision;
    std::visit(Addition{state}, change.made);
}

CapitalState CapitalHistory::stateAfter(std::span<const CapitalChange> changes)
{
    CapitalState state;
    state.showInSidebar = true;
    for (const auto& change : changes)
        apply(change, state);
    return state;
}

bool CapitalHistory::isOfItsAction(const CapitalChange& change)
{
    const auto& action = change.action;
    if (const auto* const contribution = std::get_if<CapitalContribution>(&change.made))
        return action == (contribution->reversalOf ? Action::reverse : Action::contribute);
    if (std::holds_alternative<CapitalParticipant>(change.made))
        return action == Action::setParticipant;
    if (std::holds_alternative<CapitalBaseline>(change.made))
        return action == Action::setBaseline;
    if (std::holds_alternative<CapitalOwnershipVersion>(change.made))
        return action == Action::setOwnership;
    return action == Action::setVisibility;
}

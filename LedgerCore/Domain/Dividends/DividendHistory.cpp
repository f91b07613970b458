#include "LedgerCore/Domain/Dividends/DividendHistory.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include <fmt/core.h>

#include "LedgerCore/Domain/Capital/CapitalMath.h"
#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Dividends/DividendAllocationCalculator.h"
#include "LedgerCore/Domain/Dividends/OwnershipRatios.h"
#include "LedgerCore/Domain/Text/TextFold.h"

namespace {

namespace Action = DividendAction;
namespace Kind = DividendMovementKind;
using Made = decltype(DividendChange::made);
using Participants = std::vector<DividendParticipant>;

struct Maker {
    const DividendCommand& command;
    const DividendContext& context;
    const SectionStamp& stamp;

    [[nodiscard]] Made make() const
    {
        const auto& action = command.action;
        if (action == Action::setParticipant)
            return Participants{participant()};
        if (action == Action::fillFromOwnership)
            return fromOwnership();
        if (action == Action::allocate)
            return batch();
        if (action == Action::cancelBatch)
            return DividendCancellation{command.batchID.value_or("")};
        if (action == Action::setVisibility)
            return SidebarVisibility{command.showInSidebar.value_or(true)};
        return action == Action::reverse ? reversal() : movement();
    }

private:
    template <class Record>
    static const Record* find(const std::vector<Record>& records, const std::optional<std::string>& id)
    {
        const auto found = std::ranges::find_if(records, [&](const Record& record) { return record.id == id; });
        return found == records.end() ? nullptr : &*found;
    }

    [[nodiscard]] DividendParticipant participant() const
    {
        const auto* const known = find(context.state.participants, command.participantID);
        return {.id = known ? known->id : stamp.recordID,
                .name = std::string{TextFold::trimmed(command.name.value_or(""))},
                .memberID = command.memberID,
                .ratioBps = command.ratioBps.value_or(known ? known->ratioBps : 0),
                .archived = command.archived.value_or(known && known->archived)};
    }

    [[nodiscard]] Participants fromOwnership() const
    {
        require(context.capital != nullptr, "only known shares are copied");
        const auto* const shares = CapitalMath::ownershipInForce(*context.capital, command.date);
        require(shares != nullptr, "only shares in force are copied");
        auto changed = OwnershipRatios::changed(*shares, context.capital->participants, context.state.participants);
        int number = 0;
        for (auto& each : changed) {
            if (each.id.empty())
                each.id = ++number == 1 ? stamp.recordID : fmt::format("{}-{}", stamp.recordID, number);
        }
        return changed;
    }

    [[nodiscard]] DividendBatch batch() const
    {
        auto lines = DividendAllocationCalculator::allocate(command.amountMinor.value_or(0),
                                                            promised(command.shares, "an allocation names its shares"),
                                                            context.state.participants);
        require(lines.has_value(), "only an allocation that can be made is accepted");
        return {.id = stamp.recordID,
                .period = std::string{TextFold::trimmed(command.period.value_or(""))},
                .currency = command.currency.value_or(""),
                .amountMinor = command.amountMinor.value_or(0),
                .date = command.date,
                .createdAt = stamp.createdAt,
                .lines = *std::move(lines),
                .cancelled = false,
                .cancelledDate = {}};
    }

    [[nodiscard]] DividendMovement begin() const
    {
        DividendMovement movement;
        movement.id = stamp.recordID;
        movement.date = command.date;
        movement.createdAt = stamp.createdAt;
        return movement;
    }

    /// A payment, an advance, a return or an application.
    [[nodiscard]] DividendMovement movement() const
    {
        auto movement = begin();
        const auto& action = command.action;
        movement.amountMinor = command.amountMinor.value_or(0);
        if (action == Action::pay || action == Action::apply)
            movement.batchID = command.batchID;
        if (action == Action::returnAdvance || action == Action::apply)
            movement.advanceID = command.advanceID;
        if (action != Action::apply)
            movement.transactionID = stamp.entryID;
        const auto* const batch = find(context.state.batches, movement.batchID);
        const auto* const advance = find(context.state.movements, movement.advanceID);
        movement.kind = action == Action::pay       ? Kind::payment
                        : action == Action::advance ? Kind::advance
                        : action == Action::apply   ? Kind::application
                                                    : Kind::returning;
        movement.currency = batch ? batch->currency : advance ? advance->currency : command.currency.value_or("");
        movement.participantID = advance ? advance->participantID : command.participantID.value_or("");
        return movement;
    }

    [[nodiscard]] DividendMovement reversal() const
    {
        const auto* const original = find(context.state.movements, command.movementID);
        require(original != nullptr, "an accepted reversal names a movement of the section");
        auto movement = begin();
        movement.kind = Kind::reversal;
        movement.participantID = original->participantID;
        movement.currency = original->currency;
        movement.amountMinor = original->amountMinor;
        movement.batchID = original->batchID;
        movement.advanceID = original->advanceID;
        if (original->transactionID)
            movement.transactionID = stamp.entryID;
        movement.reversalOf = original->id;
        return movement;
    }
};

/// Adds what a change made to a section.
struct Addition {
    const DividendChange& change;
    DividendState& state;

    void operator()(const Participants& made) const
    {
        for (const auto& each : made) {
            const auto known = std::ranges::find(state.participants, each.id, &DividendParticipant::id);
            if (known == state.participants.end())
                state.participants.push_back(each);
            else
                *known = each;
        }
    }
    void operator()(const DividendBatch& made) const
    {
        state.batches.push_back(made);
        addCurrency(made.currency);
    }
    void operator()(const DividendCancellation& made) const
    {
        const auto batch = std::ranges::find(state.batches, made.batchID, &DividendBatch::id);
        if (batch == state.batches.end())
            return;
        batch->cancelled = true;
        batch->cancelledDate = change.date;
    }
    void operator()(const DividendMovement& made) const
    {
        if (made.reversalOf) {
            const auto original = std::ranges::find(state.movements, *made.reversalOf, &DividendMovement::id);
            if (original != state.movements.end())
                original->reversedBy = made.id;
        }
        state.movements.push_back(made);
        addCurrency(made.currency);
    }
    void operator()(const SidebarVisibility& made) const { state.showInSidebar = made.shown; }

private:
    void addCurrency(const std::string& currency) const
    {
        auto& currencies = state.currencies ? *state.currencies : state.currencies.emplace();
        if (std::ranges::find(currencies, currency) == currencies.end())
            currencies.push_back(currency);
    }
};

std::string_view actionOf(const DividendMovement& movement)
{
    if (movement.kind == Kind::payment)
        return Action::pay;
    if (movement.kind == Kind::advance)
        return Action::advance;
    if (movement.kind == Kind::returning)
        return Action::returnAdvance;
    return movement.kind == Kind::application ? Action::apply : Action::reverse;
}

}

DividendChange DividendHistory::changeFor(const DividendCommand& command, const DividendContext& context,
                                          const SectionStamp& stamp)
{
    return {.revision = context.state.revision + 1,
            .action = command.action,
            .date = command.date,
            .note = command.note.value_or(""),
            .memberID = stamp.memberID,
            .createdAt = stamp.createdAt,
            .made = Maker{command, context, stamp}.make()};
}

void DividendHistory::apply(const DividendChange& change, DividendState& state)
{
    state.revision = change.revision;
    std::visit(Addition{change, state}, change.made);
}

DividendState DividendHistory::stateAfter(std::span<const DividendChange> changes)
{
    DividendState state;
    state.showInSidebar = true;
    for (const auto& change : changes)
        apply(change, state);
    return state;
}

bool DividendHistory::isOfItsAction(const DividendChange& change)
{
    const auto& action = change.action;
    if (const auto* const movement = std::get_if<DividendMovement>(&change.made))
        return action == actionOf(*movement);
    if (const auto* const participants = std::get_if<Participants>(&change.made))
        return action == Action::fillFromOwnership || (action == Action::setParticipant && participants->size() == 1);
    if (std::holds_alternative<DividendBatch>(change.made))
        return action == Action::allocate;
    if (std::holds_alternative<DividendCancellation>(change.made))
        return action == Action::cancelBatch;
    return action == Action::setVisibility;
}

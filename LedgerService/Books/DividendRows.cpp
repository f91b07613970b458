#include "LedgerService/Books/DividendRows.h"

#include <algorithm>
#include <utility>

#include "LedgerService/Books/DividendRefusals.h"

namespace LedgerService {

namespace {

namespace Action = DividendAction;

/// Participants, their ratios and visibility do not depend on the days of the books.
bool isRecordedOnItsDay(const DividendCommand& command)
{
    return command.action != Action::setParticipant && command.action != Action::setVisibility &&
           command.action != Action::fillFromOwnership;
}

std::optional<std::string> nameOf(const std::string& participantID, const DividendState& state)
{
    const auto found = std::ranges::find(state.participants, participantID, &DividendParticipant::id);
    return found == state.participants.end() ? std::nullopt : std::optional{found->name};
}

LedgerTransaction entryOf(const DividendCommand& command, const DividendMovement& movement, const DividendRows& rows)
{
    const auto note = command.note.value_or("");
    auto entry = movement.reversalOf ? SectionBooking::opposite(command.date, note, rows.rows)
                                     : SectionBooking::begin(EntryKind::dividend, command.date, note, rows.rows);
    if (!movement.reversalOf) {
        const bool arrives = movement.kind == DividendMovementKind::returning;
        entry.legs = {{command.accountID.value_or(""), movement.currency,
                       arrives ? movement.amountMinor : -movement.amountMinor}};
        entry.attachmentIDs = command.attachmentIDs.value_or(std::vector<std::string>{});
    }
    entry.distributionKind = movement.kind;
    entry.participantName = nameOf(movement.participantID, *rows.state);
    entry.dividendMovementID = movement.id;
    return entry;
}

}

DividendContext DividendRows::context() const
{
    return {.state = *state,
            .member = rows.member,
            .members = rows.members,
            .accounts = rows.accounts,
            .dividendsEnabled = !rows.settings || rows.settings->dividendsEnabled,
            .movementAccountID = rows.originalAccountID(),
            .capital = capital.get()};
}

std::optional<Refusal> whyNotShaped(const DividendCommand& command)
{
    return SectionBooking::whyNotShaped({.name = command.name,
                                         .note = command.note,
                                         .period = command.period,
                                         .attachmentIDs = command.attachmentIDs,
                                         .takesReceipts = command.action == Action::pay ||
                                                          command.action == Action::advance ||
                                                          command.action == Action::returnAdvance});
}

std::expected<DividendDecision, Refusal> decide(const DividendCommand& command, const DividendRows& rows)
{
    const auto context = rows.context();
    if (const auto refusal = DividendRules::whyNot(command, context))
        return std::unexpected(DividendRefusals::of(*refusal));
    if (isRecordedOnItsDay(command)) {
        if (auto refusal = SectionBooking::whyNotOn(command.date, rows.rows))
            return std::unexpected(*std::move(refusal));
    }
    DividendDecision decision{.change = DividendHistory::changeFor(command, context, rows.rows.stamp()),
                              .entry = std::nullopt};
    const auto* const movement = std::get_if<DividendMovement>(&decision.change.made);
    if (movement && movement->transactionID) {
        auto entry = SectionBooking::book(entryOf(command, *movement, rows), rows.rows);
        if (!entry)
            return std::unexpected(std::move(entry.error()));
        decision.entry = *std::move(entry);
    }
    return decision;
}

}

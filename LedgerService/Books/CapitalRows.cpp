#include "LedgerService/Books/CapitalRows.h"

#include <utility>

#include "LedgerCore/Domain/Entries/EntryDays.h"
#include "LedgerService/Books/BookRefusal.h"
#include "LedgerService/Books/CapitalRefusals.h"

namespace LedgerService {

namespace {

/// Owners, visibility and shares, which may hold from earlier and later days, do not depend on the days of the books.
bool isRecordedOnItsDay(const CapitalCommand& command)
{
    return command.action == CapitalAction::contribute || command.action == CapitalAction::reverse ||
           command.action == CapitalAction::setBaseline;
}

LedgerTransaction entryOf(const CapitalCommand& command, const CapitalContribution& contribution,
                          const SectionRows& rows)
{
    const auto note = command.note.value_or("");
    auto entry = contribution.reversalOf ? SectionBooking::opposite(command.date, note, rows)
                                         : SectionBooking::begin(EntryKind::capital, command.date, note, rows);
    if (!contribution.reversalOf) {
        entry.legs = {{command.accountID.value_or(""), contribution.currency, contribution.amountMinor}};
        entry.attachmentIDs = command.attachmentIDs.value_or(std::vector<std::string>{});
    }
    entry.participantName = contribution.participantName;
    entry.capitalContributionID = contribution.id;
    return entry;
}

}

CapitalContext CapitalRows::context() const
{
    return {.state = *state,
            .member = rows.member,
            .members = rows.members,
            .accounts = rows.accounts,
            .contributionsEnabled = !rows.settings || rows.settings->contributionsEnabled,
            .contributionAccountID = rows.originalAccountID()};
}

std::optional<Refusal> whyNotShaped(const CapitalCommand& command)
{
    return SectionBooking::whyNotShaped({.name = command.name,
                                         .note = command.note,
                                         .period = std::nullopt,
                                         .attachmentIDs = command.attachmentIDs,
                                         .takesReceipts = command.action == CapitalAction::contribute});
}

std::expected<CapitalDecision, Refusal> decide(const CapitalCommand& command, const CapitalRows& rows)
{
    if (const auto refusal = CapitalRules::whyNot(command, rows.context()))
        return std::unexpected(CapitalRefusals::of(*refusal));
    if (isRecordedOnItsDay(command)) {
        if (auto refusal = SectionBooking::whyNotOn(command.date, rows.rows))
            return std::unexpected(*std::move(refusal));
    }
    if (command.action == CapitalAction::setOwnership &&
        command.date > CapitalRules::latestOwnershipDay(EntryDays::latest(rows.rows.today)))
        return std::unexpected(BookRefusal::of(PostingReason::inFuture));
    CapitalDecision decision{.change = CapitalHistory::changeFor(command, *rows.state, rows.rows.stamp()),
                             .entry = std::nullopt};
    if (const auto* const contribution = std::get_if<CapitalContribution>(&decision.change.made)) {
        auto entry = SectionBooking::book(entryOf(command, *contribution, rows.rows), rows.rows);
        if (!entry)
            return std::unexpected(std::move(entry.error()));
        decision.entry = *std::move(entry);
    }
    return decision;
}

}

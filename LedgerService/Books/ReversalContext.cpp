#include "LedgerService/Books/ReversalContext.h"

#include <algorithm>

#include "LedgerCore/Domain/LedgerEntryAccess.h"
#include "LedgerService/Books/BalanceChange.h"
#include "LedgerService/Books/BookDays.h"
#include "LedgerService/Books/BookRefusal.h"
#include "LedgerService/Books/EntryShape.h"

namespace {

using Answer = std::optional<Refusal>;

bool isVisible(const std::optional<LedgerTransaction>& entry, const Member& member)
{
    return entry &&
           std::ranges::any_of(entry->legs, [&](const auto& leg) { return member.can("view", leg.accountID); });
}

/// Where an entry is undone is said before whether this member may, so that the way there is always shown.
Answer whyNotReversible(const LedgerTransaction& original, const Member& member)
{
    using enum LedgerEntryAccess::ReversalRefusal;
    const auto refusal = LedgerEntryAccess::whyNotReverse(original, member);
    if (refusal == isReversal)
        return BookRefusal::invalid("A reversal is not reversed; record the entry again.");
    if (refusal == alreadyReversed)
        return BookRefusal::alreadyReversed();
    switch (LedgerEntryAccess::correctionPage(original)) {
    case LedgerEntryAccess::CorrectionPage::capital:
        return BookRefusal::capitalCorrectionRequired();
    case LedgerEntryAccess::CorrectionPage::dividends:
        return BookRefusal::dividendCorrectionRequired();
    case LedgerEntryAccess::CorrectionPage::ledger:
        break;
    }
    return refusal ? Answer{BookRefusal::forbidden("The member may not correct the entry.")} : std::nullopt;
}

Answer whyNotOnDay(const Reversal& command, const ReversalContext& context)
{
    if (auto refusal = BookDays::whyNot(command.date, context.today, context.settings))
        return refusal;
    if (command.date < BookDays::shifted(context.original->date, -1))
        return BookRefusal::invalid("The day lies before the entry that is reversed.");
    return std::nullopt;
}

Answer whyNot(const Reversal& command, const ReversalContext& context)
{
    if (!context.member.active)
        return BookRefusal::inactiveMember();
    if (auto refusal = EntryShape::whyNot(command))
        return refusal;
    if (!isVisible(context.original, context.member))
        return BookRefusal::notFound();
    if (auto refusal = whyNotReversible(*context.original, context.member))
        return refusal;
    if (context.refundsExist)
        return BookRefusal::refundsExist();
    if (std::ranges::any_of(context.accounts, &Account::archived))
        return BookRefusal::accountArchived();
    return whyNotOnDay(command, context);
}

}

std::expected<EntryChange, Refusal> decide(const Reversal& command, const ReversalContext& context)
{
    if (auto refusal = whyNot(command, context))
        return std::unexpected(*std::move(refusal));

    const auto& original = *context.original;
    EntryChange change;
    change.entry.id = context.entryID;
    change.entry.kind = EntryKind::reversal;
    change.entry.date = command.date;
    change.entry.note = command.reason;
    change.entry.createdAt = context.now;
    change.entry.memberID = context.member.id;
    change.entry.reversalOf = original.id;
    change.entry.legs = original.legs;
    for (auto& leg : change.entry.legs)
        leg.amountMinor = -leg.amountMinor;
    std::vector<const Account*> accounts;
    for (const auto& account : context.accounts)
        accounts.push_back(&account);
    auto balances = balancesAfter(change.entry.legs, accounts);
    if (!balances)
        return std::unexpected(std::move(balances.error()));
    change.balances = *std::move(balances);
    return change;
}

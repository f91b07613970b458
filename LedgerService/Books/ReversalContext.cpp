#include "LedgerService/Books/ReversalContext.h"

#include <algorithm>

#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerService/Books/BalanceChange.h"
#include "LedgerService/Books/BookDays.h"
#include "LedgerService/Books/BookRefusal.h"
#include "LedgerService/Books/EntryShape.h"

namespace LedgerService {

namespace {

using Answer = std::optional<Refusal>;

bool sees(const Member& member, const LedgerTransaction& entry)
{
    return std::ranges::any_of(entry.legs, [&](const auto& leg) { return member.can("view", leg.accountID); });
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

Answer whyNotOnDay(const Reversal& command, const LedgerTransaction& original, const ReversalContext& context)
{
    if (auto refusal = BookDays::whyNot(command.date, context.today, context.settings))
        return refusal;
    if (command.date < BookDays::shifted(original.date, -1))
        return BookRefusal::invalid("The day lies before the entry that is reversed.");
    return std::nullopt;
}

/// What speaks against reversing an entry that the member sees.
Answer whyNot(const Reversal& command, const LedgerTransaction& original, const ReversalContext& context)
{
    if (auto refusal = whyNotReversible(original, context.member))
        return refusal;
    if (context.refundsExist)
        return BookRefusal::refundsExist();
    if (std::ranges::any_of(context.accounts, &Account::archived))
        return BookRefusal::accountArchived();
    return whyNotOnDay(command, original, context);
}

LedgerTransaction oppositeOf(const LedgerTransaction& original, const Reversal& command, const ReversalContext& context)
{
    LedgerTransaction entry;
    entry.id = context.entryID;
    entry.kind = EntryKind::reversal;
    entry.date = command.date;
    entry.note = command.reason;
    entry.createdAt = context.now;
    entry.memberID = context.member.id;
    entry.reversalOf = original.id;
    entry.legs = original.legs;
    for (auto& leg : entry.legs)
        leg.amountMinor = -leg.amountMinor;
    return entry;
}

}

std::expected<EntryChange, Refusal> decide(const Reversal& command, const ReversalContext& context)
{
    if (!context.member.active)
        return std::unexpected(BookRefusal::inactiveMember());
    if (auto refusal = EntryShape::whyNot(command))
        return std::unexpected(*std::move(refusal));
    if (!context.original || !sees(context.member, *context.original))
        return std::unexpected(BookRefusal::notFound());
    const auto& original = *context.original;
    if (auto refusal = whyNot(command, original, context))
        return std::unexpected(*std::move(refusal));

    auto entry = oppositeOf(original, command, context);
    std::vector<const Account*> accounts;
    accounts.reserve(context.accounts.size());
    for (const auto& account : context.accounts)
        accounts.push_back(&account);
    auto balances = balancesAfter(entry.legs, accounts);
    if (!balances)
        return std::unexpected(std::move(balances.error()));
    return EntryChange{std::move(entry), *std::move(balances)};
}

}

#include "LedgerCore/Domain/Entries/Reversals/ReversalRules.h"

#include <algorithm>

#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Entries/BalanceRules.h"
#include "LedgerCore/Domain/Entries/EntryDays.h"
#include "LedgerCore/Domain/Entries/EntryText.h"

namespace {

using ReversalRules::Refusal;
using Answer = std::optional<Refusal>;

Answer whyNotByItself(const Reversal& command)
{
    if (!LedgerDay::isValid(command.date))
        return Refusal::invalidDay;
    if (!EntryText::isKey(command.idempotencyKey))
        return Refusal::invalidKey;
    if (!EntryText::isSound(command.reason))
        return Refusal::reasonUnsound;
    if (!EntryText::fitsNote(command.reason))
        return Refusal::reasonTooLong;
    return std::nullopt;
}

Answer whyNotByPage(const LedgerTransaction& original)
{
    switch (LedgerEntryAccess::correctionPage(original)) {
    case LedgerEntryAccess::CorrectionPage::capital:
        return Refusal::capitalCorrection;
    case LedgerEntryAccess::CorrectionPage::dividends:
        return Refusal::dividendCorrection;
    case LedgerEntryAccess::CorrectionPage::ledger:
        break;
    }
    return std::nullopt;
}

/// Where an entry is undone is said before whether this member may, so that the way there is always shown.
Answer whyNotByRight(const LedgerTransaction& original, const Member& member)
{
    const auto refusal = LedgerEntryAccess::whyNotReverse(original, member);
    if (refusal == LedgerEntryAccess::ReversalRefusal::isReversal)
        return Refusal::isReversal;
    if (refusal == LedgerEntryAccess::ReversalRefusal::alreadyReversed)
        return Refusal::alreadyReversed;
    if (const auto elsewhere = whyNotByPage(original))
        return elsewhere;
    if (refusal == LedgerEntryAccess::ReversalRefusal::noLegs)
        return Refusal::noLegs;
    return refusal ? Answer{Refusal::notPermitted} : std::nullopt;
}

Answer whyNotTheEntry(const ReversalContext& context)
{
    if (!context.original || !LedgerEntryAccess::canView(*context.original, *context.member))
        return Refusal::notFound;
    if (const auto refusal = whyNotByRight(*context.original, *context.member))
        return refusal;
    if (context.refundsExist)
        return Refusal::refundsExist;
    if (std::ranges::any_of(context.accounts, &Account::archived))
        return Refusal::accountArchived;
    return std::nullopt;
}

Answer whyNotOnDay(std::string_view day, const ReversalContext& context)
{
    if (const auto refusal = EntryDays::whyNot(day, context.today, context.start))
        return *refusal == EntryDays::Refusal::inFuture ? Refusal::inFuture : Refusal::beforeStart;
    if (day < EntryDays::earliestAfter(context.original->date))
        return Refusal::beforeOriginal;
    return std::nullopt;
}

Answer whyNotByBalances(const ReversalContext& context)
{
    const auto opposite = ReversalRules::legs(*context.original);
    const auto balances = BalanceRules::after(opposite, context.accounts);
    if (balances)
        return std::nullopt;
    return balances.error().reason == BalanceRules::Reason::insufficientFunds ? Refusal::insufficientFunds
                                                                              : Refusal::balanceLimit;
}

}

ReversalContext ReversalRules::contextOf(const LedgerTransaction& entry, const VisibleBooks& books,
                                         std::string_view today)
{
    return contextOf(entry, books.snapshot(), books.hasRefunds(entry.id), today);
}

ReversalContext ReversalRules::contextOf(const LedgerTransaction& entry, const LedgerSnapshot& snapshot,
                                         bool hasRefunds, std::string_view today)
{
    ReversalContext context;
    context.member = &snapshot.currentMember;
    context.today = today;
    context.start = EntryDays::start(snapshot.financialSettings);
    context.original = &entry;
    for (const auto& leg : entry.legs) {
        const auto* const account = snapshot.account(leg.accountID);
        if (account && std::ranges::find(context.accounts, account) == context.accounts.end())
            context.accounts.push_back(account);
    }
    context.refundsExist = entry.kind == EntryKind::income && hasRefunds;
    return context;
}

std::optional<Refusal> ReversalRules::whyNot(const LedgerTransaction& entry, const VisibleBooks& books)
{
    return whyNot(contextOf(entry, books, {}));
}

std::optional<Refusal> ReversalRules::whyNot(const ReversalContext& context)
{
    require(context.member != nullptr, "somebody reverses");
    if (!context.member->active)
        return Refusal::inactiveMember;
    if (const auto refusal = whyNotTheEntry(context))
        return refusal;
    return whyNotByBalances(context);
}

std::optional<Refusal> ReversalRules::whyNot(const Reversal& command, const ReversalContext& context)
{
    require(context.member != nullptr, "somebody reverses");
    if (!context.member->active)
        return Refusal::inactiveMember;
    if (const auto refusal = whyNotByItself(command))
        return refusal;
    if (const auto refusal = whyNotTheEntry(context))
        return refusal;
    if (const auto refusal = whyNotOnDay(command.date, context))
        return refusal;
    return whyNotByBalances(context);
}

std::vector<LedgerLeg> ReversalRules::legs(const LedgerTransaction& original)
{
    auto legs = original.legs;
    for (auto& leg : legs)
        leg.amountMinor = -leg.amountMinor;
    return legs;
}

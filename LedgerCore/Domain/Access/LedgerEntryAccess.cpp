#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace {

using LedgerEntryAccess::CorrectionPage;
using LedgerEntryAccess::DestinationRefusal;
using LedgerEntryAccess::OriginalRefusal;
using LedgerEntryAccess::RecordRefusal;
using LedgerEntryAccess::ReversalRefusal;

std::string_view actionOf(std::string_view kind)
{
    return kind == EntryKind::transfer ? AccountAction::transferOut : kind;
}

/// Both ends of a transfer with a purpose are tested on opposite accounts; without both ends nothing is known.
std::optional<bool> mayReverseTransfer(const LedgerTransaction& transaction, const Member& member)
{
    const auto source = std::ranges::find_if(transaction.legs, [](const auto& leg) { return leg.amountMinor < 0; });
    const auto destination =
        std::ranges::find_if(transaction.legs, [](const auto& leg) { return leg.amountMinor >= 1; });
    if (source == transaction.legs.end() || destination == transaction.legs.end())
        return std::nullopt;
    if (transaction.transferPurpose == TransferPurpose::funding)
        return member.can(AccountAction::correct, source->accountID) &&
               member.can(AccountAction::transferIn, destination->accountID);
    if (transaction.transferPurpose == TransferPurpose::returning)
        return member.can(AccountAction::transferIn, source->accountID) &&
               member.can(AccountAction::correct, destination->accountID);
    return std::nullopt;
}

}

std::optional<RecordRefusal> LedgerEntryAccess::whyNotRecord(const Account& account, const Member& member,
                                                             std::string_view kind)
{
    using enum RecordRefusal;
    if (account.archived)
        return archived;
    if (!member.active)
        return inactiveMember;
    if (account.id.empty())
        return noIdentifier;
    if (!member.can(AccountAction::view, account.id))
        return notViewable;
    if (!member.can(actionOf(kind), account.id))
        return notGranted;
    if (account.isRestricted() && account.responsibleMemberID() != std::string_view{member.id})
        return notResponsible;
    if (!takesKind(account, kind))
        return kindRefused;
    return std::nullopt;
}

bool LedgerEntryAccess::takesKind(const Account& account, std::string_view kind)
{
    if (account.hasPurpose(AccountPurpose::refund))
        return kind != EntryKind::income && kind != EntryKind::exchange;
    return !account.isRestricted() || (kind != EntryKind::refund && kind != EntryKind::exchange);
}

std::vector<const Account*> LedgerEntryAccess::accounts(const LedgerSnapshot& snapshot, std::string_view kind)
{
    std::vector<const Account*> offered;
    for (const auto& account : snapshot.accounts) {
        if (!whyNotRecord(account, snapshot.currentMember, kind))
            offered.push_back(&account);
    }
    return offered;
}

std::optional<std::string_view> LedgerEntryAccess::transferPurpose(const Account& source, const Account& destination)
{
    if (source.isRestricted())
        return TransferPurpose::returning;
    if (destination.isRestricted())
        return TransferPurpose::funding;
    return std::nullopt;
}

std::optional<DestinationRefusal> LedgerEntryAccess::whyNotReceive(const Account& source, const Account& destination,
                                                                   const Member& member)
{
    using enum DestinationRefusal;
    if (source.id == destination.id)
        return sameAccount;
    const bool seen = member.can(AccountAction::view, destination.id);
    const auto purpose = transferPurpose(source, destination);
    const bool given = member.can(AccountAction::transferIn, destination.id) ||
                       (purpose == TransferPurpose::returning && source.returnAccountID == destination.id);
    if (!seen && !(given && purpose))
        return notViewable;
    if (!given)
        return notGranted;
    if (destination.archived)
        return archived;
    if (source.isRestricted() && destination.isRestricted())
        return restrictedToRestricted;
    return std::nullopt;
}

std::vector<TransferDestination> LedgerEntryAccess::transferDestinations(std::span<const Account> accounts,
                                                                         const Member& member)
{
    std::unordered_set<std::string_view> returnAccounts;
    for (const auto& account : accounts) {
        if (account.isRestricted() && account.returnAccountID && !whyNotRecord(account, member, EntryKind::transfer))
            returnAccounts.insert(*account.returnAccountID);
    }
    std::vector<TransferDestination> destinations;
    for (const auto& account : accounts) {
        if (account.archived || !member.active)
            continue;
        const bool granted = member.can(AccountAction::transferIn, account.id);
        const bool funding = account.isRestricted() && granted;
        const bool returning = !account.isRestricted() && (granted || returnAccounts.contains(account.id));
        if (funding || returning)
            destinations.push_back({account.id, account.name, account.currencies, funding, returning});
    }
    return destinations;
}

bool LedgerEntryAccess::canView(const LedgerTransaction& transaction, const Member& member)
{
    return std::ranges::any_of(transaction.legs,
                               [&](const auto& leg) { return member.can(AccountAction::view, leg.accountID); });
}

bool LedgerEntryAccess::canCorrect(const LedgerTransaction& transaction, const Member& member)
{
    return !transaction.legs.empty() && std::ranges::all_of(transaction.legs, [&](const LedgerLeg& leg) {
        return member.can(AccountAction::view, leg.accountID) && member.can(AccountAction::correct, leg.accountID);
    });
}

std::optional<ReversalRefusal> LedgerEntryAccess::whyNotReverse(const LedgerTransaction& transaction,
                                                                const Member& member)
{
    using enum ReversalRefusal;
    if (transaction.kind == EntryKind::reversal)
        return isReversal;
    if (transaction.reversedBy)
        return alreadyReversed;
    if (transaction.legs.empty())
        return noLegs;
    if (transaction.kind == EntryKind::transfer && transaction.transferPurpose) {
        if (const auto permitted = mayReverseTransfer(transaction, member))
            return *permitted ? std::nullopt : std::optional{notPermitted};
    }
    return canCorrect(transaction, member) ? std::nullopt : std::optional{notPermitted};
}

CorrectionPage LedgerEntryAccess::correctionPage(const LedgerTransaction& transaction)
{
    if (transaction.kind == EntryKind::capital || transaction.capitalContributionID)
        return CorrectionPage::capital;
    if (transaction.kind == EntryKind::dividend || transaction.dividendMovementID || transaction.distributionKind)
        return CorrectionPage::dividends;
    return CorrectionPage::ledger;
}

bool LedgerEntryAccess::canReverse(const LedgerTransaction& transaction, const LedgerSnapshot& snapshot)
{
    return !whyNotReverse(transaction, snapshot.currentMember);
}

bool LedgerEntryAccess::canRefund(const Account& account, const Member& member, std::string_view currency)
{
    return member.can(AccountAction::view, account.id) && member.can(AccountAction::refund, account.id) &&
           account.holds(currency);
}

std::optional<OriginalRefusal> LedgerEntryAccess::whyNotRefund(const LedgerTransaction& original,
                                                               const AccountLookup& account, const Member& member,
                                                               std::string_view currency)
{
    using enum OriginalRefusal;
    if (original.kind != EntryKind::income)
        return notIncome;
    if (std::ranges::find(original.legs, currency, &LedgerLeg::currency) == original.legs.end())
        return otherCurrency;
    if (original.reversedBy)
        return reversed;
    const bool permitted = std::ranges::all_of(original.legs, [&](const LedgerLeg& leg) {
        const auto* const known = account(leg.accountID);
        return known && canRefund(*known, member, leg.currency);
    });
    return permitted ? std::nullopt : std::optional{notPermitted};
}

std::vector<const LedgerTransaction*> LedgerEntryAccess::refundableIncomes(const LedgerSnapshot& snapshot,
                                                                           std::string_view currency)
{
    std::unordered_map<std::string_view, const Account*> byID;
    for (const auto& account : snapshot.accounts)
        byID.emplace(account.id, &account);
    const AccountLookup lookup = [&](std::string_view id) {
        const auto found = byID.find(id);
        return found == byID.end() ? nullptr : found->second;
    };

    std::vector<const LedgerTransaction*> incomes;
    for (const auto& entry : snapshot.transactions) {
        if (!whyNotRefund(entry, lookup, snapshot.currentMember, currency))
            incomes.push_back(&entry);
    }
    return incomes;
}

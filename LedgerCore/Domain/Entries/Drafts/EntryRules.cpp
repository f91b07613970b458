#include "LedgerCore/Domain/Entries/Drafts/EntryRules.h"

#include <algorithm>
#include <array>

#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"

namespace {

std::optional<EntryDestination> transferInto(const Account& destination, const Account& source, const Member& member,
                                             std::string_view currency)
{
    if (!destination.holds(currency) || LedgerEntryAccess::whyNotReceive(source, destination, member))
        return std::nullopt;
    const auto purpose = LedgerEntryAccess::transferPurpose(source, destination);
    return EntryDestination{destination.id, destination.name, destination.currencies, nullptr,
                            purpose ? std::optional<std::string>{*purpose} : std::nullopt};
}

std::vector<EntryDestination> transferDestinations(const LedgerSnapshot& snapshot, const Account& source,
                                                   std::string_view currency)
{
    std::vector<EntryDestination> options;
    for (const auto& account : snapshot.accounts) {
        if (auto offered = transferInto(account, source, snapshot.currentMember, currency)) {
            offered->seen = &account;
            options.push_back(std::move(*offered));
        }
    }
    for (const auto& unseen : VisibleBooks{snapshot}.unseenDestinations()) {
        if (auto offered = transferInto(unseen, source, snapshot.currentMember, currency))
            options.push_back(std::move(*offered));
    }
    return options;
}

std::vector<EntryDestination> exchangeDestinations(const LedgerSnapshot& snapshot, std::string_view sentCurrency)
{
    std::vector<EntryDestination> options;
    for (const auto* account : LedgerEntryAccess::accounts(snapshot, EntryKind::exchange)) {
        if (std::ranges::any_of(account->currencies, [&](const auto& code) { return code != sentCurrency; }))
            options.push_back({account->id, account->name, account->currencies, account, std::nullopt});
    }
    return options;
}

}

std::optional<std::string> EntryRules::retainedTarget(const std::optional<std::string>& current,
                                                      std::span<const EntryDestination> options)
{
    if (current && std::ranges::find(options, *current, &EntryDestination::id) != options.end())
        return current;
    return std::nullopt;
}

std::optional<std::string> EntryRules::initialAccountID(const std::optional<std::string>& explicitID,
                                                        const std::optional<std::string>& preferredID,
                                                        const std::optional<std::string>& preferredCurrency,
                                                        std::span<const Account* const> options)
{
    const auto holdsPreferred = [&](const Account* account) {
        return !preferredCurrency || account->holds(*preferredCurrency);
    };
    const auto& wanted = explicitID ? explicitID : preferredID;
    const auto found =
        std::ranges::find_if(options, [&](const Account* each) { return wanted && each->id == *wanted; });
    if (explicitID)
        return found == options.end() ? std::nullopt : explicitID;
    if (found != options.end() && holdsPreferred(*found))
        return preferredID;
    if (std::ranges::count_if(options, holdsPreferred) == 1)
        return (*std::ranges::find_if(options, holdsPreferred))->id;
    return std::nullopt;
}

std::vector<std::string_view> EntryRules::availableKinds(const LedgerSnapshot& snapshot)
{
    std::vector<std::string_view> kinds;
    for (const auto kind :
         std::array{EntryKind::expense, EntryKind::income, EntryKind::transfer, EntryKind::exchange}) {
        if (!LedgerEntryAccess::accounts(snapshot, kind).empty())
            kinds.push_back(kind);
    }
    return kinds;
}

std::vector<EntryDestination> EntryRules::destinations(const LedgerSnapshot& snapshot, const TransactionDraft& draft)
{
    const auto* const source = draft.source ? snapshot.account(*draft.source) : nullptr;
    if (!source)
        return {};
    if (draft.kind == EntryKind::exchange)
        return exchangeDestinations(snapshot, draft.currency);
    return transferDestinations(snapshot, *source, draft.currency);
}

std::vector<RefundableIncome> EntryRules::refundableIncomes(const VisibleBooks& books, std::string_view currency)
{
    std::vector<RefundableIncome> open;
    for (const auto* income : LedgerEntryAccess::refundableIncomes(books.snapshot(), currency)) {
        const auto remaining =
            PostingRules::receivedMinor(*income, currency) - books.refundedMinor(income->id, currency);
        if (remaining > 0)
            open.push_back({income, remaining});
    }
    return open;
}

std::vector<RefundableIncome> EntryRules::refundableIncomes(const LedgerSnapshot& snapshot, std::string_view currency)
{
    return refundableIncomes(VisibleBooks{snapshot}, currency);
}

std::optional<std::int64_t> EntryRules::reserve(const VisibleBooks& books, const Account& account,
                                                std::string_view currency)
{
    return books.isBalanceKnown(account, currency) ? std::optional{account.balance(currency)} : std::nullopt;
}

#include "LedgerCore/Domain/Exports/LedgerExportSelection.h"

#include <algorithm>
#include <optional>

#include <boost/unordered/unordered_flat_set.hpp>

#include "LedgerCore/Domain/Access/MemberRights.h"

namespace {

using IDs = boost::unordered_flat_set<std::string_view>;

/// What the scope lets through, looked up per leg.
struct ScopeFilter {
    const LedgerExportScope& scope;
    IDs accounts; // the visible ones of the scope
    IDs entries;  // where the scope names them

    [[nodiscard]] bool takes(const LedgerLeg& leg) const
    {
        return accounts.contains(leg.accountID) && goes(scope.direction, leg.amountMinor) &&
               (scope.includesAllVisibleCurrencies || scope.currencies.contains(leg.currency));
    }

    [[nodiscard]] bool isMeant(const LedgerTransaction& entry) const
    {
        return (!scope.entryIDs || entries.contains(entry.id)) && entry.date >= scope.startDate &&
               entry.date <= scope.endDate && scope.kinds.contains(entry.kind);
    }

    [[nodiscard]] bool takesWhole(const LedgerTransaction& entry) const
    {
        return isMeant(entry) && !entry.legs.empty() &&
               std::ranges::all_of(entry.legs, [this](const LedgerLeg& leg) { return takes(leg); });
    }

    /// The entry with those of its legs that are taken; nothing without any.
    [[nodiscard]] std::optional<LedgerTransaction> part(const LedgerTransaction& entry) const
    {
        if (!isMeant(entry) || std::ranges::none_of(entry.legs, [this](const LedgerLeg& leg) { return takes(leg); }))
            return std::nullopt;
        auto part = entry;
        std::erase_if(part.legs, [this](const LedgerLeg& leg) { return !takes(leg); });
        return part;
    }
};

/// The scope's accounts, or nothing when the member no longer sees one of them or one of the currencies.
std::optional<ScopeFilter> filterFor(const LedgerSnapshot& snapshot, const LedgerExportScope& scope)
{
    ScopeFilter filter{scope, {}, {}};
    if (scope.entryIDs)
        filter.entries.insert(scope.entryIDs->begin(), scope.entryIDs->end());
    IDs currencies;
    for (const auto& account : snapshot.accounts) {
        if (!snapshot.currentMember.can(AccountAction::view, account.id))
            continue;
        currencies.insert(account.currencies.begin(), account.currencies.end());
        if (scope.includesAllVisibleAccounts || scope.accountIDs.contains(account.id))
            filter.accounts.insert(account.id);
    }
    const bool seesAccounts = scope.includesAllVisibleAccounts || filter.accounts.size() == scope.accountIDs.size();
    const bool seesCurrencies =
        scope.includesAllVisibleCurrencies ||
        std::ranges::all_of(scope.currencies, [&](const auto& currency) { return currencies.contains(currency); });
    if (!seesAccounts || !seesCurrencies)
        return std::nullopt;
    return filter;
}

template <class Record>
std::vector<Record> namedBy(const IDs& ids, const std::vector<Record>& records)
{
    std::vector<Record> named;
    std::ranges::copy_if(records, std::back_inserter(named),
                         [&](const auto& record) { return ids.contains(record.id); });
    return named;
}

/// Takes over, from the whole books, the records that the selected entries name.
void addNamedRecords(LedgerSnapshot& selected, const LedgerSnapshot& whole)
{
    IDs accounts;
    IDs members;
    IDs categories;
    IDs attachments;
    for (const auto& entry : selected.transactions) {
        members.insert(entry.memberID);
        if (entry.categoryID)
            categories.insert(*entry.categoryID);
        for (const auto& leg : entry.legs)
            accounts.insert(leg.accountID);
        attachments.insert(entry.attachmentIDs.begin(), entry.attachmentIDs.end());
    }
    selected.accounts = namedBy(accounts, whole.accounts);
    selected.members = namedBy(members, whole.members);
    selected.categories = namedBy(categories, whole.categories);
    // Names of receipts leave the books only by their own right, so that losing it makes another selection.
    if (MemberRights::canListReceipts(whole.currentMember))
        selected.attachments =
            whole.attachments.filtered([&](const Attachment& receipt) { return attachments.contains(receipt.id); });
}

}

std::expected<LedgerExportSelection, ExportRefusal> LedgerExportSelection::create(const LedgerSnapshot& snapshot,
                                                                                  const LedgerExportScope& scope)
{
    if (!MemberRights::canExport(snapshot.currentMember))
        return std::unexpected(ExportRefusal::forbidden);
    const auto filter = filterFor(snapshot, scope);
    if (!filter)
        return std::unexpected(ExportRefusal::ledgerScopeChanged);

    LedgerExportSelection selection;
    auto& selected = selection.snapshot;
    selected.company = snapshot.company;
    selected.currentMember = snapshot.currentMember;
    selected.transactions =
        snapshot.transactions.filtered([&](const LedgerTransaction& entry) { return filter->takesWhole(entry); },
                                       [&](const LedgerTransaction& entry) { return filter->part(entry); });
    addNamedRecords(selected, snapshot);
    return selection;
}

LedgerExportPreview LedgerExportSelection::preview() const
{
    LedgerExportPreview preview{.transactionCount = snapshot.transactions.size(),
                                .accountCount = snapshot.accounts.size()};
    for (const auto& entry : snapshot.transactions) {
        preview.entryCount += entry.legs.size();
        preview.receiptCount += entry.attachmentIDs.size();
    }
    return preview;
}

#include "LedgerCore/Domain/Exports/ReportExportAuthorization.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace {

using IDs = std::unordered_set<std::string_view>;

bool touches(const LedgerTransaction& entry, const IDs& accountIDs, std::string_view currency)
{
    return std::ranges::any_of(entry.legs, [&](const LedgerLeg& leg) {
        return leg.currency == currency && accountIDs.contains(leg.accountID);
    });
}

/// The entries that move money in the report, and those that reversals and refunds among them refer to: these say
/// under which movement and category the money stands.
EntryList entriesBehind(const EntryList& all, const IDs& accountIDs, std::string_view currency)
{
    IDs referredTo;
    for (const auto& entry : all) {
        if (!touches(entry, accountIDs, currency))
            continue;
        if (entry.reversalOf)
            referredTo.insert(*entry.reversalOf);
        if (entry.originalTransactionID)
            referredTo.insert(*entry.originalTransactionID);
    }
    EntryList entries;
    std::ranges::copy_if(all, std::back_inserter(entries), [&](const LedgerTransaction& entry) {
        return referredTo.contains(entry.id) || touches(entry, accountIDs, currency);
    });
    return entries;
}

/// The categories of these entries with the ones above them, whose names group the report's lines.
std::vector<Category> categoriesOf(const EntryList& entries, const std::vector<Category>& all)
{
    IDs ids;
    for (const auto& entry : entries) {
        if (entry.categoryID)
            ids.insert(*entry.categoryID);
    }
    IDs parents;
    for (const auto& category : all) {
        if (category.parentID && ids.contains(category.id))
            parents.insert(*category.parentID);
    }
    std::vector<Category> used;
    std::ranges::copy_if(all, std::back_inserter(used), [&](const Category& category) {
        return ids.contains(category.id) || parents.contains(category.id);
    });
    return used;
}

}

ReportExportAuthorization::Evidence ReportExportAuthorization::Evidence::of(const LedgerSnapshot& snapshot,
                                                                            const AccountIDs& accountIDs,
                                                                            std::string_view currency)
{
    Evidence evidence;
    evidence.companyName = snapshot.company.name;
    std::ranges::copy_if(snapshot.accounts, std::back_inserter(evidence.accounts),
                         [&](const Account& account) { return accountIDs.contains(account.id); });
    const IDs ids{accountIDs.begin(), accountIDs.end()};
    evidence.transactions = entriesBehind(snapshot.transactions, ids, currency);
    evidence.categories = categoriesOf(evidence.transactions, snapshot.categories);
    if (const auto& settings = snapshot.financialSettings) {
        evidence.bookkeepingStartDate = settings->bookkeepingStartDate;
        evidence.initializationMode = settings->initializationMode;
    }
    return evidence;
}

ReportExportAuthorization::AccountIDs ReportExportAuthorization::visibleIDs(const LedgerSnapshot& snapshot,
                                                                            std::string_view currency)
{
    AccountIDs ids;
    for (const auto& account : snapshot.accounts) {
        if (account.holds(currency) && snapshot.currentMember.can(AccountAction::view, account.id))
            ids.insert(account.id);
    }
    return ids;
}

std::expected<void, ExportRefusal> ReportExportAuthorization::requireAccess(const LedgerSnapshot& snapshot,
                                                                            const AccountIDs& accountIDs,
                                                                            std::string_view currency)
{
    if (std::ranges::includes(visibleIDs(snapshot, currency), accountIDs))
        return {};
    return std::unexpected(ExportRefusal::forbidden);
}

std::expected<ReportExportAuthorization, ExportRefusal>
ReportExportAuthorization::create(const LedgerSnapshot& snapshot, std::string_view currency,
                                  std::optional<AccountIDs> accountIDs)
{
    ReportExportAuthorization authorization;
    authorization.includesAllVisibleAccounts = !accountIDs.has_value();
    authorization.accountIDs = accountIDs ? *std::move(accountIDs) : visibleIDs(snapshot, currency);
    if (const auto access = requireAccess(snapshot, authorization.accountIDs, currency); !access)
        return std::unexpected(access.error());
    authorization.companyID = snapshot.company.id;
    authorization.userID = snapshot.currentMember.userID;
    authorization.memberID = snapshot.currentMember.id;
    authorization.currency = currency;
    authorization.evidence = Evidence::of(snapshot, authorization.accountIDs, currency);
    return authorization;
}

std::expected<void, ExportRefusal> ReportExportAuthorization::validate(const LedgerSnapshot& snapshot) const
{
    const auto& member = snapshot.currentMember;
    if (snapshot.company.id != companyID || member.userID != userID || member.id != memberID)
        return std::unexpected(ExportRefusal::reportScopeChanged);
    if (const auto access = requireAccess(snapshot, accountIDs, currency); !access)
        return std::unexpected(access.error());
    if (includesAllVisibleAccounts && visibleIDs(snapshot, currency) != accountIDs)
        return std::unexpected(ExportRefusal::reportChanged);
    if (Evidence::of(snapshot, accountIDs, currency) != evidence)
        return std::unexpected(ExportRefusal::reportChanged);
    return {};
}

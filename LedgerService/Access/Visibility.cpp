#include "LedgerService/Access/Visibility.h"

#include <algorithm>

bool Visibility::managesCompany(const Member& member)
{
    if (!member.active)
        return false;
    if (member.permissions)
        return member.hasPermission("manageCompany");
    return member.role == "owner" || member.role == "admin";
}

std::vector<Member> Visibility::members(std::vector<Member> all, const Member& reader)
{
    if (managesCompany(reader))
        return all;
    for (auto& each : all) {
        if (each.id == reader.id)
            continue;
        each.email.clear();
        each.accountIDs.clear();
        each.permissions.reset();
        each.accountGrants.reset();
        each.selectedCategoryIDs.reset();
        each.transactionColors.reset();
    }
    return all;
}

std::vector<Account> Visibility::accounts(std::vector<Account> all, const Member& reader)
{
    std::erase_if(all, [&](const Account& account) { return !reader.can("view", account.id); });
    return all;
}

std::vector<TransferDestination> Visibility::transferDestinations(const std::vector<Account>& all, const Member& member)
{
    std::vector<TransferDestination> destinations;
    for (const auto& account : all) {
        if (account.archived || !member.can("transferIn", account.id))
            continue;
        destinations.push_back({.id = account.id,
                                .name = account.name,
                                .currencies = account.currencies,
                                .allowsFunding = account.isRestricted(),
                                .allowsReturn = !account.isRestricted()});
    }
    return destinations;
}

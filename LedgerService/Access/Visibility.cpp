#include "LedgerService/Access/Visibility.h"

#include <algorithm>

#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerCore/Domain/Access/MemberRights.h"

namespace LedgerService {

std::vector<Member> Visibility::members(std::vector<Member> all, const Member& reader)
{
    if (MemberRights::canManage(reader))
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

bool Visibility::seesAny(const std::vector<std::string>& accountIDs, const Member& reader)
{
    return std::ranges::any_of(accountIDs, [&](const std::string& id) { return reader.can(AccountAction::view, id); });
}

bool Visibility::seesEntry(const LedgerTransaction& entry, const Member& reader)
{
    return LedgerEntryAccess::canView(entry, reader);
}

std::vector<Account> Visibility::accounts(std::vector<Account> all, const Member& reader)
{
    std::erase_if(all, [&](const Account& account) { return !reader.can(AccountAction::view, account.id); });
    return all;
}

}

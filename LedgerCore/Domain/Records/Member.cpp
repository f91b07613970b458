#include "LedgerCore/Domain/Records/Member.h"

#include <algorithm>

namespace {

template <class Range>
bool contains(const Range& range, std::string_view wanted)
{
    return std::ranges::find(range, wanted) != std::ranges::end(range);
}

bool granted(const std::vector<AccountGrant>& grants, std::string_view action, std::string_view accountID)
{
    return std::ranges::any_of(grants, [&](const AccountGrant& grant) {
        return grant.accountID == accountID && contains(grant.actions, action);
    });
}

}

bool Member::can(std::string_view action, std::string_view accountID) const
{
    if (!active || accountID.empty() || !contains(AccountGrant::knownActions, action))
        return false;
    if (action != AccountAction::view)
        return accountGrants && granted(*accountGrants, action, accountID);
    const bool seesAll = permissions ? contains(*permissions, Permission::viewCompany)
                                     : role == MemberRole::owner || role == MemberRole::admin;
    if (seesAll)
        return true;
    return accountGrants ? granted(*accountGrants, action, accountID) : contains(accountIDs, accountID);
}

bool Member::canRecord() const
{
    if (!active || !accountGrants)
        return false;
    return std::ranges::any_of(*accountGrants, [](const AccountGrant& grant) {
        return !grant.accountID.empty() && std::ranges::any_of(grant.actions, [](const std::string& action) {
            return contains(AccountGrant::creationActions, action);
        });
    });
}

bool Member::hasPermission(std::string_view permission) const
{
    return permissions && contains(*permissions, permission);
}

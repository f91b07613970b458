#include "LedgerCore/Domain/Capital/CapitalAccess.h"

bool CapitalAccess::takesContributions(const Account& account, const Member& member)
{
    return !account.archived && !account.hasPurpose(AccountPurpose::employee) && member.can("view", account.id) &&
           member.can("capitalContribution", account.id);
}

std::vector<const Account*> CapitalAccess::accounts(const LedgerSnapshot& snapshot,
                                                    std::optional<std::string_view> currency)
{
    const auto& member = snapshot.currentMember;
    std::vector<const Account*> offered;
    if (!member.active || !member.hasPermission("viewCapital") || !member.hasPermission("postCapital"))
        return offered;
    for (const auto& account : snapshot.accounts) {
        if (takesContributions(account, member) && (!currency || account.holds(*currency)))
            offered.push_back(&account);
    }
    return offered;
}

#include "LedgerCore/Domain/Capital/CapitalAccess.h"

#include "LedgerCore/Domain/Access/MemberRights.h"

bool CapitalAccess::takesContributions(const Account& account, const Member& member)
{
    return !account.archived && !account.hasPurpose(AccountPurpose::employee) &&
           member.can(AccountAction::view, account.id) && member.can(AccountAction::capitalContribution, account.id);
}

std::vector<const Account*> CapitalAccess::accounts(const LedgerSnapshot& snapshot,
                                                    std::optional<std::string_view> currency)
{
    const auto& member = snapshot.currentMember;
    std::vector<const Account*> offered;
    if (!MemberRights::canViewCapital(member) || !MemberRights::canPostCapital(member))
        return offered;
    for (const auto& account : snapshot.accounts) {
        if (takesContributions(account, member) && (!currency || account.holds(*currency)))
            offered.push_back(&account);
    }
    return offered;
}

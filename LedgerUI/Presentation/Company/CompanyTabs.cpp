#include "LedgerUI/Presentation/Company/CompanyTabs.h"

#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Records/Permission.h"

std::vector<std::string_view> CompanyTabs::of(const LedgerSnapshot& snapshot)
{
    if (!MemberRights::canManage(snapshot.currentMember))
        return {profile, access};
    std::vector tabs{members, invitations, categories, bookkeeping, profile};
    if (snapshot.currentMember.role == MemberRole::owner)
        tabs.push_back(audit);
    return tabs;
}

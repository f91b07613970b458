#include "LedgerUI/Presentation/Company/CompanyTabs.h"

#include "LedgerCore/Domain/Access/MemberRights.h"

std::vector<std::string_view> CompanyTabs::of(const LedgerSnapshot& snapshot)
{
    if (!MemberRights::canManage(snapshot.currentMember))
        return {profile, access};
    std::vector tabs{members, invitations, categories, bookkeeping, profile};
    if (MemberRights::canReadAuditTrail(snapshot.currentMember))
        tabs.push_back(audit);
    return tabs;
}

#include "LedgerUI/Presentation/Company/CompanyTabs.h"

#include "LedgerCore/Domain/Access/MemberRights.h"

std::vector<std::string_view> CompanyTabs::of(const LedgerSnapshot& snapshot)
{
    if (!MemberRights::canManage(snapshot.currentMember))
        return {profile, access};
    return {members, invitations, categories, bookkeeping, profile};
}

#include "LedgerCore/Domain/Access/MemberRights.h"

namespace {

bool holds(const Member& member, std::string_view permission)
{
    return member.active && member.hasPermission(permission);
}

bool isOwner(const Member& member)
{
    return member.active && member.role == MemberRole::owner;
}

/// One of the permissions, where the member carries a list; else the role of an owner or administrator.
bool holdsEitherOrLeads(const Member& member, std::string_view one, std::string_view other)
{
    if (member.permissions)
        return holds(member, one) || holds(member, other);
    return isOwner(member) || (member.active && member.role == MemberRole::admin);
}

}

bool MemberRights::canViewCompany(const Member& member)
{
    return holds(member, Permission::viewCompany);
}

bool MemberRights::canManage(const Member& member)
{
    return isOwner(member) || holds(member, Permission::manageCompany);
}

bool MemberRights::canExport(const Member& member)
{
    return holds(member, Permission::exportData);
}

bool MemberRights::canOpenAccounts(const Member& member)
{
    const bool worksWithAccounts = member.role == MemberRole::finance || member.role == MemberRole::partner;
    return canViewCompany(member) || canManage(member) || (member.active && worksWithAccounts);
}

bool MemberRights::canViewCapital(const Member& member)
{
    return holds(member, Permission::viewCapital);
}

bool MemberRights::canPostCapital(const Member& member)
{
    return holds(member, Permission::postCapital);
}

bool MemberRights::canCorrectCapital(const Member& member)
{
    return holds(member, Permission::correctCapital);
}

bool MemberRights::canExportCapital(const Member& member)
{
    return holds(member, Permission::exportCapital);
}

bool MemberRights::canManageCapital(const Member& member)
{
    return canManage(member);
}

bool MemberRights::canSeeCapital(const Member& member)
{
    return canViewCapital(member) || canManageCapital(member);
}

bool MemberRights::canSeeDividends(const Member& member)
{
    if (!member.permissions)
        return isOwner(member);
    return holds(member, Permission::manageCompany) || holds(member, Permission::viewDividends);
}

bool MemberRights::canManageDividends(const Member& member)
{
    return member.permissions ? holds(member, Permission::manageCompany) : isOwner(member);
}

bool MemberRights::canSettleDividends(const Member& member)
{
    return canSeeDividends(member) && (!member.permissions || holds(member, Permission::postDividends));
}

bool MemberRights::canCorrectDividends(const Member& member)
{
    return canSettleDividends(member);
}

bool MemberRights::canMoveDividendMoney(const Member& member)
{
    return canSeeDividends(member) && holds(member, Permission::postDividends);
}

bool MemberRights::canExportDividends(const Member& member)
{
    return canSeeDividends(member) && canExport(member);
}

bool MemberRights::canCopyOwnershipToDividends(const Member& member)
{
    return canViewCapital(member) && holds(member, Permission::manageCompany) &&
           holds(member, Permission::viewDividends);
}

bool MemberRights::canOpenContributions(const Member& member)
{
    return holdsEitherOrLeads(member, Permission::manageCompany, Permission::viewCapital);
}

bool MemberRights::canOpenDividends(const Member& member)
{
    return holdsEitherOrLeads(member, Permission::manageCompany, Permission::viewDividends);
}

bool MemberRights::canReadAuditTrail(const Member& member)
{
    return isOwner(member);
}

bool MemberRights::canListReceipts(const Member& member)
{
    return holdsEitherOrLeads(member, Permission::viewCompany, Permission::manageCompany);
}

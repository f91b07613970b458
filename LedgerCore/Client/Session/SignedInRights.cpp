#include "LedgerCore/Client/Session/SignedInRights.h"

#include <algorithm>

#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Categories/CategoryDirectory.h"

bool SignedInRights::memberMay(bool (*right)(const Member&)) const
{
    return m_held && right(m_held->currentMember);
}

bool SignedInRights::canViewCompany() const
{
    return memberMay(MemberRights::canViewCompany);
}

bool SignedInRights::canManage() const
{
    return memberMay(MemberRights::canManage);
}

bool SignedInRights::canExport() const
{
    return memberMay(MemberRights::canExport);
}

bool SignedInRights::canRecord() const
{
    return m_held && m_held->currentMember.canRecord();
}

bool SignedInRights::can(std::string_view action, std::string_view accountID) const
{
    return m_held && m_held->currentMember.can(action, accountID);
}

bool SignedInRights::canViewCapital() const
{
    return memberMay(MemberRights::canViewCapital);
}

bool SignedInRights::canPostCapital() const
{
    return memberMay(MemberRights::canPostCapital);
}

bool SignedInRights::canCorrectCapital() const
{
    return memberMay(MemberRights::canCorrectCapital);
}

bool SignedInRights::canExportCapital() const
{
    return memberMay(MemberRights::canExportCapital);
}

bool SignedInRights::canManageCapital() const
{
    return memberMay(MemberRights::canManageCapital);
}

bool SignedInRights::canCopyOwnershipToDividends() const
{
    return memberMay(MemberRights::canCopyOwnershipToDividends);
}

bool SignedInRights::contributionsEnabled() const
{
    return m_held && FinancialFeaturePolicy::contributionsEnabled(*m_held);
}

bool SignedInRights::dividendsEnabled() const
{
    return m_held && FinancialFeaturePolicy::dividendsEnabled(*m_held);
}

std::vector<CapitalModuleTab> SignedInRights::capitalActiveTabs() const
{
    return m_held ? FinancialFeaturePolicy::activeTabs(*m_held) : std::vector<CapitalModuleTab>{};
}

bool SignedInRights::isCategorySelected(std::string_view id) const
{
    if (!m_held)
        return false;
    const auto& selected = m_held->currentMember.selectedCategoryIDs;
    return selected && std::ranges::find(*selected, id) != selected->end();
}

std::vector<const Category*> SignedInRights::entryCategories(std::string_view kind) const
{
    if (!m_held)
        return {};
    const CategoryDirectory directory{m_held->categories};
    const auto offered = directory.selectable(kind);
    return {offered.begin(), offered.end()};
}

bool SignedInRights::canAddCategory(std::string_view kind) const
{
    return canManage() && (kind == EntryKind::income || kind == EntryKind::expense);
}

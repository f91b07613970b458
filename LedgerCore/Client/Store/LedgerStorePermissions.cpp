#include <algorithm>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Categories/CategoryDirectory.h"
#include "LedgerCore/Domain/Settings/FinancialFeaturePolicy.h"

bool LedgerStore::memberMay(bool (*right)(const Member&)) const
{
    return m_snapshot && right(m_snapshot->currentMember);
}

bool LedgerStore::canViewCompany() const
{
    return memberMay(MemberRights::canViewCompany);
}

bool LedgerStore::canManage() const
{
    return memberMay(MemberRights::canManage);
}

bool LedgerStore::canExport() const
{
    return memberMay(MemberRights::canExport);
}

bool LedgerStore::canRecord() const
{
    return m_snapshot && m_snapshot->currentMember.canRecord();
}

bool LedgerStore::can(std::string_view action, std::string_view accountID) const
{
    return m_snapshot && m_snapshot->currentMember.can(action, accountID);
}

bool LedgerStore::canViewCapital() const
{
    return memberMay(MemberRights::canViewCapital);
}

bool LedgerStore::canPostCapital() const
{
    return memberMay(MemberRights::canPostCapital);
}

bool LedgerStore::canCorrectCapital() const
{
    return memberMay(MemberRights::canCorrectCapital);
}

bool LedgerStore::canExportCapital() const
{
    return memberMay(MemberRights::canExportCapital);
}

bool LedgerStore::canManageCapital() const
{
    return memberMay(MemberRights::canManageCapital);
}

bool LedgerStore::canCopyOwnershipToDividends() const
{
    return memberMay(MemberRights::canCopyOwnershipToDividends);
}

bool LedgerStore::contributionsEnabled() const
{
    return m_snapshot && FinancialFeaturePolicy::contributionsEnabled(*m_snapshot);
}

bool LedgerStore::dividendsEnabled() const
{
    return m_snapshot && FinancialFeaturePolicy::dividendsEnabled(*m_snapshot);
}

std::vector<CapitalModuleTab> LedgerStore::capitalActiveTabs() const
{
    return m_snapshot ? FinancialFeaturePolicy::activeTabs(*m_snapshot) : std::vector<CapitalModuleTab>{};
}

bool LedgerStore::isCategorySelected(std::string_view id) const
{
    if (!m_snapshot)
        return false;
    const auto& selected = m_snapshot->currentMember.selectedCategoryIDs;
    return selected && std::ranges::find(*selected, id) != selected->end();
}

std::vector<const Category*> LedgerStore::entryCategories(std::string_view kind) const
{
    if (!m_snapshot)
        return {};
    const CategoryDirectory directory{m_snapshot->categories};
    const auto offered = directory.selectable(kind);
    return {offered.begin(), offered.end()};
}

bool LedgerStore::canAddCategory(std::string_view kind) const
{
    return canManage() && (kind == EntryKind::income || kind == EntryKind::expense);
}

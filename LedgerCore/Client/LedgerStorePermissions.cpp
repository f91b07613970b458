#include <algorithm>

#include "LedgerCore/Client/LedgerStore.h"
#include "LedgerCore/Domain/Categories/CategoryDirectory.h"
#include "LedgerCore/Domain/Settings/FinancialFeaturePolicy.h"

bool LedgerStore::permits(std::string_view permission) const
{
    return m_snapshot && m_snapshot->currentMember.active && m_snapshot->currentMember.hasPermission(permission);
}

bool LedgerStore::canViewCompany() const
{
    return permits("viewCompany");
}

bool LedgerStore::canManage() const
{
    const bool isOwner = m_snapshot && m_snapshot->currentMember.active && m_snapshot->currentMember.role == "owner";
    return isOwner || permits("manageCompany");
}

bool LedgerStore::canExport() const
{
    return permits("exportData");
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
    return permits("viewCapital");
}

bool LedgerStore::canPostCapital() const
{
    return permits("postCapital");
}

bool LedgerStore::canCorrectCapital() const
{
    return permits("correctCapital");
}

bool LedgerStore::canExportCapital() const
{
    return permits("exportCapital");
}

bool LedgerStore::canCopyOwnershipToDividends() const
{
    return permits("viewCapital") && permits("manageCompany") && permits("viewDividends");
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

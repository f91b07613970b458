#pragma once

#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Settings/FinancialFeaturePolicy.h"

/// What the signed-in member may do and the open company has switched on; nothing of it while signed out.
class SignedInRights {
public:
    [[nodiscard]] bool canViewCompany() const;
    [[nodiscard]] bool canManage() const;
    [[nodiscard]] bool canExport() const;
    [[nodiscard]] bool canRecord() const;
    [[nodiscard]] bool can(std::string_view action, std::string_view accountID) const;
    [[nodiscard]] bool canViewCapital() const;
    [[nodiscard]] bool canPostCapital() const;
    [[nodiscard]] bool canCorrectCapital() const;
    [[nodiscard]] bool canExportCapital() const;
    [[nodiscard]] bool canManageCapital() const;
    [[nodiscard]] bool canCopyOwnershipToDividends() const;

    [[nodiscard]] bool contributionsEnabled() const;
    [[nodiscard]] bool dividendsEnabled() const;
    /// The capital tabs that the member is shown.
    [[nodiscard]] std::vector<CapitalModuleTab> capitalActiveTabs() const;
    [[nodiscard]] bool showsCapitalNavigation() const { return !capitalActiveTabs().empty(); }

    /// Whether the member chose the category for quick entry.
    [[nodiscard]] bool isCategorySelected(std::string_view id) const;
    /// The categories offered for a new entry of this kind, in their order; they belong to the held snapshot.
    [[nodiscard]] std::vector<const Category*> entryCategories(std::string_view kind) const;
    [[nodiscard]] bool canAddCategory(std::string_view kind) const;

protected:
    /// `held` is where the books stand that are open; null while signed out.
    explicit SignedInRights(const SnapshotPointer& held) : m_held{held} {}
    ~SignedInRights() = default;

private:
    /// Asks one of `MemberRights` about the signed-in member.
    [[nodiscard]] bool memberMay(bool (*right)(const Member&)) const;

    const SnapshotPointer& m_held;
};

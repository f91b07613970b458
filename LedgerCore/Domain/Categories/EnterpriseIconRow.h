#pragma once

#include <span>
#include <string_view>

#include "LedgerCore/Domain/Categories/EnterpriseCategoryPresets.h"

/// A drawing of the icon set with its name, and words for it beyond its name in all four languages.
struct EnterpriseIconRow {
    std::string_view id;
    std::string_view group;
    CatalogNames names;
    std::string_view otherWords;
};

std::span<const EnterpriseIconRow> enterpriseIconRows();
std::span<const EnterpriseCategoryGroup> enterpriseIconGroups();

#pragma once

#include <span>
#include <string_view>

#include "LedgerCore/Domain/Text/CatalogNames.h"

/// A ready-made business category.
struct EnterpriseCategoryPreset {
    std::string_view id;   // kept in `Category::presetID` of a category made from it
    std::string_view kind; // "income" or "expense"
    std::string_view group;
    std::string_view symbol; // an icon of the library
    CatalogNames names;
};

/// A heading under which presets or icons are listed.
struct EnterpriseCategoryGroup {
    std::string_view id;
    CatalogNames names;
};

/// The rows that the catalog is made of, in the order in which they are offered.
namespace EnterpriseCategoryPresets {

std::span<const EnterpriseCategoryPreset> income();
std::span<const EnterpriseCategoryPreset> expense();
std::span<const EnterpriseCategoryGroup> groups();

}

#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Categories/EnterpriseCategoryPresets.h"

/// An icon that a category can bear.
struct EnterpriseCategoryIcon {
    std::string_view id; // what `Category::symbol` holds: the drawing's name in the icon set
    std::string_view group;
    CatalogNames names;
    std::string keywords; // what it is found by: its names and related words in all four languages
};

/// The icons on offer, group by group.
namespace EnterpriseIconLibrary {

const std::vector<EnterpriseCategoryIcon>& icons();

/// The icon groups with their names, in the order of the picker.
std::span<const EnterpriseCategoryGroup> groupNames();

/// The icons whose keywords hold the query, whatever its case and diacritics; all of them for a blank query.
std::vector<const EnterpriseCategoryIcon*> matching(std::string_view query);

}

#pragma once

#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Categories/EnterpriseCategoryPresets.h"
#include "LedgerCore/Domain/Categories/EnterpriseIconLibrary.h"

/// Ready-made business categories and the icons for categories of any origin. Identifiers of presets, icons and groups
/// never meet.
namespace EnterpriseCategoryCatalog {

/// Income before expense.
const std::vector<EnterpriseCategoryPreset>& presets();

/// The preset of this id, or null.
const EnterpriseCategoryPreset* preset(std::string_view id);

const std::vector<EnterpriseCategoryIcon>& icons();

/// Identifiers of the presets' groups, in order.
const std::vector<std::string_view>& groups();
const std::vector<std::string_view>& iconGroups();

/// The name of a preset or icon group in the language of `locale`; the id itself when there is no such group.
std::string_view groupName(std::string_view group, std::string_view locale);

/// The English name of a preset, icon or group; the id itself when nothing bears it.
std::string_view englishName(std::string_view id);

/// `EnterpriseIconLibrary::matching`
std::vector<const EnterpriseCategoryIcon*> matchingIcons(std::string_view query);

}

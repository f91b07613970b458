#include "LedgerCore/Domain/Categories/EnterpriseCategoryCatalog.h"

#include <algorithm>
#include <unordered_map>

#include "LedgerCore/Domain/Contract.h"

namespace {

using NamesByID = std::unordered_map<std::string_view, const CatalogNames*>;

template <class Rows>
void add(NamesByID& names, const Rows& rows)
{
    for (const auto& row : rows)
        require(names.emplace(row.id, &row.names).second, "an identifier of the catalog names one row");
}

const NamesByID& groupNames()
{
    static const auto names = [] {
        NamesByID all;
        add(all, EnterpriseCategoryPresets::groups());
        add(all, EnterpriseIconLibrary::groupNames());
        return all;
    }();
    return names;
}

const NamesByID& allNames()
{
    static const auto names = [] {
        auto all = groupNames();
        add(all, EnterpriseCategoryCatalog::presets());
        add(all, EnterpriseCategoryCatalog::icons());
        return all;
    }();
    return names;
}

std::vector<std::string_view> idsOf(std::span<const EnterpriseCategoryGroup> groups)
{
    std::vector<std::string_view> ids;
    for (const auto& group : groups)
        ids.push_back(group.id);
    return ids;
}

}

const std::vector<EnterpriseCategoryPreset>& EnterpriseCategoryCatalog::presets()
{
    static const auto all = [] {
        std::vector<EnterpriseCategoryPreset> presets;
        for (const auto part : {EnterpriseCategoryPresets::income(), EnterpriseCategoryPresets::expense()})
            presets.insert(presets.end(), part.begin(), part.end());
        return presets;
    }();
    return all;
}

const EnterpriseCategoryPreset* EnterpriseCategoryCatalog::preset(std::string_view id)
{
    const auto found = std::ranges::find(presets(), id, &EnterpriseCategoryPreset::id);
    return found == presets().end() ? nullptr : &*found;
}

const std::vector<EnterpriseCategoryIcon>& EnterpriseCategoryCatalog::icons()
{
    return EnterpriseIconLibrary::icons();
}

const std::vector<std::string_view>& EnterpriseCategoryCatalog::groups()
{
    static const auto ids = idsOf(EnterpriseCategoryPresets::groups());
    return ids;
}

const std::vector<std::string_view>& EnterpriseCategoryCatalog::iconGroups()
{
    static const auto ids = idsOf(EnterpriseIconLibrary::groupNames());
    return ids;
}

std::string_view EnterpriseCategoryCatalog::groupName(std::string_view group, std::string_view locale)
{
    const auto found = groupNames().find(group);
    return found == groupNames().end() ? group : found->second->text(locale);
}

std::string_view EnterpriseCategoryCatalog::englishName(std::string_view id)
{
    const auto found = allNames().find(id);
    return found == allNames().end() ? id : found->second->english;
}

std::vector<const EnterpriseCategoryIcon*> EnterpriseCategoryCatalog::matchingIcons(std::string_view query)
{
    return EnterpriseIconLibrary::matching(query);
}

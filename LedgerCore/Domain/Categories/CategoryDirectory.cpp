#include "LedgerCore/Domain/Categories/CategoryDirectory.h"

#include <algorithm>
#include <unordered_set>

#include "LedgerCore/Domain/Text/LocalizedName.h"

namespace {

std::string_view parentIDOf(const Category& category)
{
    return category.parentID ? std::string_view{*category.parentID} : std::string_view{};
}

bool standsBefore(const Category* left, const Category* right)
{
    if (left->sortOrder != right->sortOrder) {
        if (left->sortOrder && right->sortOrder)
            return *left->sortOrder < *right->sortOrder;
        return left->sortOrder.has_value();
    }
    return left < right; // both point into one list, so this is its order
}

}

void CategoryDirectory::Group::add(const Category& category)
{
    all.push_back(&category);
    if (!category.archived)
        active.push_back(&category);
}

CategoryDirectory::List CategoryDirectory::Group::list(ArchivedCategories archived) const
{
    return archived == ArchivedCategories::included ? all : active;
}

CategoryDirectory::CategoryDirectory(const std::vector<Category>& categories)
{
    m_categories.reserve(categories.size());
    m_byID.reserve(categories.size());
    for (const auto& category : categories) {
        if (m_byID.emplace(category.id, &category).second)
            m_categories.push_back(&category);
    }
    auto sorted = m_categories;
    std::ranges::sort(sorted, standsBefore);
    for (const auto* category : sorted)
        m_siblings[{category->kind, parentIDOf(*category)}].add(*category);
    buildOrdered(sorted);
}

void CategoryDirectory::buildOrdered(std::span<const Category* const> sorted)
{
    std::unordered_set<const Category*> placed;
    const auto placeTree = [&](const Category* root) {
        std::vector<const Category*> waiting{root};
        while (!waiting.empty()) {
            const auto* category = waiting.back();
            waiting.pop_back();
            if (!placed.insert(category).second)
                continue;
            m_ordered[category->kind].add(*category);
            const auto below = children(category->id, ArchivedCategories::included);
            waiting.insert(waiting.end(), below.rbegin(), below.rend());
        }
    };
    for (const auto* category : sorted) {
        if (parent(*category) == nullptr)
            placeTree(category);
    }
    for (const auto* category : sorted) // parents that name each other have no root above them
        placeTree(category);
}

const Category* CategoryDirectory::find(std::string_view id) const
{
    const auto found = m_byID.find(id);
    return found == m_byID.end() || id.empty() ? nullptr : found->second;
}

CategoryDirectory::List CategoryDirectory::children(std::string_view id, ArchivedCategories archived) const
{
    const auto* category = find(id);
    return category == nullptr ? List{} : siblings(category->kind, id, archived);
}

const Category* CategoryDirectory::parent(const Category& category) const
{
    const auto* above = find(parentIDOf(category));
    return above != nullptr && above->kind == category.kind ? above : nullptr;
}

CategoryDirectory::List CategoryDirectory::siblings(std::string_view kind, std::optional<std::string_view> parentID,
                                                    ArchivedCategories archived) const
{
    const auto found = m_siblings.find({kind, parentID.value_or(std::string_view{})});
    return found == m_siblings.end() ? List{} : found->second.list(archived);
}

CategoryDirectory::List CategoryDirectory::ordered(std::string_view kind, ArchivedCategories archived) const
{
    const auto found = m_ordered.find(kind);
    return found == m_ordered.end() ? List{} : found->second.list(archived);
}

std::string_view CategoryDirectory::pathName(const Category& category, std::string_view locale) const
{
    return localizedName(category.names, locale);
}

std::string CategoryDirectory::fullPathName(const Category& category, std::string_view locale) const
{
    std::string path;
    if (const auto* above = parent(category)) {
        path += pathName(*above, locale);
        path += " › ";
    }
    path += pathName(category, locale);
    return path;
}

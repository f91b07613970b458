#pragma once

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "LedgerCore/Domain/Records/Category.h"

enum class ArchivedCategories { leftOut, included };

/// A company's categories as a tree: who belongs to whom, in which order, under which name. Everything it hands out
/// points into the list it was built from, which must stay as it is; it is built once and then only looked up.
/// Siblings stand by `sortOrder`, those without one after those with one, and then as the list has them.
class CategoryDirectory {
public:
    using List = std::span<const Category* const>;

    /// Keeps the first category of each id.
    explicit CategoryDirectory(const std::vector<Category>& categories);
    explicit CategoryDirectory(const std::vector<Category>&&) = delete;

    [[nodiscard]] List categories() const { return m_categories; }

    /// The category of this id, or null.
    [[nodiscard]] const Category* find(std::string_view id) const;

    [[nodiscard]] List children(std::string_view id, ArchivedCategories archived) const;

    /// The category that this one stands under, or null for a top-level one.
    [[nodiscard]] const Category* parent(const Category& category) const;

    /// One sibling group; without a parent the top-level categories of the kind.
    [[nodiscard]] List siblings(std::string_view kind, std::optional<std::string_view> parentID,
                                ArchivedCategories archived) const;

    /// All categories of a kind, each parent followed by its children. A category whose parent is left out or unknown
    /// still appears.
    [[nodiscard]] List ordered(std::string_view kind, ArchivedCategories archived) const;

    /// The categories offered for a new entry.
    [[nodiscard]] List selectable(std::string_view kind) const { return ordered(kind, ArchivedCategories::leftOut); }

    /// The category's own name in the language that `locale` resolves to.
    [[nodiscard]] std::string_view pathName(const Category& category, std::string_view locale) const;

    /// Parent and name, as screens show them: "Office › Stationery".
    [[nodiscard]] std::string fullPathName(const Category& category, std::string_view locale) const;

private:
    struct Group {
        std::vector<const Category*> all;
        std::vector<const Category*> active;

        void add(const Category& category);
        [[nodiscard]] List list(ArchivedCategories archived) const;
    };
    using GroupKey = std::pair<std::string_view, std::string_view>; // kind, parent's id or empty

    void buildOrdered(std::span<const Category* const> sorted);

    std::vector<const Category*> m_categories;
    std::unordered_map<std::string_view, const Category*> m_byID;
    std::map<GroupKey, Group> m_siblings;
    std::map<std::string_view, Group> m_ordered; // by kind
};

#pragma once

#include <optional>
#include <string>
#include <vector>

#include <boost/describe.hpp>

#include "LedgerCore/Domain/Text/LocalizedName.h"

/// What income or expense was for. Categories form at most two levels.
struct Category {
    std::string id;
    std::string kind; // "income" or "expense"
    TextMap names;    // by language tag
    std::string symbol;
    bool archived = false; // not offered for new entries
    std::optional<std::string> parentID;
    std::optional<int> sortOrder; // position among its siblings
    std::optional<std::string> presetID;
    std::optional<bool> defaultEnabled;

    bool operator==(const Category&) const = default;
};
BOOST_DESCRIBE_STRUCT(Category, (), (id, kind, names, symbol, archived, parentID, sortOrder, presetID, defaultEnabled))

struct CategoryCreate {
    std::string kind;
    TextMap names;
    std::string symbol;
    std::optional<std::string> parentID;
    std::optional<std::string> presetID;

    bool operator==(const CategoryCreate&) const = default;
};
BOOST_DESCRIBE_STRUCT(CategoryCreate, (), (kind, names, symbol, parentID, presetID))

struct CategoryUpdate {
    std::optional<TextMap> names;
    std::optional<bool> archived;
    std::optional<std::string> symbol;
    std::optional<std::string> parentID;
    bool updateParent = false; // whether the parent is to be set to `parentID`

    bool operator==(const CategoryUpdate&) const = default;
};
BOOST_DESCRIBE_STRUCT(CategoryUpdate, (), (names, archived, symbol, parentID, updateParent))

/// The new order of one sibling group, with the order that the client last saw.
struct CategoryReorder {
    std::string kind;
    std::optional<std::string> parentID;
    std::vector<std::string> orderedIDs;
    std::vector<std::string> expectedIDs;

    bool operator==(const CategoryReorder&) const = default;
};
BOOST_DESCRIBE_STRUCT(CategoryReorder, (), (kind, parentID, orderedIDs, expectedIDs))

struct CategorySelection {
    std::string categoryID;
    bool selected = false;

    bool operator==(const CategorySelection&) const = default;
};
BOOST_DESCRIBE_STRUCT(CategorySelection, (), (categoryID, selected))

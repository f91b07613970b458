#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/Category.h"
#include "LedgerCore/Domain/Records/Member.h"

/// Which categories a company can have and how they change. They stand on two levels: a category under another one has
/// its kind and has nothing under itself. An empty identifier in a command stands for none.
namespace CategoryRules {

enum class Refusal {
    noAuthority, // only who manages the company
    unknownCategory,
    unknownKind,
    unknownPreset, // or one of the other kind
    nameRequired,
    nameUnsound,
    nameTaken, // by an active sibling, in every language that both are named in
    symbolUnsound,
    parentInvalid,
    parentInactive,
    archived, // an archived category is restored before, or while, it changes
    hasActiveChildren,
    orderUnsound, // not the same categories in another order
    orderChanged, // the group is no longer the one that was seen
};

inline constexpr std::size_t symbolLength = 64; // bytes
inline constexpr std::size_t languages = 16;    // that a category can be named in

/// What is wrong with the command itself, whoever sends it, or nothing.
std::optional<Refusal> whyNotShaped(const CategoryCreate& command);
std::optional<Refusal> whyNotShaped(const CategoryUpdate& command);
std::optional<Refusal> whyNotShaped(const CategoryReorder& command);

/// What keeps this member from making the category in a company with these, or nothing.
std::optional<Refusal> whyNotCreate(const CategoryCreate& command, const Member& member,
                                    const std::vector<Category>& categories);

/// The active category that is exactly what the command asks for, or null. The command carries no key: whoever did not
/// get the reply and sends it again is answered by what it made.
const Category* alreadyCreated(const CategoryCreate& command, const std::vector<Category>& categories);

/// The new category, last of its siblings. Names and symbol that the command leaves out are those of its preset.
Category created(const CategoryCreate& command, std::string id, const std::vector<Category>& categories);

std::optional<Refusal> whyNotUpdate(std::string_view id, const CategoryUpdate& command, const Member& member,
                                    const std::vector<Category>& categories);

/// The category after the update; under another parent it is the last of its siblings.
Category updated(const Category& category, const CategoryUpdate& command, const std::vector<Category>& categories);

std::optional<Refusal> whyNotReorder(const CategoryReorder& command, const Member& member,
                                     const std::vector<Category>& categories);

/// The sibling group with its new places. What the client did not see of it, because it is archived, keeps its place
/// among the others.
std::vector<Category> reordered(const CategoryReorder& command, const std::vector<Category>& categories);

}

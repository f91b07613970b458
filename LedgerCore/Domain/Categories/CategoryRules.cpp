#include "LedgerCore/Domain/Categories/CategoryRules.h"

#include <algorithm>
#include <utility>

#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Categories/CategoryDirectory.h"
#include "LedgerCore/Domain/Categories/EnterpriseCategoryCatalog.h"
#include "LedgerCore/Domain/Records/LedgerTransaction.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerCore/Domain/Text/Naming.h"
#include "LedgerCore/Domain/Text/TextFold.h"

namespace {

using CategoryRules::Refusal;
using Problem = std::optional<Refusal>;
using OptionalText = std::optional<std::string>;

OptionalText named(const OptionalText& text)
{
    return text && !text->empty() ? text : std::nullopt;
}

bool isLetterOrDigit(char each)
{
    return (each >= 'a' && each <= 'z') || (each >= 'A' && each <= 'Z') || (each >= '0' && each <= '9');
}

/// "id-ID", or a short code such as "id".
bool isLanguage(std::string_view tag)
{
    return tag.size() >= 2 && tag.size() <= 16 && isLetterOrDigit(tag.front()) && isLetterOrDigit(tag.back()) &&
           std::ranges::all_of(tag, [](char each) { return isLetterOrDigit(each) || each == '-'; });
}

/// The name of a drawing.
bool isSymbol(std::string_view text)
{
    return !text.empty() && text.size() <= CategoryRules::symbolLength && std::ranges::all_of(text, [](char each) {
        return isLetterOrDigit(each) || each == '-' || each == '.' || each == '_';
    });
}

/// Languages without a name are left out.
TextMap tidied(const TextMap& names)
{
    TextMap tidy;
    for (const auto& [language, name] : names) {
        if (const auto text = TextFold::trimmed(name); !text.empty())
            tidy.emplace(language, text);
    }
    return tidy;
}

Problem whyNotNames(const TextMap& names)
{
    const auto tidy = tidied(names);
    if (tidy.empty())
        return Refusal::nameRequired;
    const bool sound = names.size() <= CategoryRules::languages && std::ranges::all_of(tidy, [](const auto& each) {
                           return isLanguage(each.first) && Naming::isName(each.second);
                       });
    return sound ? std::nullopt : Problem{Refusal::nameUnsound};
}

bool isKind(std::string_view kind)
{
    return kind == EntryKind::income || kind == EntryKind::expense;
}

const EnterpriseCategoryPreset* presetOf(const CategoryCreate& command)
{
    const auto id = named(command.presetID);
    return id ? EnterpriseCategoryCatalog::preset(*id) : nullptr;
}

TextMap namesOf(const EnterpriseCategoryPreset& preset)
{
    TextMap names;
    for (const auto locale : AppLanguage::supportedLocales)
        names.emplace(locale, preset.names.text(locale));
    return names;
}

/// The command with all that its preset says.
CategoryCreate filled(CategoryCreate command)
{
    command.parentID = named(command.parentID);
    command.presetID = named(command.presetID);
    command.names = tidied(command.names);
    if (const auto* const preset = presetOf(command)) {
        if (command.names.empty())
            command.names = namesOf(*preset);
        if (command.symbol.empty())
            command.symbol = preset->symbol;
    }
    return command;
}

/// The category of the command, without a place yet.
Category bare(const CategoryCreate& command, std::string id)
{
    auto whole = filled(command);
    Category category;
    category.id = std::move(id);
    category.kind = std::move(whole.kind);
    category.names = std::move(whole.names);
    category.symbol = std::move(whole.symbol);
    category.parentID = std::move(whole.parentID);
    category.presetID = std::move(whole.presetID);
    category.defaultEnabled = true;
    return category;
}

CategoryDirectory::List siblingsOf(const Category& category, const CategoryDirectory& directory,
                                   ArchivedCategories archived)
{
    return directory.siblings(category.kind, category.parentID, archived);
}

/// After all siblings; nothing where some stand without a place, behind which every new one stands anyway.
std::optional<int> lastPlace(const Category& category, const CategoryDirectory& directory)
{
    int place = 0;
    for (const auto* sibling : siblingsOf(category, directory, ArchivedCategories::included)) {
        if (sibling->id == category.id)
            continue;
        if (!sibling->sortOrder)
            return std::nullopt;
        place = std::max(place, *sibling->sortOrder + 1);
    }
    return place;
}

Problem whyNotUnder(const Category& category, const CategoryDirectory& directory)
{
    if (!category.parentID)
        return std::nullopt;
    const auto* const parent = directory.find(*category.parentID);
    if (!parent || parent->id == category.id || parent->kind != category.kind || parent->parentID ||
        !directory.children(category.id, ArchivedCategories::included).empty())
        return Refusal::parentInvalid;
    return parent->archived ? Problem{Refusal::parentInactive} : std::nullopt;
}

/// Two names are the same when a reader of no language could tell them apart.
bool sameName(const TextMap& left, const TextMap& right)
{
    bool shared = false;
    for (const auto& [language, name] : left) {
        const auto other = right.find(language);
        if (other == right.end())
            continue;
        if (!TextFold::areSame(other->second, name))
            return false;
        shared = true;
    }
    return shared;
}

Problem whyNotNamed(const Category& category, const CategoryDirectory& directory)
{
    const auto siblings = siblingsOf(category, directory, ArchivedCategories::leftOut);
    const bool taken = std::ranges::any_of(siblings, [&](const Category* each) {
        return each->id != category.id && sameName(each->names, category.names);
    });
    return taken ? Problem{Refusal::nameTaken} : std::nullopt;
}

std::vector<std::string> idsOf(CategoryDirectory::List group)
{
    std::vector<std::string> ids;
    for (const auto* each : group)
        ids.push_back(each->id);
    return ids;
}

CategoryDirectory::List groupOf(const CategoryReorder& command, const CategoryDirectory& directory,
                                ArchivedCategories archived)
{
    return directory.siblings(command.kind, named(command.parentID), archived);
}

/// The group as far as the client saw it: with or without those that are archived.
std::optional<ArchivedCategories> seen(const std::vector<std::string>& ids, const CategoryReorder& command,
                                       const CategoryDirectory& directory)
{
    using enum ArchivedCategories;
    for (const auto archived : {included, leftOut}) {
        if (idsOf(groupOf(command, directory, archived)) == ids)
            return archived;
    }
    return std::nullopt;
}

}

std::optional<Refusal> CategoryRules::whyNotShaped(const CategoryCreate& command)
{
    if (!isKind(command.kind))
        return Refusal::unknownKind;
    const auto* const preset = presetOf(command);
    if (named(command.presetID) && (!preset || preset->kind != command.kind))
        return Refusal::unknownPreset;
    const auto whole = filled(command);
    if (command.names.size() > languages)
        return Refusal::nameUnsound;
    if (auto problem = whyNotNames(whole.names))
        return problem;
    return isSymbol(whole.symbol) ? std::nullopt : Problem{Refusal::symbolUnsound};
}

std::optional<Refusal> CategoryRules::whyNotShaped(const CategoryUpdate& command)
{
    if (command.names) {
        if (auto problem = whyNotNames(*command.names))
            return problem;
    }
    return !command.symbol || isSymbol(*command.symbol) ? std::nullopt : Problem{Refusal::symbolUnsound};
}

std::optional<Refusal> CategoryRules::whyNotShaped(const CategoryReorder& command)
{
    if (!isKind(command.kind))
        return Refusal::unknownKind;
    auto ordered = command.orderedIDs;
    auto expected = command.expectedIDs;
    std::ranges::sort(ordered);
    std::ranges::sort(expected);
    const bool repeats = std::ranges::adjacent_find(expected) != expected.end();
    return repeats || ordered != expected ? Problem{Refusal::orderUnsound} : std::nullopt;
}

std::optional<Refusal> CategoryRules::whyNotCreate(const CategoryCreate& command, const Member& member,
                                                   const std::vector<Category>& categories)
{
    if (!MemberRights::canManage(member))
        return Refusal::noAuthority;
    if (auto problem = whyNotShaped(command))
        return problem;
    const CategoryDirectory directory{categories};
    const auto category = bare(command, {});
    if (auto problem = whyNotUnder(category, directory))
        return problem;
    return whyNotNamed(category, directory);
}

const Category* CategoryRules::alreadyCreated(const CategoryCreate& command, const std::vector<Category>& categories)
{
    const auto wanted = bare(command, {});
    const auto found = std::ranges::find_if(categories, [&](const Category& each) {
        return !each.archived && each.kind == wanted.kind && each.names == wanted.names &&
               each.symbol == wanted.symbol && each.parentID == wanted.parentID && each.presetID == wanted.presetID;
    });
    return found == categories.end() ? nullptr : &*found;
}

Category CategoryRules::created(const CategoryCreate& command, std::string id, const std::vector<Category>& categories)
{
    auto category = bare(command, std::move(id));
    category.sortOrder = lastPlace(category, CategoryDirectory{categories});
    return category;
}

std::optional<Refusal> CategoryRules::whyNotUpdate(std::string_view id, const CategoryUpdate& command,
                                                   const Member& member, const std::vector<Category>& categories)
{
    if (!MemberRights::canManage(member))
        return Refusal::noAuthority;
    const CategoryDirectory directory{categories};
    const auto* const before = directory.find(id);
    if (!before)
        return Refusal::unknownCategory;
    if (auto problem = whyNotShaped(command))
        return problem;
    const auto after = updated(*before, command, categories);
    if (before->archived && after.archived)
        return after == *before ? std::nullopt : Problem{Refusal::archived};
    if (after.archived && !directory.children(id, ArchivedCategories::leftOut).empty())
        return Refusal::hasActiveChildren;
    const bool restored = before->archived && !after.archived;
    if (after.parentID != before->parentID || restored) {
        if (auto problem = whyNotUnder(after, directory))
            return problem;
    }
    const bool stands = after.names == before->names && after.parentID == before->parentID && !restored;
    return after.archived || stands ? std::nullopt : whyNotNamed(after, directory);
}

Category CategoryRules::updated(const Category& category, const CategoryUpdate& command,
                                const std::vector<Category>& categories)
{
    auto after = category;
    if (command.names)
        after.names = tidied(*command.names);
    after.symbol = command.symbol.value_or(category.symbol);
    after.archived = command.archived.value_or(category.archived);
    if (command.updateParent && named(command.parentID) != category.parentID) {
        after.parentID = named(command.parentID);
        after.sortOrder = lastPlace(after, CategoryDirectory{categories});
    }
    return after;
}

std::optional<Refusal> CategoryRules::whyNotReorder(const CategoryReorder& command, const Member& member,
                                                    const std::vector<Category>& categories)
{
    if (!MemberRights::canManage(member))
        return Refusal::noAuthority;
    if (auto problem = whyNotShaped(command))
        return problem;
    const CategoryDirectory directory{categories};
    if (const auto parentID = named(command.parentID)) {
        const auto* const parent = directory.find(*parentID);
        if (!parent || parent->kind != command.kind || parent->parentID)
            return Refusal::parentInvalid;
    }
    const bool asSeen = seen(command.expectedIDs, command, directory).has_value();
    const bool asWanted = seen(command.orderedIDs, command, directory).has_value(); // the command was sent again
    return asSeen || asWanted ? std::nullopt : Problem{Refusal::orderChanged};
}

std::vector<Category> CategoryRules::reordered(const CategoryReorder& command, const std::vector<Category>& categories)
{
    const CategoryDirectory directory{categories};
    const auto group = groupOf(command, directory, ArchivedCategories::included);
    const bool whole = command.orderedIDs.size() == group.size();
    auto wanted = command.orderedIDs.begin();
    std::vector<Category> places;
    for (const auto* each : group) {
        const bool keeps = (!whole && each->archived) || wanted == command.orderedIDs.end();
        const auto* const next = keeps ? each : directory.find(*wanted++);
        places.push_back(*next);
        places.back().sortOrder = static_cast<int>(places.size()) - 1;
    }
    return places;
}

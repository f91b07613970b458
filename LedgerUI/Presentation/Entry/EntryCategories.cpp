#include "LedgerUI/Presentation/Entry/EntryCategories.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "LedgerCore/Domain/Categories/CategoryDirectory.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerUI/Presentation/Categories/CategoryPins.h"
#include "LedgerUI/Presentation/Text/Words.h"

namespace {

EntryCategory shown(const Category& category, const CategoryDirectory& directory, const LedgerSnapshot& snapshot,
                    std::string_view locale)
{
    return {.id = category.id,
            .name = qString(directory.pathName(category, locale)),
            .symbol = qString(category.symbol),
            .hasParent = directory.parent(category) != nullptr,
            .isPinned = CategoryPins::contains(snapshot, category.id),
            .matchStart = 0,
            .matchLength = 0};
}

/// Marks the part of the name that folds to `folded`: as short as it can be, seen from its first letter.
bool mark(EntryCategory& category, const std::string& folded)
{
    const auto& name = category.name;
    const auto isMatch = [&](qsizetype from, qsizetype length) {
        return TextFold::folded(name.mid(from, length).toStdString()) == folded;
    };
    if (!TextFold::folded(name.toStdString()).contains(folded))
        return false;
    for (qsizetype from = 0; from < name.size(); ++from) {
        for (qsizetype length = 1; from + length <= name.size(); ++length) {
            if (isMatch(from, length)) {
                category.matchStart = static_cast<int>(from);
                category.matchLength = static_cast<int>(length);
                return true;
            }
        }
    }
    return true;
}

std::vector<const Category*> mostUsed(const LedgerSnapshot& snapshot, std::string_view kind,
                                      CategoryDirectory::List selectable)
{
    std::unordered_map<std::string_view, int> uses;
    for (const auto& entry : snapshot.transactions) {
        if (entry.kind == kind && entry.categoryID)
            ++uses[*entry.categoryID];
    }
    std::vector<const Category*> ranked(selectable.begin(), selectable.end());
    std::erase_if(ranked, [&](const Category* each) { return !uses.contains(each->id); });
    std::ranges::sort(ranked, [&](const Category* left, const Category* right) {
        return uses.at(left->id) != uses.at(right->id) ? uses.at(left->id) > uses.at(right->id) : left->id < right->id;
    });
    return ranked;
}

/// Categories that stand at the end of the tree: those a beginner most likely means.
void appendFirstLeaves(std::vector<const Category*>& chosen, const CategoryDirectory& directory,
                       CategoryDirectory::List selectable)
{
    for (const auto* each : selectable) {
        const bool isLeaf = directory.children(each->id, ArchivedCategories::leftOut).empty();
        if (isLeaf && std::ranges::find(chosen, each) == chosen.end())
            chosen.push_back(each);
    }
}

}

std::vector<EntryCategory> EntryCategories::tiles(const LedgerSnapshot& snapshot, std::string_view kind,
                                                  std::string_view locale)
{
    const CategoryDirectory directory{snapshot.categories};
    auto chosen = CategoryPins::of(snapshot, kind);
    if (chosen.empty()) {
        const auto selectable = directory.selectable(kind);
        chosen = mostUsed(snapshot, kind, selectable);
        appendFirstLeaves(chosen, directory, selectable);
    }
    chosen.resize(std::min(chosen.size(), CategoryPins::maximum));
    std::vector<EntryCategory> tiles;
    tiles.reserve(chosen.size());
    for (const auto* each : chosen)
        tiles.push_back(shown(*each, directory, snapshot, locale));
    return tiles;
}

std::vector<EntryCategory> EntryCategories::matching(const LedgerSnapshot& snapshot, std::string_view kind,
                                                     const QString& query, std::string_view locale)
{
    const CategoryDirectory directory{snapshot.categories};
    const auto folded = TextFold::folded(TextFold::trimmed(query.toStdString()));
    std::vector<EntryCategory> all;
    std::unordered_set<std::string> kept;
    for (const auto* category : directory.selectable(kind)) {
        auto each = shown(*category, directory, snapshot, locale);
        const auto* const parent = directory.parent(*category);
        const bool matches = folded.empty() || mark(each, folded);
        const bool parentMatches =
            parent && TextFold::folded(std::string{directory.pathName(*parent, locale)}).contains(folded);
        if (matches || parentMatches)
            kept.insert(each.id);
        if (matches && parent)
            kept.insert(parent->id);
        all.push_back(std::move(each));
    }
    std::erase_if(all, [&](const EntryCategory& each) { return !kept.contains(each.id); });
    return all;
}

QString EntryCategories::path(const LedgerSnapshot& snapshot, std::string_view id, std::string_view locale)
{
    const CategoryDirectory directory{snapshot.categories};
    const auto* const category = directory.find(id);
    return category ? qString(directory.fullPathName(*category, locale)) : QString{};
}

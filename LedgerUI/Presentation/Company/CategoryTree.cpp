#include "LedgerUI/Presentation/Company/CategoryTree.h"

#include <algorithm>
#include <chrono>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

using Look = PlainCell::Look;

ArchivedCategories including(bool showsArchived)
{
    return showsArchived ? ArchivedCategories::included : ArchivedCategories::leftOut;
}

bool holds(const Category& category, const std::string& folded)
{
    return std::ranges::any_of(category.names, [&](const auto& name) {
        return TextFold::folded(name.second).find(folded) != std::string::npos;
    });
}

std::string yearBefore(std::string_view today)
{
    const auto day = LedgerDay::parse(today);
    if (!day)
        return {};
    auto before = *day - std::chrono::years{1};
    if (!before.ok())
        before = before.year() / before.month() / std::chrono::last;
    return LedgerDay::format(before);
}

bool isPinned(const LedgerSnapshot& snapshot, const std::string& id)
{
    const auto& pins = snapshot.currentMember.selectedCategoryIDs;
    return pins && std::ranges::find(*pins, id) != pins->end();
}

/// The siblings as they are shown, by identifier, with the place of the category among them.
struct Group {
    std::vector<std::string> ids;
    std::size_t at = 0;
};

Group groupOf(const CategoryDirectory& directory, const Category& category, bool showsArchived)
{
    Group group;
    const auto parent = category.parentID ? std::optional<std::string_view>{*category.parentID} : std::nullopt;
    for (const auto* each : directory.siblings(category.kind, parent, including(showsArchived))) {
        if (each == &category)
            group.at = group.ids.size();
        group.ids.push_back(each->id);
    }
    return group;
}

std::optional<CategoryReorder> reordered(const Category& category, const Group& group, std::size_t to)
{
    if (to >= group.ids.size() || to == group.at || group.ids[group.at] != category.id)
        return std::nullopt;
    CategoryReorder order{
        .kind = category.kind, .parentID = category.parentID, .orderedIDs = group.ids, .expectedIDs = group.ids};
    order.orderedIDs.erase(order.orderedIDs.begin() + static_cast<std::ptrdiff_t>(group.at));
    order.orderedIDs.insert(order.orderedIDs.begin() + static_cast<std::ptrdiff_t>(to), category.id);
    return order;
}

PlainRow rowFor(const Category& category, const CategoryDirectory& directory, const LedgerSnapshot& snapshot,
                const CategoryTree::Uses& counted, std::string_view locale)
{
    const auto& words = categoryWords();
    const auto* parent = directory.parent(category);
    const std::string name{directory.pathName(category, locale)};
    const auto said =
        parent ? wordIn(locale, words, "spoken.child", {name, std::string{directory.pathName(*parent, locale)}})
               : wordIn(locale, words, "spoken.top", {name});
    const bool pinned = isPinned(snapshot, category.id);
    PlainCell title{.text = qString(name),
                    .look = category.archived ? Look::quiet
                            : parent          ? Look::normal
                                              : Look::bold,
                    .glyph = qString(category.symbol),
                    .spoken = listed({said, pinned ? wordIn(locale, words, "spoken.pinned") : QString{}}, locale)};
    title.depth = parent ? 1 : 0;
    title.mark = pinned ? QStringLiteral("pin-angle") : QString{};
    const auto used = counted.find(category.id);
    const bool isUsed = used != counted.end() && used->second > 0;
    return {.id = category.id,
            .cells = {title,
                      {.text = isUsed ? qString(groupedNumber(used->second, locale)) : QStringLiteral("–"),
                       .look = isUsed ? Look::normal : Look::quiet},
                      {.text = wordIn(locale, words, category.archived ? "inactive" : "active"),
                       .look = category.archived ? Look::chip : Look::quiet}}};
}

}

CategoryTree::Uses CategoryTree::uses(const LedgerSnapshot& snapshot, const CategoryDirectory& directory,
                                      std::string_view today)
{
    const auto since = yearBefore(today);
    Uses counted;
    for (const auto& entry : snapshot.transactions) {
        if (!entry.categoryID || entry.date <= since || entry.date > today)
            continue;
        ++counted[*entry.categoryID];
        const auto* category = directory.find(*entry.categoryID);
        if (const auto* parent = category ? directory.parent(*category) : nullptr)
            ++counted[parent->id];
    }
    return counted;
}

std::vector<PlainColumn> CategoryTree::columns(std::string_view locale)
{
    const auto head = [&](std::string_view key) { return wordIn(locale, categoryWords(), key); };
    return {{.head = head("category")},
            {.head = head("uses"), .align = PlainColumn::Align::right, .isPart = true},
            {.head = head("state")}};
}

std::vector<PlainRow> CategoryTree::rows(const View& view, const LedgerSnapshot& snapshot,
                                         const CategoryDirectory& directory, const Uses& counted,
                                         std::string_view locale)
{
    const auto query = TextFold::folded(TextFold::trimmed(view.query.toStdString()));
    const auto archived = including(view.showsArchived);
    const auto matches = [&](const Category& category) { return query.empty() || holds(category, query); };
    std::vector<PlainRow> rows;
    for (const auto* category : directory.ordered(view.kind, archived)) {
        const auto* parent = directory.parent(*category);
        const bool isHidden = parent && query.empty() && view.folded.contains(parent->id);
        const auto children = directory.children(category->id, archived);
        const bool isFound = matches(*category) || (parent && matches(*parent)) ||
                             std::ranges::any_of(children, [&](const Category* child) { return matches(*child); });
        if (isHidden || !isFound)
            continue;
        auto row = rowFor(*category, directory, snapshot, counted, locale);
        if (!children.empty())
            row.cells.front().fold = query.empty() && view.folded.contains(category->id)
                                         ? QStringLiteral("chevron-right")
                                         : QStringLiteral("chevron-down");
        rows.push_back(std::move(row));
    }
    return rows;
}

std::optional<CategoryReorder> CategoryTree::moved(const CategoryDirectory& directory, std::string_view id, int by,
                                                   bool showsArchived)
{
    const auto* category = directory.find(id);
    if (!category)
        return std::nullopt;
    const auto group = groupOf(directory, *category, showsArchived);
    return reordered(*category, group, group.at + static_cast<std::size_t>(by)); // wraps to far beyond the end
}

std::optional<CategoryReorder> CategoryTree::movedTo(const CategoryDirectory& directory, std::string_view id,
                                                     std::string_view place, bool showsArchived)
{
    const auto* category = directory.find(id);
    if (!category)
        return std::nullopt;
    const auto group = groupOf(directory, *category, showsArchived);
    const auto to = std::ranges::find(group.ids, place) - group.ids.begin();
    return reordered(*category, group, static_cast<std::size_t>(to));
}

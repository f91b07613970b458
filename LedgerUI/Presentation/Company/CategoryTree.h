#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <QString>

#include "LedgerCore/Domain/Categories/CategoryDirectory.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerUI/Presentation/Table/PlainTableModel.h"

/// The categories of one kind as a tree of two levels in a flat table.
namespace CategoryTree {

/// What of the tree is shown.
struct View {
    std::string kind;
    QString query;
    bool showsArchived = false;
    std::set<std::string, std::less<>> folded; // parents whose children are hidden; a search shows them all the same
};

using Uses = std::map<std::string, std::size_t, std::less<>>;

/// How many entries of the twelve months up to `today` stand under each category, those of its children included.
Uses uses(const LedgerSnapshot& snapshot, const CategoryDirectory& directory, std::string_view today);

std::vector<PlainColumn> columns(std::string_view locale);

/// In the order of the books. The query is looked for in all languages, ignoring case and diacritics; a parent stays
/// above a child that matches, and children below a parent that does.
std::vector<PlainRow> rows(const View& view, const LedgerSnapshot& snapshot, const CategoryDirectory& directory,
                           const Uses& counted, std::string_view locale);

/// The order in which the category stands `by` places further among its siblings; nothing where it stands already or
/// cannot go. Archived siblings count only where they are shown.
std::optional<CategoryReorder> moved(const CategoryDirectory& directory, std::string_view id, int by,
                                     bool showsArchived);
/// The order in which it stands at the place of another one of the group; nothing for one of another group.
std::optional<CategoryReorder> movedTo(const CategoryDirectory& directory, std::string_view id, std::string_view place,
                                       bool showsArchived);

}

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <QString>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// A category as the entry form shows it.
struct EntryCategory {
    std::string id;
    QString name;
    QString symbol;
    bool hasParent = false;
    bool isPinned = false;
    // Where the searched words stand in `name`; of length 0 when nothing is marked.
    int matchStart = 0;
    int matchLength = 0;

    bool operator==(const EntryCategory&) const = default;
};

/// Which categories the entry form puts where.
namespace EntryCategories {

/// Up to eight for the tiles: the pins; without any, the most used ones, then the first of the directory.
std::vector<EntryCategory> tiles(const LedgerSnapshot& snapshot, std::string_view kind, std::string_view locale);

/// All categories of the kind whose name holds `query`, ignoring case and diacritics, each below its parent. Under a
/// parent that matches stand all of its children. An empty query matches everything.
std::vector<EntryCategory> matching(const LedgerSnapshot& snapshot, std::string_view kind, const QString& query,
                                    std::string_view locale);

/// "Utilities › Electricity"; empty for a category that is not known.
QString path(const LedgerSnapshot& snapshot, std::string_view id, std::string_view locale);

}

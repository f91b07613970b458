#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace LedgerService {

class Database;

/// What a client says that it holds already.
struct SnapshotAsked {
    std::vector<std::string> held; // tags, with their quotation marks
    bool delta = false;            // whether it takes what is new since instead of the whole
};

/// A member's snapshot as it goes out.
struct SnapshotAnswer {
    enum class Kind { whole, unchanged, delta };

    Kind kind = Kind::whole;
    std::string tag;
    std::string base;                  // the tag that a delta builds on
    std::string text;                  // of a whole snapshot only the first block; empty when nothing changed
    std::function<std::string()> more; // the further blocks, each in a transaction of its own; an empty one ends them
    std::size_t heldBytes = 0;         // what `more` holds of the snapshot's end until the last block is made
};

/// Snapshots: all of a company that a member may see, as one state of the database.
namespace SnapshotReader {

/// Nothing when there is no such member.
std::optional<SnapshotAnswer> answer(Database& database, std::string_view companyID, std::string_view memberID,
                                     const SnapshotAsked& asked);

}

}

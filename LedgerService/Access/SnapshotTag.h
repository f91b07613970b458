#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "LedgerCore/Domain/Records/Member.h"
#include "LedgerService/Storage/Rows/Entries/CompanyHistory.h"

namespace LedgerService {

class Connection;

/// Names one state of what one member sees of a company. Two equal tags stand for equal snapshots.
struct SnapshotTag {
    std::int64_t change = 0;
    int settingsRevision = 0;
    /// A digest of the company, the member's rights, the shape of what is sent, and the last entry up to `change`:
    /// books that were restored from a backup and went another way have another.
    std::string lineage;

    bool operator==(const SnapshotTag&) const = default;

    /// As an entity tag of HTTP, with its quotation marks.
    [[nodiscard]] std::string text() const;

    /// Nothing for a text that this program's tags do not look like.
    static std::optional<SnapshotTag> parse(std::string_view text);

    static SnapshotTag current(Connection& connection, std::string_view companyID, const Member& reader,
                               const CompanyState& state);

    /// Whether the member saw this state with the rights of today, and the books have only gone on since.
    [[nodiscard]] bool isEarlierStateOf(Connection& connection, std::string_view companyID, const Member& reader,
                                        const CompanyState& state) const;
};

}

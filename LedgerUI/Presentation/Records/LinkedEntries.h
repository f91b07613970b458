#pragma once

#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerUI/Presentation/Records/RecordRow.h"

/// The entries that book the money of some records, found in one pass over all. Points into the snapshot.
class LinkedEntries {
public:
    /// An empty identifier names nothing.
    LinkedEntries(const LedgerSnapshot& snapshot, const std::unordered_set<std::string_view>& ids);

    /// Null where the member does not see the entry.
    [[nodiscard]] const LedgerTransaction* find(std::string_view id) const;
    /// The same as a row leads to it.
    [[nodiscard]] RecordEntry reached(std::string_view id) const;
    /// The account that the entry's money moved on; null where it is not seen.
    [[nodiscard]] const Account* account(std::string_view id) const;

private:
    const LedgerSnapshot& m_snapshot;
    std::unordered_map<std::string_view, const LedgerTransaction*> m_entries;
};

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Entries/ExchangeSides.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// What earlier entries say about one that is being recorded. Made for a snapshot and kept as long: what takes a pass
/// over all entries is looked up when it is asked for the first time, so that a form asks at every key.
class EntryHistory {
public:
    explicit EntryHistory(SnapshotPointer snapshot) : m_snapshot(std::move(snapshot)) {}

    /// An entry in force that moves exactly this on the account on that day; null when there is none. `minor` is below
    /// zero where the money leaves.
    [[nodiscard]] const LedgerTransaction* likelyDouble(std::string_view day, std::string_view accountID,
                                                        std::string_view currency, std::int64_t minor) const;

    /// What was last given and received for the pair, whichever of the two was given.
    [[nodiscard]] std::optional<ExchangeSides> lastExchange(std::string_view from, std::string_view to) const;

private:
    SnapshotPointer m_snapshot;
    mutable std::string m_day; // that `m_ofDay` is of
    mutable std::vector<const LedgerTransaction*> m_ofDay;
    mutable std::optional<std::vector<const LedgerTransaction*>> m_exchanges; // the latest first
};

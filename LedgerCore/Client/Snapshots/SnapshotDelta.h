#pragma once

#include <cstdint>
#include <optional>

#include "LedgerCore/Client/Snapshots/EntryStream.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// What became of a held snapshot: everything small whole, of the entries and receipts only those that are new or
/// changed.
struct SnapshotDelta {
    LedgerSnapshot changed;
    std::int64_t entryCount = 0; // after merging
    std::int64_t attachmentCount = 0;

    /// Nothing for a reply that is no delta.
    static std::optional<SnapshotDelta> decode(SplitReply reply);

    /// `base` with the changes: a known record is replaced in its place, the others follow in their order. Nothing
    /// when the counts do not agree, as the base is then not the one that the service thinks of.
    [[nodiscard]] std::optional<LedgerSnapshot> appliedTo(const LedgerSnapshot& base) &&;
};

#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// What each entry of a snapshot is found by and no other has: note, reference, participant and amounts, folded. Nobody
/// waits for them to see a ledger: they are made when they are first asked for, by whoever asks first.
class SearchTexts {
public:
    /// `before` are those of the snapshot's first entries in the same language, or null.
    SearchTexts(SnapshotPointer snapshot, std::string locale, std::shared_ptr<const SearchTexts> before = nullptr);

    /// Makes them; whoever else asks meanwhile waits.
    void make() const;
    /// Of the entry at this place of the snapshot.
    [[nodiscard]] std::string_view of(std::uint32_t at) const;

private:
    struct Made;

    std::shared_ptr<Made> m_made;
};

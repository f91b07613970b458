#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// Where the entries of a list stand, by their identifiers. Small, and cheap to copy for a list that only got longer.
class EntryPlaces {
public:
    static constexpr std::uint32_t none = 0xFFFFFFFF;

    /// Takes in those entries of the list that stand behind the ones taken in so far. Of two with one identifier the
    /// first counts.
    void extend(const EntryList& entries);

    /// The place of this entry in the list that was taken in, or `none`.
    [[nodiscard]] std::uint32_t find(const EntryList& entries, std::string_view id) const;

private:
    /// A part of the identifier's hash, so that other identifiers are mostly passed over without looking at them.
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t place = none;
    };
    /// Where this entry stands among the slots, or the free one where it would. There must be a free one.
    [[nodiscard]] std::size_t slotOf(const EntryList& entries, std::string_view id, std::uint32_t hash) const;
    void grow(std::size_t entries);
    void put(Slot slot);

    std::vector<Slot> m_slots; // a power of two of them, at most half of them in use
    std::uint32_t m_size = 0;
};

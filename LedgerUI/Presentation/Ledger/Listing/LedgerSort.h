#pragma once

#include <cstdint>
#include <vector>

#include "LedgerUI/Presentation/Ledger/LedgerBook.h"

/// In which order the ledger stands. Entries that the key does not tell apart stay newest first.
struct LedgerSort {
    enum class Key { date, entry, account, member, amount };
    enum class Direction { ascending, descending };

    Key key = Key::date;
    Direction direction = Direction::descending;

    bool operator==(const LedgerSort&) const = default;
};

/// `rows`, which stand in the book's own order, in the wanted one. Amounts sort by currency, then by value.
std::vector<std::uint32_t> sorted(const LedgerBook& book, std::vector<std::uint32_t> rows, LedgerSort sort);

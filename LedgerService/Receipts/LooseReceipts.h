#pragma once

#include <chrono>
#include <cstddef>

namespace LedgerService {

class Database;
class ReceiptFolder;

/// Receipts that were uploaded and never linked.
namespace LooseReceipts {

inline constexpr std::chrono::hours lifetime{30 * 24};
/// A file that no row names is given this long: its row may be about to be written, or a backup may still look for it.
inline constexpr std::chrono::hours graceOfFiles{24};

/// What was swept.
struct Swept {
    std::size_t receipts = 0;
    std::size_t files = 0;
};

/// Removes the receipts that have been loose for longer than their lifetime, and the files that no receipt has named
/// for the time of their grace.
Swept sweep(Database& database, const ReceiptFolder& folder, std::chrono::system_clock::time_point now);

}

}

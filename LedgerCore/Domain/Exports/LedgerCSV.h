#pragma once

#include <cstddef>
#include <string>
#include <string_view>

struct LedgerSnapshot;

struct LedgerCSVOptions {
    bool includesReceiptIndex = false; // two more columns: number and names of the receipts

    bool operator==(const LedgerCSVOptions&) const = default;
};

/// The ledger as a comma-separated document, one record per leg.
namespace LedgerCSV {

/// One field as it stands in every document, quotation marks included.
std::string escaped(std::string_view value);

/// The snapshot's entries with category names in the language of `locale`; all else is the same in every language.
std::string render(const LedgerSnapshot& snapshot, std::string_view locale, LedgerCSVOptions options);

/// How many columns the document has.
std::size_t columnCount(LedgerCSVOptions options);

/// "quillet-ledger-2026-01-01_2026-03-31.csv", or with the one day when both are the same.
std::string fileName(std::string_view startDate, std::string_view endDate);

}

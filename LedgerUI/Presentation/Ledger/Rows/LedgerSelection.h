#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "LedgerUI/Presentation/Ledger/LedgerAmounts.h"
#include "LedgerUI/Presentation/Ledger/Rows/LedgerEntryDetail.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"

struct LedgerListing;

/// The entries that are chosen in the ledger, and what they bring. Worked out once for each choice: whole ledgers can
/// be chosen, and the balances around one entry take a pass over all.
struct LedgerSelection {
    LedgerBookPointer book{};               // none while nothing is chosen
    std::vector<std::uint32_t> entries{};   // of that book
    std::vector<LedgerTotal> sums{};        // of those
    std::optional<LedgerEntryDetail> one{}; // where it is a single one

    static LedgerSelection of(const LedgerListing& listing, std::vector<std::uint32_t> entries);

    /// "3 entries selected".
    [[nodiscard]] QString count(std::string_view locale) const;
    /// What they bring in each currency.
    [[nodiscard]] std::vector<MoneyText> amounts(std::string_view locale) const;
    /// The first `shown` of the amounts in one line, with how many more there are.
    [[nodiscard]] QString figures(std::string_view locale, std::size_t shown) const;
};

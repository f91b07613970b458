#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

#include "LedgerUI/Presentation/Ledger/LedgerAmounts.h"
#include "LedgerUI/Presentation/Ledger/LedgerBalances.h"
#include "LedgerUI/Presentation/Ledger/LedgerFilter.h"
#include "LedgerUI/Presentation/Ledger/LedgerNotice.h"
#include "LedgerUI/Presentation/Ledger/LedgerSort.h"
#include "LedgerUI/Presentation/Ledger/LedgerStatement.h"
#include "LedgerUI/Presentation/Table/RowChange.h"

/// What a person asks of a book: which entries, in which order, as seen on which day.
struct LedgerQuery {
    LedgerFilter filter;
    LedgerSort sort;
    std::chrono::year_month_day today{};

    bool operator==(const LedgerQuery&) const = default;
};

/// The answer: the entries that the ledger shows, and what is said of all of them together. Immutable, so that it can
/// be made on a worker and shown at once.
struct LedgerListing {
    LedgerBookPointer book;
    LedgerQuery query;
    std::vector<std::uint32_t> rows; // entries, in the order shown
    std::vector<int> places;         // for each entry of the book its row, or -1
    std::vector<LedgerTotal> totals;
    LedgerBalances balances;                  // at the end of the period
    std::optional<LedgerStatement> statement; // where a single account is chosen
    std::vector<std::uint32_t> widest;        // for each currency the entry with its largest amount
    bool isOfThisYear = true;
    std::optional<LedgerNotice> notice; // what is said in the place of rows where there are none

    /// The row of the entry of this id, or -1.
    [[nodiscard]] int rowOf(std::string_view id) const;
};

using LedgerListingPointer = std::shared_ptr<const LedgerListing>;

/// The row to go to for a day: the first of that day, else of the nearest day before it, else of the nearest after it;
/// nothing where no row is shown.
std::optional<std::size_t> placeOfDay(const LedgerListing& listing, std::chrono::year_month_day day);

LedgerListing listingOf(LedgerBookPointer book, LedgerQuery query);

/// What becomes of the rows of `before` (null for none) in `now`.
RowChange changeBetween(const LedgerListing* before, const LedgerListing& now);

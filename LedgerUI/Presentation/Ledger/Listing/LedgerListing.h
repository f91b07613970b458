#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "LedgerUI/Presentation/Ledger/LedgerAmounts.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerBalances.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerFilter.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerLine.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerNotice.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerSort.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerStatement.h"
#include "LedgerUI/Presentation/Table/RowChange.h"

enum class LedgerGrouping { none, byDay };

/// What a person asks of a book: which entries, in which order, as seen on which day.
struct LedgerQuery {
    LedgerFilter filter;
    LedgerSort sort;
    std::chrono::year_month_day today{};
    LedgerGrouping grouping = LedgerGrouping::none;

    /// Whether each day has a head: only where the entries stand by their days.
    [[nodiscard]] bool isByDay() const
    {
        return grouping == LedgerGrouping::byDay && sort.key == LedgerSort::Key::date;
    }

    bool operator==(const LedgerQuery&) const = default;
};

/// Where the head of a day stands, and the entries below it.
struct LedgerDayHead {
    std::uint32_t day = 0; // 20261120
    int line = 0;
    std::size_t first = 0; // of its rows
    std::size_t count = 0;

    bool operator==(const LedgerDayHead&) const = default;
};

/// The answer: the entries that the ledger shows, and what is said of all of them together. Immutable, so that it can
/// be made on a worker and shown at once.
struct LedgerListing {
    LedgerBookPointer book;
    LedgerQuery query;
    std::vector<std::uint32_t> rows;         // entries, in the order shown
    std::vector<LedgerLine> lines;           // those rows, with heads where they are grouped
    std::vector<LedgerDayHead> days;         // the heads, in their order
    std::vector<int> places;                 // for each entry of the book its line, or -1
    std::vector<ReportFigureLeg> figureLegs; // of the filter's figure, by entry
    std::vector<LedgerTotal> totals;
    LedgerBalances balances;                  // at the end of the period
    std::optional<LedgerStatement> statement; // where a single account is chosen
    std::vector<std::uint32_t> widest;        // for each currency the entry with its largest amount
    bool isOfThisYear = true;
    std::optional<LedgerNotice> notice; // what is said in the place of rows where there are none

    /// The line of the entry of this id, or -1.
    [[nodiscard]] int lineOf(std::string_view id) const;
    /// The head of this day, or null.
    [[nodiscard]] const LedgerDayHead* head(std::uint32_t day) const;
    [[nodiscard]] std::span<const std::uint32_t> entriesOf(const LedgerDayHead& head) const
    {
        return std::span{rows}.subspan(head.first, head.count);
    }
};

using LedgerListingPointer = std::shared_ptr<const LedgerListing>;

/// The row to go to for a day: the first of that day, else of the nearest day before it, else of the nearest after it;
/// nothing where no row is shown.
std::optional<std::size_t> placeOfDay(const LedgerListing& listing, std::chrono::year_month_day day);

LedgerListing listingOf(LedgerBookPointer book, LedgerQuery query);

/// The totals of some of the listing's rows; of a report's figure only what the figure is the sum of.
std::vector<LedgerTotal> totalsOf(const LedgerListing& listing, std::span<const std::uint32_t> rows);

/// What becomes of the lines of `before` (null for none) in `now`.
RowChange changeBetween(const LedgerListing* before, const LedgerListing& now);

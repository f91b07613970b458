#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "LedgerCore/Domain/Reports/ReportMovements.h"
#include "LedgerCore/Domain/Reports/ReportRange.h"

/// What a report is about. Currencies are never added, so there is exactly one.
struct ReportScope {
    std::string currency;
    std::optional<std::set<std::string, std::less<>>> accountIDs = {}; // unset: every account of the snapshot

    bool operator==(const ReportScope&) const = default;
};

enum class ReportError {
    invalidRanges, // no ranges, or ranges that do not follow each other day by day
    invalidDay,    // an entry is dated with something that is no day
    amountOverflow // the amounts of a currency do not fit 64 bits
};

/// One category's income or expense in one period, in signed minor units.
struct ReportCategoryLine {
    std::string categoryID;           // empty: booked to no category
    Movement side = Movement::income; // `income` or `expense`
    std::int64_t bookedMinor = 0;
    std::int64_t refundedMinor = 0; // refunds of this category's income
    std::int64_t reversedMinor = 0;
    std::size_t entryCount = 0;

    bool operator==(const ReportCategoryLine&) const = default;

    [[nodiscard]] std::int64_t netMinor() const { return bookedMinor + refundedMinor + reversedMinor; }
};

/// One period of a report. `openingMinor` + `movements.netMinor()` = `closingMinor`, and the net amounts of either
/// list of category lines add up to `movements.incomeMinor()` + `movements.expenseMinor()`.
struct ReportPeriod {
    ReportRange days;
    std::int64_t openingMinor = 0; // what the accounts held before the first day
    ReportMovements movements = {};
    std::int64_t closingMinor = 0;
    std::size_t entryCount = 0; // entries that moved this currency on these accounts
    /// Categories with movement in snapshot order, income before expense, the money of no category last.
    std::vector<ReportCategoryLine> categories = {};
    /// The same money under top-level categories: each with what was booked to it and to its children.
    std::vector<ReportCategoryLine> parentCategories = {};

    bool operator==(const ReportPeriod&) const = default;
};

/// The figures of one currency over consecutive periods; each opens with what the one before closed with.
struct Report {
    ReportScope scope;
    std::vector<ReportPeriod> periods;

    bool operator==(const Report&) const = default;
};

/// One account in one period.
struct ReportCell {
    std::int64_t openingMinor = 0;
    ReportMovements movements = {};
    std::int64_t arrivedMinor = 0; // all positive legs
    std::int64_t leftMinor = 0;    // all negative legs
    std::int64_t closingMinor = 0;

    bool operator==(const ReportCell&) const = default;
};

struct ReportAccountRow {
    std::string accountID;
    std::vector<ReportCell> cells; // one for each range

    bool operator==(const ReportAccountRow&) const = default;
};

/// Accounts by period, and within each by movement: those that hold the currency or moved it, in snapshot order.
struct ReportAccountMatrix {
    ReportScope scope;
    std::vector<ReportRange> ranges;
    std::vector<ReportAccountRow> rows;
    std::vector<ReportCell> totals; // of all rows, one for each range

    bool operator==(const ReportAccountMatrix&) const = default;
};

/// What the accounts held together at the end of each day, in minor units.
struct ReportDailyBalances {
    std::chrono::sys_days firstDay;
    std::vector<std::int64_t> closingMinor; // one per day from `firstDay` on

    bool operator==(const ReportDailyBalances&) const = default;
};

#pragma once

#include <cstdint>
#include <vector>

#include "LedgerCore/Domain/Reports/Report.h"

/// One movement of money on an account that was neither earned nor spent by it, or that took back what was.
struct FundMovementLeg {
    std::uint32_t entry = 0;   // position in the snapshot
    std::uint32_t account = 0; // position in the snapshot
    std::int64_t amountMinor = 0;
    Movement movement = Movement::other; // of a reversal that of what it undoes
    bool reverses = false;

    bool operator==(const FundMovementLeg&) const = default;
};

/// What arrived and left by one kind of movement, reversals of such entries among it.
struct FundMovementSum {
    Movement movement = Movement::other;
    std::int64_t arrivedMinor = 0;
    std::int64_t leftMinor = 0; // negative
    std::size_t legCount = 0;

    bool operator==(const FundMovementSum&) const = default;

    [[nodiscard]] std::int64_t netMinor() const { return arrivedMinor + leftMinor; }
};

/// The money of one currency that moved otherwise than as income or expense.
struct FundMovements {
    ReportScope scope;
    std::vector<FundMovementLeg> legs; // in snapshot order
    std::vector<FundMovementSum> sums; // of the kinds with movement, in the order of `allMovements`
    FundMovementSum reversals;         // of income and expense; its `movement` says nothing
    FundMovementSum total;             // of all of these

    bool operator==(const FundMovements&) const = default;
};

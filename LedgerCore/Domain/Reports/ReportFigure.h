#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "LedgerCore/Domain/Reports/Report.h"

/// Which legs are meant by the way that their money goes.
enum class LegDirection { both, arriving, leaving };

constexpr bool goes(LegDirection direction, std::int64_t amountMinor)
{
    return direction == LegDirection::both || (direction == LegDirection::leaving) == (amountMinor < 0);
}

/// What one figure of a report is the sum of: the legs of its scope that bear one of the movements.
struct ReportFigure {
    enum class Lines { all, categoryAlone, categoryWithChildren, severalCategories };
    /// Of funds: what moved without being earned or spent, with income and expense that were taken back.
    enum class Legs { all, funds };

    ReportScope scope;
    std::set<Movement> movements = {}; // empty: all of them
    Lines lines = Lines::all;
    std::string categoryID = {}; // where `lines` asks for one; empty for the money of no category
    std::set<std::string, std::less<>> categoryIDs = {}; // where `lines` asks for several, each alone
    Legs legs = Legs::all;
    LegDirection direction = LegDirection::both;

    bool operator==(const ReportFigure&) const = default;

    /// What `ReportMovements::incomeMinor`, `expenseMinor`, their sum and `otherMinor` are made of.
    static std::set<Movement> incomeMovements() { return {Movement::income, Movement::refund}; }
    static std::set<Movement> expenseMovements() { return {Movement::expense}; }
    static std::set<Movement> netMovements() { return {Movement::income, Movement::refund, Movement::expense}; }
    static std::set<Movement> otherMovements()
    {
        std::set<Movement> others{allMovements.begin(), allMovements.end()};
        for (const auto movement : netMovements())
            others.erase(movement);
        return others;
    }
};

/// One leg of a figure.
struct ReportFigureLeg {
    std::uint32_t entry = 0; // position in the snapshot
    std::int64_t amountMinor = 0;
    bool reverses = false;

    bool operator==(const ReportFigureLeg&) const = default;
};

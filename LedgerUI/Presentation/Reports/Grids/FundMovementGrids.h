#pragma once

#include <cstddef>
#include <limits>
#include <string_view>

#include "LedgerUI/Presentation/Reports/Grids/ReportGrid.h"
#include "LedgerUI/Presentation/Reports/ReportQuery.h"

/// The money of one currency that moved without being income or expense.
struct FundMovementGrids {
    ReportGrid sums; // by kind of movement
    ReportGrid list; // movement by movement, the latest first unless it is asked for in another order
    std::size_t count = 0;

    /// Of the list of all movements.
    static constexpr std::string_view tableID = "fundMovements";

    /// How many movements a page shows; files and paper have all of them.
    static constexpr std::size_t shown = 300;
    static constexpr std::size_t all = std::numeric_limits<std::size_t>::max();

    static FundMovementGrids of(const ReportBooks& books, const ReportQuery& query, std::string_view locale,
                                std::size_t most = shown);

    /// The entry that a row of the list stands for.
    static std::string_view entryOf(std::string_view rowID);
};

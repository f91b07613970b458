#include <array>

#include "LedgerCore/Domain/Reports/ReportBook.h"

namespace {

void add(FundMovementSum& sum, std::int64_t amountMinor)
{
    (amountMinor < 0 ? sum.leftMinor : sum.arrivedMinor) += amountMinor; // no sum of a book's amounts overflows
    ++sum.legCount;
}

}

FundMovements ReportBook::fundMovements(ReportScope scope, ReportRange range) const
{
    const auto inScope = accountsInScope(scope);
    const auto first = static_cast<std::int32_t>(range.first.time_since_epoch().count());
    const auto last = static_cast<std::int32_t>(range.last.time_since_epoch().count());
    FundMovements found;
    std::array<FundMovementSum, allMovements.size()> sums;
    for (const auto& row : rows(scope.currency)) {
        if (row.day < first || row.day > last || !inScope[row.account] || row.isEarnedOrSpent())
            continue;
        const bool takesBack = row.movement == Movement::income || row.movement == Movement::expense;
        found.legs.push_back({.entry = row.entry,
                              .account = row.account,
                              .amountMinor = row.amountMinor,
                              .movement = row.movement,
                              .reverses = row.reverses});
        add(takesBack ? found.reversals : sums[static_cast<std::size_t>(row.movement)], row.amountMinor);
        add(found.total, row.amountMinor);
    }
    for (const auto movement : allMovements) {
        auto& sum = sums[static_cast<std::size_t>(movement)];
        sum.movement = movement;
        if (sum.legCount > 0)
            found.sums.push_back(sum);
    }
    found.scope = std::move(scope);
    return found;
}

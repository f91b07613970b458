#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// What floats and refund accounts usually spend. The last ninety days are looked at rather than the last thirty, so
/// that one large payment does not pass for a habit.
class FloatSpending {
public:
    FloatSpending(const LedgerSnapshot& snapshot, std::chrono::year_month_day today);

    /// Minor units that leave the account for good in thirty days, by expenses and refunds in force; rounded down.
    [[nodiscard]] std::int64_t inAMonth(std::string_view accountID, std::string_view currency) const;

private:
    std::map<std::pair<std::string_view, std::string_view>, std::int64_t> m_spent; // in all the days
};

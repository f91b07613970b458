#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "LedgerCore/Domain/Calendar/Period.h"

/// How many entries fall into a period, for any period, after one look at all of them.
class PeriodCounts {
public:
    PeriodCounts() = default;
    /// `days` as numbers such as 20261120, in any order; 0 names no day and counts only for all time.
    explicit PeriodCounts(std::vector<std::uint32_t> days);

    [[nodiscard]] std::size_t in(const Period& period) const;
    [[nodiscard]] std::size_t all() const { return m_days->size(); }
    [[nodiscard]] std::optional<std::chrono::year_month_day> latestDay() const;
    /// The latest day with an entry that is not after `day`.
    [[nodiscard]] std::optional<std::chrono::year_month_day> latestDayUntil(std::chrono::year_month_day day) const;
    /// The last day that there is anything to look at: today, or a later one of an entry from further east.
    [[nodiscard]] std::chrono::year_month_day horizon(std::chrono::year_month_day today) const;

private:
    // Ascending, and shared: a large ledger's are handed about with every look at it.
    std::shared_ptr<const std::vector<std::uint32_t>> m_days = std::make_shared<const std::vector<std::uint32_t>>();
};

/// The number of a day by which days compare: 20261120.
constexpr std::uint32_t dayNumber(std::chrono::year_month_day day)
{
    return static_cast<std::uint32_t>(static_cast<int>(day.year())) * 10000 + static_cast<unsigned>(day.month()) * 100 +
           static_cast<unsigned>(day.day());
}

#include "LedgerUI/Presentation/Period/PeriodCounts.h"

#include <algorithm>
#include <utility>

namespace {

std::optional<std::chrono::year_month_day> dayOf(std::uint32_t number)
{
    if (number == 0)
        return std::nullopt;
    return std::chrono::year{static_cast<int>(number / 10000)} / std::chrono::month{number / 100 % 100} /
           std::chrono::day{number % 100};
}

}

PeriodCounts::PeriodCounts(std::vector<std::uint32_t> days)
{
    if (!std::ranges::is_sorted(days))
        std::ranges::sort(days);
    m_days = std::make_shared<const std::vector<std::uint32_t>>(std::move(days));
}

std::size_t PeriodCounts::in(const Period& period) const
{
    if (period.isAllTime())
        return m_days->size();
    const auto first = std::ranges::lower_bound(*m_days, dayNumber(period.firstDay()));
    const auto last = std::ranges::upper_bound(*m_days, dayNumber(period.lastDay()));
    return static_cast<std::size_t>(last - first);
}

std::optional<std::chrono::year_month_day> PeriodCounts::latestDay() const
{
    return m_days->empty() ? std::nullopt : dayOf(m_days->back());
}

std::optional<std::chrono::year_month_day> PeriodCounts::latestDayUntil(std::chrono::year_month_day day) const
{
    const auto after = std::ranges::upper_bound(*m_days, dayNumber(day));
    return after == m_days->begin() ? std::nullopt : dayOf(*std::prev(after));
}

std::chrono::year_month_day PeriodCounts::horizon(std::chrono::year_month_day today) const
{
    return std::max(today, latestDay().value_or(today));
}

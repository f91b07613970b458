#include "LedgerUI/Presentation/Reports/Grids/ReportTrend.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Period/PeriodLabel.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportCategoryGrid.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportPeriodGrid.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;
using Span = Period::Span;

namespace {

__extension__ using Wide = __int128;

constexpr std::size_t periodsShown = 12; // where the page's period is a single one
constexpr std::size_t periodsAtMost = 120;
constexpr std::int64_t mostTenths = 99'999; // beyond 9,999.9 % a percentage says nothing any more
constexpr std::array spans{Span::day, Span::week, Span::month, Span::quarter, Span::year};

/// The days that the trend is about: those of the period, but none before the books begin or after today and the last
/// entry where it has no ends.
ReportRange daysOf(const Period& period, const ReportBooks& books, year_month_day today)
{
    if (!period.isAllTime())
        return ReportRanges::of(period);
    const sys_days last{books.counts.horizon(today)};
    return {std::min(sys_days{books.firstDay}, last), last};
}

std::int64_t daysIn(const ReportRange& range)
{
    return (range.last - range.first).count() + 1;
}

std::int64_t usualDays(Span grain)
{
    switch (grain) {
    case Span::week:
        return 7;
    case Span::month:
        return 30;
    case Span::quarter:
        return 91;
    case Span::year:
        return 365;
    case Span::day:
    case Span::allTime:
    case Span::dates:
        break;
    }
    return 1;
}

/// Under the axis, as short as it goes: without the year where there are no two periods of one name.
QString shortLabel(const Period& period, std::string_view locale, bool namesYear)
{
    const auto first = period.firstDay();
    switch (period.span()) {
    case Span::month:
        return namesYear ? DayText::shortMonthOfYear(first.year() / first.month(), locale)
                         : DayText::shortMonth(first.month(), locale);
    case Span::quarter:
        return namesYear ? periodLabel(period, locale) : shortQuarterLabel(period, locale);
    case Span::year:
        return periodLabel(period, locale);
    case Span::day:
    case Span::week:
    case Span::allTime:
    case Span::dates:
        break;
    }
    return DayText::shortDay(LedgerDay::format(first), locale);
}

class Trend {
public:
    Trend(const ReportBooks& books, const ReportQuery& query, std::string_view locale)
        : m_books(books), m_query(query), m_locale(locale)
    {
    }

    std::expected<ReportTrend, ReportError> made() &&
    {
        m_trend.grains = offered();
        m_trend.grain = m_query.grain && std::ranges::find(m_trend.grains, *m_query.grain) != m_trend.grains.end()
                            ? *m_query.grain
                            : ReportTrends::grainFor(m_query.period, m_books, m_query.today);
        m_trend.periods = ReportTrends::periodsOf(m_query.period, m_trend.grain, m_books, m_query.today);
        const auto part = m_query.part.value_or(m_query.period);
        if (const auto found = std::ranges::find(m_trend.periods, part); found != m_trend.periods.end())
            m_trend.chosen = static_cast<std::size_t>(found - m_trend.periods.begin());
        std::vector<ReportRange> ranges;
        ranges.reserve(m_trend.periods.size());
        for (const auto& period : m_trend.periods)
            ranges.push_back(ReportRanges::of(period));
        const auto report = m_books.book->report(scope(), ranges);
        if (!report)
            return std::unexpected(report.error());
        chart(*report);
        m_trend.table = ReportPeriodGrids::table(*report, m_trend.periods, m_books.firstDay, m_locale);
        const auto of = m_trend.chosen ? m_trend.periods[*m_trend.chosen] : whole();
        m_trend.of = periodLabel(of, m_locale);
        auto categories = ReportCategoryGrids::categories(m_books, m_query, of, m_locale);
        if (!categories)
            return std::unexpected(categories.error());
        m_trend.categories = std::move(*categories);
        return std::move(m_trend);
    }

private:
    [[nodiscard]] ReportScope scope() const { return {.currency = m_query.currency, .accountIDs = m_query.accountIDs}; }

    /// All periods of the trend together.
    [[nodiscard]] Period whole() const
    {
        if (m_trend.periods.size() <= 1 || m_query.period.isAllTime())
            return m_query.period;
        return Period::between(m_trend.periods.front().firstDay(), m_trend.periods.back().lastDay())
            .value_or(m_query.period);
    }

    [[nodiscard]] std::vector<Span> offered() const
    {
        const auto length = daysIn(daysOf(m_query.period, m_books, m_query.today));
        std::vector<Span> grains;
        for (const auto span : spans) {
            if (length / usualDays(span) <= static_cast<std::int64_t>(periodsAtMost) || span == Span::year)
                grains.push_back(span);
        }
        return grains;
    }

    /// Whether more periods are shown than one year has, so that their names alone would come twice.
    [[nodiscard]] bool coversYears() const
    {
        const std::size_t inAYear = m_trend.grain == Span::quarter ? 4 : 12;
        return m_trend.periods.size() > inAYear;
    }

    void chart(const Report& report)
    {
        auto& chart = m_trend.chart;
        chart = {.currency = m_query.currency, .places = {}, .series = {}, .chosen = m_trend.chosen};
        ChartSeries income{word("income"), ChartMark::bar, ChartRole::income, {}};
        ChartSeries expense{word("expense"), ChartMark::bar, ChartRole::expense, {}};
        ChartSeries net{word("net"), ChartMark::line, ChartRole::net, {}};
        for (std::size_t at = 0; at < report.periods.size(); ++at) {
            const auto& moved = report.periods[at].movements;
            chart.places.push_back(
                {shortLabel(m_trend.periods[at], m_locale, coversYears()), periodLabel(m_trend.periods[at], m_locale)});
            income.values.push_back(moved.incomeMinor());
            expense.values.push_back(moved.expenseMinor());
            net.values.push_back(moved.incomeMinor() + moved.expenseMinor());
        }
        chart.series = {std::move(income), std::move(expense), std::move(net)};
    }

    [[nodiscard]] QString word(std::string_view key) const { return wordIn(m_locale, reportWords(), key); }

    const ReportBooks& m_books;
    const ReportQuery& m_query;
    std::string_view m_locale;
    ReportTrend m_trend;
};

}

std::vector<Period> ReportTrends::periodsOf(const Period& period, Period::Span grain, const ReportBooks& books,
                                            year_month_day today)
{
    const auto range = daysOf(period, books, today);
    std::vector<Period> periods{Period::containing(grain, range.first)};
    while (sys_days{periods.back().lastDay()} < range.last) {
        const auto next = periods.back().next();
        if (!next)
            break;
        periods.push_back(*next);
    }
    if (periods.size() > 1)
        return periods;
    while (periods.size() < periodsShown) {
        const auto before = periods.front().previous();
        if (!before)
            break;
        periods.insert(periods.begin(), *before);
    }
    return periods;
}

Period::Span ReportTrends::grainFor(const Period& period, const ReportBooks& books, year_month_day today)
{
    switch (period.span()) {
    case Span::day:
    case Span::week:
        return period.span();
    case Span::month:
    case Span::quarter:
    case Span::year:
        return Span::month;
    case Span::allTime:
    case Span::dates:
        break;
    }
    const auto length = daysIn(daysOf(period, books, today));
    constexpr std::array longest{std::pair{31, Span::day}, std::pair{120, Span::week}, std::pair{1100, Span::month},
                                 std::pair{3660, Span::quarter}};
    const auto fits = std::ranges::find_if(longest, [&](const auto& each) { return length <= each.first; });
    return fits == longest.end() ? Span::year : fits->second;
}

std::optional<Period> ReportTrends::yearBefore(const Period& period)
{
    const auto earlier = [](year_month_day day) {
        const year_month_day same{day.year() - std::chrono::years{1}, day.month(), day.day()};
        return same.ok() ? same : year_month_day{same.year() / same.month() / std::chrono::last};
    };
    switch (period.span()) {
    case Span::allTime:
        return std::nullopt;
    case Span::week:
        return Period::containing(Span::week, sys_days{period.firstDay()} - days{364});
    case Span::dates:
        return Period::between(earlier(period.firstDay()), earlier(period.lastDay()));
    case Span::day:
    case Span::month:
    case Span::quarter:
    case Span::year:
        break;
    }
    return Period::containing(period.span(), earlier(period.firstDay()));
}

std::optional<std::int64_t> ReportTrends::changeTenths(std::int64_t before, std::int64_t now)
{
    if (before == 0)
        return std::nullopt;
    const Wide difference = Wide{now} - before;
    const Wide size = before < 0 ? -Wide{before} : Wide{before};
    const Wide magnitude = difference < 0 ? -difference : difference;
    const auto tenths = static_cast<std::int64_t>(std::min((magnitude * 2000 / size + 1) / 2, Wide{mostTenths} + 1));
    return difference < 0 ? -tenths : tenths;
}

QString ReportTrends::changeText(std::int64_t before, std::int64_t now, std::string_view locale)
{
    const auto change = changeTenths(before, now);
    if (!change)
        return now == 0 ? QStringLiteral("–") : wordIn(locale, reportWords(), "change.new");
    const auto tenths = std::abs(*change);
    if (tenths > mostTenths)
        return *change < 0 ? QStringLiteral("≪") : QStringLiteral("≫");
    const auto digits = std::to_string(tenths / 10) + Money::separators(locale).decimal + std::to_string(tenths % 10);
    const std::string sign = tenths == 0 ? "" : *change < 0 ? "−" : "+";
    return wordIn(locale, reportWords(), "percent", {sign + digits});
}

std::expected<ReportTrend, ReportError> ReportTrends::trend(const ReportBooks& books, const ReportQuery& query,
                                                            std::string_view locale)
{
    return Trend{books, query, locale}.made();
}

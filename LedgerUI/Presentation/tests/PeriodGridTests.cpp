#include "LedgerUI/Presentation/Period/PeriodGrid.h"

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerUI/Presentation/Period/PeriodLabel.h"

namespace {

using Span = Period::Span;

std::chrono::year_month_day day(std::string_view text)
{
    return LedgerDay::parse(text).value();
}

const auto today = day("2026-11-20");

struct LabelCase {
    std::string_view name;
    Period period;
    std::array<std::string_view, 4> labels; // zh, id, vi, en
};

void PrintTo(const LabelCase& each, std::ostream* out)
{
    *out << each.name;
}

class PeriodLabels : public testing::TestWithParam<LabelCase> {};

TEST_P(PeriodLabels, ReadLikeTheirLanguage)
{
    static constexpr std::string_view locales[] = {"zh-CN", "id-ID", "vi-VN", "en-US"};
    for (std::size_t at = 0; at < 4; ++at)
        EXPECT_EQ(periodLabel(GetParam().period, locales[at]).toStdString(), GetParam().labels[at]);
}

INSTANTIATE_TEST_SUITE_P(
    Spans, PeriodLabels,
    testing::Values(LabelCase{"Day",
                              Period::containing(Span::day, today),
                              {"2026年11月20日", "20 Nov 2026", "20/11/2026", "20 Nov 2026"}},
                    LabelCase{"Week",
                              Period::containing(Span::week, today),
                              {"2026年11月16日–22日", "16–22 Nov 2026", "16–22/11/2026", "16–22 Nov 2026"}},
                    LabelCase{
                        "WeekAcrossMonths",
                        Period::containing(Span::week, day("2026-10-01")),
                        {"2026年9月28日–10月4日", "28 Sep – 4 Okt 2026", "28/9 – 4/10/2026", "28 Sep – 4 Oct 2026"}},
                    LabelCase{"WeekAcrossYears",
                              Period::containing(Span::week, day("2027-01-01")),
                              {"2026年12月28日–2027年1月3日", "28 Des 2026 – 3 Jan 2027", "28/12/2026 – 3/1/2027",
                               "28 Dec 2026 – 3 Jan 2027"}},
                    LabelCase{"Month",
                              Period::containing(Span::month, today),
                              {"2026年11月", "November 2026", "Tháng 11 năm 2026", "November 2026"}},
                    LabelCase{"Quarter",
                              Period::containing(Span::quarter, today),
                              {"2026年第 4 季度", "Kuartal 4 2026", "Quý 4, 2026", "Q4 2026"}},
                    LabelCase{"Year", Period::containing(Span::year, today), {"2026年", "2026", "2026", "2026"}},
                    LabelCase{"AllTime", Period::allTime(), {"全部时间", "Semua waktu", "Mọi thời gian", "All time"}}),
    [](const auto& each) { return std::string{each.param.name}; });

PeriodCounts someCounts()
{
    return PeriodCounts{{20261101, 20261120, 20261120, 20260201, 20251231, 0}};
}

TEST(PeriodCounts, CountDaysOnTheEdgesAndKeepUnreadableDaysForAllTime)
{
    const auto counts = someCounts();
    EXPECT_EQ(counts.in(Period::containing(Span::month, today)), 3U);
    EXPECT_EQ(counts.in(Period::containing(Span::year, today)), 4U);
    EXPECT_EQ(counts.in(Period::containing(Span::day, day("2025-12-31"))), 1U);
    EXPECT_EQ(counts.in(Period::allTime()), 6U);
}

TEST(PeriodGrid, ShowsMonthsWithTheirEntriesAndOffersNoneAfterToday)
{
    const auto grid = periodGrid(Span::month, today, today, someCounts(), "en-US");
    EXPECT_EQ(grid.title, QStringLiteral("2026"));
    ASSERT_EQ(grid.cells.size(), 12U);
    EXPECT_EQ(grid.cells[10].label, QStringLiteral("Nov"));
    EXPECT_EQ(grid.cells[10].count, QStringLiteral("3"));
    EXPECT_EQ(grid.cells[10].spoken, QStringLiteral("November 2026, 3 entries"));
    EXPECT_TRUE(grid.cells[10].isToday);
    EXPECT_TRUE(grid.cells[2].count.isEmpty());
    EXPECT_FALSE(grid.cells[11].isOffered);
    EXPECT_FALSE(grid.hasNext);
    EXPECT_TRUE(periodGrid(Span::month, day("2025-05-05"), today, {}, "en-US").hasNext);
}

/// A colleague further east is a day ahead: what is recorded there can be looked at here.
TEST(PeriodGrid, OffersDaysAfterTodayUpToTheLastEntry)
{
    const PeriodCounts counts{{20261120, 20261201}};
    EXPECT_EQ(counts.horizon(today), day("2026-12-01"));
    EXPECT_EQ(PeriodCounts{}.horizon(today), today);
    EXPECT_TRUE(periodGrid(Span::month, today, today, counts, "en-US").cells[11].isOffered);
    const auto days = periodGrid(Span::day, today, today, counts, "en-US");
    EXPECT_TRUE(days.hasNext);
    EXPECT_TRUE(days.cells[26].isOffered);
    EXPECT_FALSE(periodGrid(Span::day, day("2026-12-01"), today, counts, "en-US").cells[2].isOffered);
}

TEST(PeriodGrid, LaysDaysUnderTheirWeekdays)
{
    const auto grid = periodGrid(Span::day, today, today, someCounts(), "en-US");
    EXPECT_EQ(grid.heads.front(), QStringLiteral("Mon"));
    ASSERT_EQ(grid.cells.size(), 42U);
    EXPECT_EQ(grid.cells.front().label, QStringLiteral("26"));
    EXPECT_TRUE(grid.cells.front().isMuted);
    EXPECT_EQ(grid.cells[25].label, QStringLiteral("20"));
    EXPECT_EQ(grid.cells[25].count, QStringLiteral("2"));
    EXPECT_FALSE(grid.cells[26].isOffered);
}

TEST(PeriodGrid, ListsEveryWeekThatTouchesTheMonthAndTwelveYearsAPage)
{
    const auto weeks = periodGrid(Span::week, today, today, someCounts(), "en-US");
    EXPECT_EQ(weeks.cells.front().label, QStringLiteral("W44 · 26 Oct – 1 Nov 2026"));
    EXPECT_EQ(weeks.cells.back().label, QStringLiteral("W49 · 30 Nov – 6 Dec 2026"));
    const auto years = periodGrid(Span::year, today, today, someCounts(), "en-US");
    EXPECT_EQ(years.title, QStringLiteral("2016–2027"));
    EXPECT_EQ(years.cells.size(), 12U);
}

TEST(OpeningPeriod, IsThisMonthUnlessOnlyAnotherOneHasEntries)
{
    const auto november = Period::containing(Span::month, today);
    EXPECT_EQ(openingPeriod(someCounts(), today), november);
    EXPECT_EQ(openingPeriod(PeriodCounts{}, today), november);
    EXPECT_EQ(openingPeriod(PeriodCounts{{20260201, 20250101}}, today),
              Period::containing(Span::month, day("2026-02-01")));
    EXPECT_EQ(openingPeriod(PeriodCounts{{20261203}}, today), Period::containing(Span::month, day("2026-12-03")));
}

}

#include "LedgerCore/Domain/Calendar/Period.h"

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"

namespace {

using Span = Period::Span;

std::chrono::year_month_day day(std::string_view text)
{
    return LedgerDay::parse(text).value();
}

std::string days(const std::optional<Period>& period)
{
    if (!period)
        return "none";
    return LedgerDay::format(period->firstDay()) + ".." + LedgerDay::format(period->lastDay());
}

struct SpanCase {
    std::string_view name;
    Span span;
    std::string_view day;
    std::string_view previous;
    std::string_view held;
    std::string_view next;
};

void PrintTo(const SpanCase& each, std::ostream* out)
{
    *out << each.name;
}

class PeriodSpans : public testing::TestWithParam<SpanCase> {};

TEST_P(PeriodSpans, HoldTheDayAndMeetTheirNeighbours)
{
    const auto& [name, span, at, previous, held, next] = GetParam();
    const auto period = Period::containing(span, day(at));
    EXPECT_EQ(days(period), held);
    EXPECT_EQ(days(period.previous()), previous);
    EXPECT_EQ(days(period.next()), next);
    EXPECT_TRUE(period.contains(at));
}

INSTANTIATE_TEST_SUITE_P(
    Calendar, PeriodSpans,
    testing::Values(SpanCase{"LeapDay", Span::day, "2024-02-29", "2024-02-28..2024-02-28", "2024-02-29..2024-02-29",
                             "2024-03-01..2024-03-01"},
                    SpanCase{"LeapFebruary", Span::month, "2024-02-10", "2024-01-01..2024-01-31",
                             "2024-02-01..2024-02-29", "2024-03-01..2024-03-31"},
                    SpanCase{"CenturyFebruary", Span::month, "2100-02-10", "2100-01-01..2100-01-31",
                             "2100-02-01..2100-02-28", "2100-03-01..2100-03-31"},
                    SpanCase{"DecemberToJanuary", Span::month, "2026-12-31", "2026-11-01..2026-11-30",
                             "2026-12-01..2026-12-31", "2027-01-01..2027-01-31"},
                    SpanCase{"WeekAcrossTheYear", Span::week, "2027-01-01", "2026-12-21..2026-12-27",
                             "2026-12-28..2027-01-03", "2027-01-04..2027-01-10"},
                    SpanCase{"SundayEndsItsWeek", Span::week, "2026-11-22", "2026-11-09..2026-11-15",
                             "2026-11-16..2026-11-22", "2026-11-23..2026-11-29"},
                    SpanCase{"MondayBeginsItsWeek", Span::week, "2026-11-16", "2026-11-09..2026-11-15",
                             "2026-11-16..2026-11-22", "2026-11-23..2026-11-29"},
                    SpanCase{"LastQuarter", Span::quarter, "2026-11-20", "2026-07-01..2026-09-30",
                             "2026-10-01..2026-12-31", "2027-01-01..2027-03-31"},
                    SpanCase{"FirstQuarterOfALeapYear", Span::quarter, "2024-01-01", "2023-10-01..2023-12-31",
                             "2024-01-01..2024-03-31", "2024-04-01..2024-06-30"},
                    SpanCase{"Year", Span::year, "2026-06-15", "2025-01-01..2025-12-31", "2026-01-01..2026-12-31",
                             "2027-01-01..2027-12-31"},
                    SpanCase{"FirstYear", Span::year, "0001-05-05", "none", "0001-01-01..0001-12-31",
                             "0002-01-01..0002-12-31"},
                    SpanCase{"LastWeekIsCutOff", Span::week, "9999-12-31", "9999-12-20..9999-12-26",
                             "9999-12-27..9999-12-31", "none"},
                    SpanCase{"AllTime", Span::allTime, "2026-01-01", "none", "0001-01-01..9999-12-31", "none"}),
    [](const auto& each) { return std::string{each.param.name}; });

TEST(Period, DatesMoveByTheirOwnLength)
{
    const auto period = Period::between(day("2026-02-20"), day("2026-03-01")).value();
    EXPECT_EQ(days(period.next()), "2026-03-02..2026-03-11");
    EXPECT_EQ(days(period.previous()), "2026-02-10..2026-02-19");
    EXPECT_EQ(days(period.movedTo(day("2026-11-20"))), "2026-11-11..2026-11-20");
    EXPECT_EQ(days(period.movedTo(day("0001-01-05"))), "0001-01-01..0001-01-05");
    const auto early = Period::between(day("0001-01-05"), day("0001-01-20")).value();
    EXPECT_EQ(days(early.previous()), "0001-01-01..0001-01-04");
    EXPECT_FALSE(Period::between(day("2026-03-02"), day("2026-03-01")));
}

TEST(Period, HoldsItsFirstAndLastDayAndNoOther)
{
    const auto november = Period::containing(Span::month, day("2026-11-20"));
    EXPECT_TRUE(november.contains("2026-11-01"));
    EXPECT_TRUE(november.contains("2026-11-30"));
    EXPECT_FALSE(november.contains("2026-10-31"));
    EXPECT_FALSE(november.contains("2026-12-01"));
    EXPECT_FALSE(november.contains("2025-11-15"));
    EXPECT_TRUE(Period::allTime().contains("not a day"));
}

TEST(Period, NumbersWeeksByTheirThursday)
{
    EXPECT_EQ(isoWeek(day("2026-11-20")), (IsoWeek{2026, 47}));
    EXPECT_EQ(isoWeek(day("2027-01-01")), (IsoWeek{2026, 53}));
    EXPECT_EQ(isoWeek(day("2024-12-30")), (IsoWeek{2025, 1}));
    EXPECT_EQ(isoWeek(day("2021-01-03")), (IsoWeek{2020, 53}));
    EXPECT_EQ(isoWeek(day("2021-01-04")), (IsoWeek{2021, 1}));
}

}

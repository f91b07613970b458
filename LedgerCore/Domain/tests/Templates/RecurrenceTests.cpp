#include <gtest/gtest.h>

#include "LedgerCore/Domain/Templates/RecurrenceDays.h"
#include "LedgerCore/Domain/Templates/TemplateSchedule.h"

namespace {

using Days = std::vector<std::string>;

Recurrence each(int every, std::string_view unit, std::string firstDay, std::optional<std::string> lastDay = {})
{
    return {.unit = std::string{unit}, .every = every, .firstDay = std::move(firstDay), .lastDay = std::move(lastDay)};
}

struct DaysCase {
    std::string name;
    Recurrence recurrence;
    std::string first;
    std::string last;
    Days days;
};

void PrintTo(const DaysCase& row, std::ostream* out)
{
    *out << row.name;
}

class RecurrencesOfRows : public testing::TestWithParam<DaysCase> {};

TEST_P(RecurrencesOfRows, StandOnTheirDays)
{
    const auto& [name, recurrence, first, last, days] = GetParam();
    ASSERT_TRUE(RecurrenceDays::isSound(recurrence));
    EXPECT_EQ(RecurrenceDays::between(recurrence, first, last), days);
    for (const auto& day : days)
        EXPECT_TRUE(RecurrenceDays::occursOn(recurrence, day)) << day;
    if (!days.empty())
        EXPECT_EQ(RecurrenceDays::onOrAfter(recurrence, first), days.front());
}

INSTANTIATE_TEST_SUITE_P(
    Calendar, RecurrencesOfRows,
    testing::Values(DaysCase{"The31stIsBackAfterShorterMonths", each(1, "month", "2026-01-31"), "2026-02-01",
                             "2026-05-31", Days{"2026-02-28", "2026-03-31", "2026-04-30", "2026-05-31"}},
                    DaysCase{"The30thOfALeapFebruary", each(1, "month", "2027-12-30"), "2028-01-31", "2028-03-30",
                             Days{"2028-02-29", "2028-03-30"}},
                    DaysCase{"QuartersAcrossTheYear", each(3, "month", "2025-11-30"), "2025-01-01", "2026-08-30",
                             Days{"2025-11-30", "2026-02-28", "2026-05-30", "2026-08-30"}},
                    DaysCase{"LeapDayOfCommonYears", each(1, "year", "2024-02-29"), "2024-03-01", "2028-12-31",
                             Days{"2025-02-28", "2026-02-28", "2027-02-28", "2028-02-29"}},
                    DaysCase{"EveryFourthYearOverACenturyWithoutALeapDay", each(4, "year", "2096-02-29"), "2097-01-01",
                             "2105-01-01", Days{"2100-02-28", "2104-02-29"}},
                    DaysCase{"EverySecondWeekFarFromItsFirst", each(2, "week", "2020-01-06"), "2026-11-16",
                             "2026-12-20", Days{"2026-11-16", "2026-11-30", "2026-12-14"}},
                    DaysCase{"EveryTenthDay", each(10, "day", "2026-02-25"), "2026-02-26", "2026-03-17",
                             Days{"2026-03-07", "2026-03-17"}},
                    DaysCase{"TheLastDayCounts", each(1, "week", "2026-11-02", "2026-11-16"), "2026-11-09",
                             "2026-12-31", Days{"2026-11-09", "2026-11-16"}},
                    DaysCase{"NothingBeforeTheFirst", each(1, "day", "2026-11-02"), "2026-10-01", "2026-11-01", Days{}},
                    DaysCase{"NothingPastTheCalendar", each(1, "month", "9999-11-30"), "9999-12-01", "9999-12-31",
                             Days{"9999-12-30"}}),
    [](const auto& row) { return row.param.name; });

TEST(Recurrences, KnowDaysThatAreNotTheirs)
{
    const auto monthEnd = each(1, "month", "2026-01-31", "2026-06-30");
    for (const auto* day : {"2026-01-30", "2026-03-30", "2026-04-29", "2026-07-31", "2025-12-31"})
        EXPECT_FALSE(RecurrenceDays::occursOn(monthEnd, day)) << day;
    EXPECT_EQ(RecurrenceDays::onOrAfter(monthEnd, "2026-07-01"), std::nullopt);
    EXPECT_EQ(RecurrenceDays::onOrAfter(each(1, "year", "9999-05-01"), "9999-05-02"), std::nullopt);
}

EntryTemplate monthly(std::string firstDay, std::vector<SettledDay> settled = {})
{
    EntryTemplate kept;
    kept.id = "t-1_a";
    kept.recurrence = each(1, "month", std::move(firstDay));
    kept.settled = std::move(settled);
    return kept;
}

TEST(TemplateSchedule, ProposesWhatNobodyHasActedOnUpToToday)
{
    const auto kept = monthly("2026-08-31", {{"2026-09-30", "entry"}, {"2026-10-31", std::nullopt}});
    EXPECT_EQ(TemplateSchedule::openDays(kept, "2026-11-30"), (Days{"2026-08-31", "2026-11-30"}));
    EXPECT_EQ(TemplateSchedule::nextDay(kept, "2026-11-30"), "2026-08-31");
    EXPECT_EQ(TemplateSchedule::openDays(kept, "2026-08-30"), Days{});
    EXPECT_EQ(TemplateSchedule::nextDay(kept, "2026-08-30"), "2026-08-31");
}

TEST(TemplateSchedule, LetsGoOfWhatWasDueMoreThanAYearAgo)
{
    const auto open = TemplateSchedule::openDays(monthly("2015-01-15"), "2026-11-20");
    EXPECT_EQ(open.size(), 12u);
    EXPECT_EQ(open.front(), "2025-12-15");
    EXPECT_EQ(open.back(), "2026-11-15");
}

TEST(TemplateSchedule, LooksPastDaysThatWereSettledBeforeTheyCame)
{
    const auto ahead = monthly("2026-11-30", {{"2026-11-30", std::nullopt}, {"2026-12-30", "entry"}});
    EXPECT_EQ(TemplateSchedule::nextDay(ahead, "2026-11-20"), "2027-01-30");
    const auto last = monthly("9999-12-31", {{"9999-12-31", std::nullopt}});
    EXPECT_EQ(TemplateSchedule::nextDay(last, "2026-11-20"), std::nullopt) << "the calendar ends with it";
    EntryTemplate once;
    EXPECT_EQ(TemplateSchedule::nextDay(once, "2026-11-20"), std::nullopt) << "a template without a recurrence";
}

TEST(TemplateSchedule, TakesActionOnTheDaysOfAYearBackAndAhead)
{
    for (const auto* day : {"2025-11-19", "2026-11-20", "2027-11-21"})
        EXPECT_TRUE(TemplateSchedule::takesActionOn(day, "2026-11-20")) << day;
    for (const auto* day : {"2025-11-18", "2027-11-22", "9999-12-31"})
        EXPECT_FALSE(TemplateSchedule::takesActionOn(day, "2026-11-20")) << day;
}

TEST(TemplateOccurrence, IsReadFromItsKeyAndFromNoOther)
{
    const TemplateOccurrence occurrence{"t-1_a", "2026-11-30"};
    EXPECT_EQ(TemplateOccurrence::ofKey(occurrence.key()), occurrence);
    for (const auto* key : {"", "occurrence:", "occurrence:t", "occurrence::2026-11-30", "occurrence:t:2026-11-31",
                            "t:2026-11-30", "7b0c6f0e-0000-4000-8000-000000000000"})
        EXPECT_EQ(TemplateOccurrence::ofKey(key), std::nullopt) << key;
}

}

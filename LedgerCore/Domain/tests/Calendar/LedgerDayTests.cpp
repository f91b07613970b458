#include "LedgerCore/Domain/Calendar/LedgerDay.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "LedgerCore/Domain/testing/TimeZone.h"

namespace {

using namespace std::chrono;

struct DayText {
    const char* text;
    bool isDay;
};

class DayTexts : public testing::TestWithParam<DayText> {};

TEST_P(DayTexts, AreExactlyDaysThatExist)
{
    EXPECT_EQ(LedgerDay::isValid(GetParam().text), GetParam().isDay) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(
    Texts, DayTexts,
    testing::Values(DayText{"2026-11-20", true}, DayText{"2024-02-29", true}, DayText{"2023-02-29", false},
                    DayText{"1900-02-29", false}, DayText{"2000-02-29", true}, DayText{"0001-01-01", true},
                    DayText{"0000-01-01", false}, DayText{"9999-12-31", true}, DayText{"2026-13-01", false},
                    DayText{"2026-00-10", false}, DayText{"2026-04-31", false}, DayText{"2026-4-01", false},
                    DayText{"2026-04-1", false}, DayText{"2026/04/01", false}, DayText{"+026-04-01", false},
                    DayText{"2026-04-01 ", false}, DayText{" 2026-04-01", false}, DayText{"2026-04-0x", false},
                    DayText{"", false}));

RC_GTEST_PROP(LedgerDayProperties, EveryDayIsReadBackAndSortsAsText, ())
{
    const auto firstDay = sys_days{year{1} / 1 / 1};
    const auto count = (sys_days{year{9999} / 12 / 31} - firstDay).count();
    const auto left = firstDay + days{*rc::gen::inRange<days::rep>(0, count)};
    const auto right = left + days{1};
    const auto text = LedgerDay::format(year_month_day{left});
    RC_ASSERT(LedgerDay::parse(text) == year_month_day{left});
    RC_ASSERT(text < LedgerDay::format(year_month_day{right}));
}

struct Stamp {
    const char* text;
    const char* normal; // as we write it; null when it is no stamp
};

class Stamps : public testing::TestWithParam<Stamp> {};

TEST_P(Stamps, AreReadInUniversalTimeAndWrittenInMilliseconds)
{
    const auto instant = LedgerDay::parseStamp(GetParam().text);
    ASSERT_EQ(instant.has_value(), GetParam().normal != nullptr) << GetParam().text;
    if (instant)
        EXPECT_EQ(LedgerDay::stamp(*instant), GetParam().normal);
}

INSTANTIATE_TEST_SUITE_P(Texts, Stamps,
                         testing::Values(Stamp{"2026-11-20T09:41:07Z", "2026-11-20T09:41:07.000Z"},
                                         Stamp{"2026-11-20T09:41:07.1Z", "2026-11-20T09:41:07.100Z"},
                                         Stamp{"2026-11-20T09:41:07.1259Z", "2026-11-20T09:41:07.125Z"},
                                         Stamp{"1969-12-31T23:59:59.999Z", "1969-12-31T23:59:59.999Z"},
                                         Stamp{"2026-12-31T23:59:60Z", "2027-01-01T00:00:00.000Z"},
                                         Stamp{"2026-11-20T24:00:00Z", nullptr}, Stamp{"2026-11-20T09:60:07Z", nullptr},
                                         Stamp{"2026-11-31T09:41:07Z", nullptr}, Stamp{"2026-11-20T09:41:07", nullptr},
                                         Stamp{"2026-11-20T09:41:07.Z", nullptr},
                                         Stamp{"2026-11-20T09:41:07+07:00", nullptr},
                                         Stamp{"2026-11-20 09:41:07Z", nullptr},
                                         Stamp{"2026-11-20T09:41:07Zx", nullptr}, Stamp{"", nullptr}));

TEST(LedgerDay, FallsOnTheDayOfTheMachinesOwnTimeZone)
{
    const auto instant = *LedgerDay::parseStamp("2026-11-20T18:30:00Z");
    {
        const TimeZone jakarta{"WIB-7"};
        EXPECT_EQ(LedgerDay::localGregorian().day(instant), "2026-11-21");
        EXPECT_EQ(LedgerDay::localGregorian().time(instant), "01:30");
    }
    const TimeZone newYork{"EST5"};
    EXPECT_EQ(LedgerDay::localGregorian().day(instant), "2026-11-20");
    EXPECT_EQ(LedgerDay::localGregorian().time(instant), "13:30");
}

}

#include "LedgerUI/Presentation/Period/DayTyping.h"

#include <gtest/gtest.h>

#include "LedgerCore/Domain/testing/SnapshotBuilder.h"

namespace {

/// Books that start on 1 July 2026, seen on 20 November 2026.
DayBounds bounds()
{
    FinancialSettings settings;
    settings.bookkeepingStartDate = "2026-07-01";
    return DayTyping::bounds(snapshot().settings(settings).build(), "2026-11-20");
}

struct TypedCase {
    std::string name;
    const char* text;
    std::string locale;
    const char* day; // null: no day
};

class DayTyped : public testing::TestWithParam<TypedCase> {};

}

TEST(DayTyping, IsBoundedByTheStartOfTheBooksAndTomorrow)
{
    EXPECT_TRUE(bounds().hold("2026-07-01"));
    EXPECT_TRUE(bounds().hold("2026-11-21"));
    EXPECT_EQ(DayTyping::whyNot("2026-06-30", bounds(), "en").toStdString(),
              "The books start on 1 July 2026. The date cannot be earlier.");
    EXPECT_EQ(DayTyping::whyNot("2026-11-22", bounds(), "en").toStdString(),
              "The date cannot be after 21 November 2026.");
    EXPECT_EQ(DayTyping::whyNot("2026-11-21", bounds(), "en").toStdString(), "");
    EXPECT_TRUE(DayTyping::bounds(snapshot().build(), "2026-11-20").hold("1999-01-01"));
}

TEST(DayTyping, MovesAcrossMonthsAndStopsAtItsBounds)
{
    EXPECT_EQ(DayTyping::moved("2026-10-31", 1, bounds()), "2026-11-01");
    EXPECT_EQ(DayTyping::moved("2026-11-20", 7, bounds()), "2026-11-21");
    EXPECT_EQ(DayTyping::moved("2026-07-03", -7, bounds()), "2026-07-01");
}

TEST_P(DayTyped, IsReadAsTheLanguageWritesDays)
{
    const auto& each = GetParam();
    const auto day = DayTyping::typed(QString::fromUtf8(each.text), "2026-11-20", bounds(), each.locale);
    EXPECT_EQ(day.value_or("none"), each.day ? each.day : "none");
}

INSTANTIATE_TEST_SUITE_P(Texts, DayTyped,
                         testing::Values(TypedCase{"Whole", "2026-11-05", "en", "2026-11-05"},
                                         TypedCase{"DayFirst", "5/11/2026", "id", "2026-11-05"},
                                         TypedCase{"ShortYear", "05.11.26", "vi", "2026-11-05"},
                                         TypedCase{"Chinese", "2026年11月5日", "zh", "2026-11-05"},
                                         TypedCase{"ChineseWithoutYear", "11-5", "zh", "2026-11-05"},
                                         TypedCase{"WithoutYear", "5 11", "en", "2026-11-05"},
                                         TypedCase{"WithoutYearBeyondTheBooks", "5/12", "en", "2026-12-05"},
                                         TypedCase{"DayOfTheMonth", "5", "en", "2026-11-05"},
                                         TypedCase{"NoSuchDay", "31/11/2026", "en", nullptr},
                                         TypedCase{"Words", "yesterday", "en", nullptr},
                                         TypedCase{"Nothing", "", "en", nullptr}),
                         [](const auto& each) { return each.param.name; });

TEST(DayTyping, OffersOnlyTheDaysInsideTheBooks)
{
    const auto offered = [](std::string_view shown) {
        int count = 0;
        for (const auto& cell : DayTyping::month(shown, bounds(), "en").cells)
            count += cell.isOffered ? 1 : 0;
        return count;
    };
    // The page of July begins on Monday, 29 June and ends on Sunday, 2 August or later.
    EXPECT_GE(offered("2026-07-15"), 31);
    EXPECT_EQ(offered("2026-06-10"), 5);
    EXPECT_EQ(offered("2026-12-10"), 0);
}

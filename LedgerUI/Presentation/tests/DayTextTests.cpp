#include "LedgerUI/Presentation/Text/Values/DayText.h"

#include <ostream>
#include <string>

#include <gtest/gtest.h>

namespace {

struct DayCase {
    std::string name;
    std::string day;
    std::string locale;
    std::string shortDay;
    std::string longDay;
    std::string weekdayAndDay;
    std::string month;
};

void PrintTo(const DayCase& each, std::ostream* out)
{
    *out << each.day << ' ' << each.locale;
}

class DayTexts : public testing::TestWithParam<DayCase> {};

}

TEST_P(DayTexts, AreWrittenAsTheLanguageWritesThem)
{
    const auto& expected = GetParam();
    using namespace std::chrono;
    const year_month month{year{std::stoi(expected.day.substr(0, 4))},
                           std::chrono::month{static_cast<unsigned>(std::stoul(expected.day.substr(5, 2)))}};
    EXPECT_EQ(DayText::shortDay(expected.day, expected.locale).toStdString(), expected.shortDay);
    EXPECT_EQ(DayText::longDay(expected.day, expected.locale).toStdString(), expected.longDay);
    EXPECT_EQ(DayText::weekdayAndDay(expected.day, expected.locale).toStdString(), expected.weekdayAndDay);
    EXPECT_EQ(DayText::month(month, expected.locale).toStdString(), expected.month);
}

INSTANTIATE_TEST_SUITE_P(Languages, DayTexts,
                         testing::Values(DayCase{"English", "2026-11-19", "en-US", "19 Nov", "19 November 2026",
                                                 "Thu 19 November 2026", "November 2026"},
                                         DayCase{"EnglishWithoutLeadingZero", "2027-08-01", "en-US", "1 Aug",
                                                 "1 August 2027", "Sun 1 August 2027", "August 2027"},
                                         DayCase{"Indonesian", "2026-08-17", "id-ID", "17 Agu", "17 Agustus 2026",
                                                 "Sen, 17 Agustus 2026", "Agustus 2026"},
                                         DayCase{"Vietnamese", "2026-11-20", "vi-VN", "20/11", "20 tháng 11, 2026",
                                                 "T6, 20 tháng 11, 2026", "Tháng 11 năm 2026"},
                                         DayCase{"Chinese", "2026-03-07", "zh-CN", "3月7日", "2026年3月7日",
                                                 "2026年3月7日 周六", "2026年3月"},
                                         DayCase{"LeapDay", "2028-02-29", "zh-CN", "2月29日", "2028年2月29日",
                                                 "2028年2月29日 周二", "2028年2月"}),
                         [](const auto& each) { return std::string{each.param.name}; });

TEST(DayText, NamesTheYearWhereItIsNotThisOne)
{
    EXPECT_EQ(DayText::nearDay("2026-11-19", "2026-01-01", "vi-VN"), QStringLiteral("19/11"));
    EXPECT_EQ(DayText::nearDay("2025-12-31", "2026-01-01", "vi-VN"), QStringLiteral("31/12/2025"));
    EXPECT_EQ(DayText::nearDay("2027-01-01", "2026-12-31", "en-US"), QStringLiteral("1 Jan 2027"));
}

TEST(DayText, ShowsATextThatIsNoDayAsItStands)
{
    EXPECT_EQ(DayText::shortDay("2026-02-30", "en-US"), QStringLiteral("2026-02-30"));
    EXPECT_EQ(DayText::longDay("", "zh-CN"), QString{});
}

TEST(DayText, WritesTheTimeWithAPointInIndonesian)
{
    EXPECT_EQ(DayText::timeOfDay("14:32", "id-ID"), QStringLiteral("14.32"));
    EXPECT_EQ(DayText::timeOfDay("14:32", "vi-VN"), QStringLiteral("14:32"));
}

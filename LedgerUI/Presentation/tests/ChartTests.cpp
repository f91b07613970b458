#include <array>
#include <limits>

#include <gtest/gtest.h>

#include "LedgerUI/Presentation/Charts/ChartLayout.h"
#include "LedgerUI/Presentation/Charts/ChartLegend.h"
#include "LedgerUI/Presentation/Charts/ChartScale.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

struct ScaleCase {
    const char* name;
    std::int64_t lowest;
    std::int64_t highest;
    const char* currency;
    int mostTicks;
    const char* locale;
    std::vector<std::string> labels;
};

class ChartScaleOf : public testing::TestWithParam<ScaleCase> {};

std::vector<ChartSlot> months(std::size_t count)
{
    std::vector<ChartSlot> places;
    for (std::size_t month = 1; month <= count; ++month)
        places.push_back({QStringLiteral("M%1").arg(month), QStringLiteral("Month %1").arg(month)});
    return places;
}

/// Every letter ten units wide; 400 by 200 with a line of 10.
ChartLayouts::Room room(double width = 400)
{
    return {.rect = {0, 0, width, 200}, .lineHeight = 10, .widthOf = [](const QString& text) {
                return 10.0 * static_cast<double>(text.size());
            }};
}

ChartData incomeAndExpense()
{
    return {.currency = "USD",
            .places = months(2),
            .series = {{QStringLiteral("Income"), ChartMark::bar, ChartRole::income, {30'000, 0}},
                       {QStringLiteral("Expense"), ChartMark::bar, ChartRole::expense, {-10'000, -10'000}},
                       {QStringLiteral("Net"), ChartMark::line, ChartRole::net, {20'000, -10'000}}},
            .chosen = 1};
}

}

TEST_P(ChartScaleOf, StepsInRoundNumbersThatTheLanguageNames)
{
    const auto& each = GetParam();
    const auto scale = ChartScales::spanning(each.lowest, each.highest, each.currency, each.mostTicks);
    EXPECT_EQ(ChartScales::labels(scale, each.currency, each.locale), each.labels);
}

// Amounts are minor units: 100 to a dollar, one to a yen.
INSTANTIATE_TEST_SUITE_P(
    Cases, ChartScaleOf,
    testing::Values(
        ScaleCase{"Millions",
                  -33'000'000'000,
                  42'500'000'000,
                  "IDR",
                  5,
                  "en-US",
                  {"−200\u00a0M", "0", "200\u00a0M", "400\u00a0M"}},
        ScaleCase{"Juta",
                  -33'000'000'000,
                  42'500'000'000,
                  "IDR",
                  5,
                  "id-ID",
                  {"−200\u00a0jt", "0", "200\u00a0jt", "400\u00a0jt"}},
        ScaleCase{"Trieu",
                  0,
                  2'500'000,
                  "VND",
                  7,
                  "vi-VN",
                  {"0", "0,5\u00a0tr", "1,0\u00a0tr", "1,5\u00a0tr", "2,0\u00a0tr", "2,5\u00a0tr"}},
        ScaleCase{"Wan", 0, 12'000'000, "CNY", 4, "zh-CN", {"0", "5万", "10万"}},
        ScaleCase{"Yi", 0, 90'000'000'000, "JPY", 5, "zh-CN", {"0", "200亿", "400亿", "600亿", "800亿"}},
        ScaleCase{"SmallSums", 0, 950, "USD", 6, "en-US", {"0", "2", "4", "6", "8"}},
        ScaleCase{"NeverBelowOneUnit", 0, 250, "USD", 9, "en-US", {"0", "1", "2"}},
        ScaleCase{"OnlyNegative", -7'000'00, -100, "EUR", 5, "en-US", {"−6\u00a0k", "−4\u00a0k", "−2\u00a0k", "0"}},
        ScaleCase{"Nothing", 0, 0, "USD", 5, "en-US", {}}),
    [](const auto& each) { return std::string{each.param.name}; });

TEST(ChartScale, HoldsTheLargestSums)
{
    constexpr auto largest = std::int64_t{1} << 61;
    const auto scale = ChartScales::spanning(-largest, largest, "JPY", 5);
    EXPECT_EQ(scale.ticks(), (std::vector<std::int64_t>{-2'000'000'000'000'000'000, -1'000'000'000'000'000'000, 0,
                                                        1'000'000'000'000'000'000, 2'000'000'000'000'000'000}));
}

TEST(ChartLayout, StacksBarsFromZeroAndDrawsLinesThroughTheMiddles)
{
    const auto layout = ChartLayouts::layout(incomeAndExpense(), room(), "en-US");
    ASSERT_EQ(layout.bars.size(), 3U); // a value of zero has no bar
    const auto zero = std::ranges::find(layout.ticks, true, &ChartLayout::Tick::isZero);
    ASSERT_NE(zero, layout.ticks.end());
    EXPECT_DOUBLE_EQ(layout.bars[0].rect.bottom(), zero->y);
    EXPECT_DOUBLE_EQ(layout.bars[1].rect.top(), zero->y);
    EXPECT_NEAR(layout.bars[0].rect.height(), 3 * layout.bars[1].rect.height(), 1e-9);
    EXPECT_DOUBLE_EQ(layout.bars[1].rect.height(), layout.bars[2].rect.height());
    EXPECT_DOUBLE_EQ(layout.bars[0].rect.width(), 18);
    const auto& net = layout.lines.at(0).points;
    EXPECT_DOUBLE_EQ(net[0].x(), layout.bars[0].rect.center().x());
    EXPECT_DOUBLE_EQ(net[1].y(), layout.bars[2].rect.bottom());
    ASSERT_TRUE(layout.band.has_value());
    EXPECT_TRUE(layout.band->contains(layout.bars[2].rect));
    EXPECT_FALSE(layout.band->intersects(layout.bars[0].rect));
    for (const auto& bar : layout.bars)
        EXPECT_TRUE(layout.plot.contains(bar.rect));

    auto stacked = incomeAndExpense();
    stacked.series[2] = {QStringLiteral("Fees"), ChartMark::bar, ChartRole::other, {-5'000, 0}};
    const auto pile = ChartLayouts::layout(stacked, room(), "en-US");
    EXPECT_DOUBLE_EQ(pile.bars[2].rect.top(), pile.bars[1].rect.bottom());
}

TEST(ChartLayout, KeepsLabelsApartAndNamesTheChosenSlot)
{
    for (const std::size_t count : {1U, 5U, 12U, 60U, 365U}) {
        for (const std::size_t chosen : {std::size_t{0}, count / 2, count - 1}) {
            ChartData data{.currency = "USD", .places = months(count), .series = {}, .chosen = chosen};
            data.series.push_back(
                {QStringLiteral("Net"), ChartMark::line, ChartRole::net, std::vector<std::int64_t>(count, 1'000'000)});
            const auto layout = ChartLayouts::layout(data, room(), "en-US");
            EXPECT_EQ(std::ranges::count(layout.labels, true, &ChartLayout::Label::isChosen), 1) << count;
            for (std::size_t at = 0; at < layout.labels.size(); ++at) {
                EXPECT_TRUE(room().rect.contains(layout.labels[at].rect)) << count << ' ' << at;
                if (at > 0) {
                    EXPECT_LT(layout.labels[at - 1].rect.right(), layout.labels[at].rect.left()) << count << ' ' << at;
                }
            }
            for (std::size_t at = 1; at < layout.ticks.size(); ++at)
                EXPECT_GT(layout.ticks[at - 1].y - layout.ticks[at].y, 10) << "lines of text apart";
        }
    }
}

/// Readers who need their texts three times as large have a chart of the same height.
TEST(ChartLayout, KeepsLabelsApartHoweverLargeTheTextIs)
{
    for (const double lineHeight : {10.0, 14.0, 28.0, 42.0}) {
        for (const double height : {180.0, 236.0, 400.0}) {
            ChartLayouts::Room large{
                .rect = {0, 0, 500, height}, .lineHeight = lineHeight, .widthOf = [=](const auto& text) {
                    return lineHeight * static_cast<double>(text.size());
                }};
            auto data = incomeAndExpense();
            data.places = months(6);
            data.series = {{QStringLiteral("Net"), ChartMark::line, ChartRole::net, {0, 90'000, 0, -4'000, 0, 0}}};
            const auto layout = ChartLayouts::layout(data, large, "en-US");
            std::vector<QRectF> texts;
            for (const auto& tick : layout.ticks) {
                if (!tick.text.isEmpty())
                    texts.push_back(tick.label);
            }
            for (const auto& label : layout.labels)
                texts.push_back(label.rect);
            ASSERT_GE(texts.size(), 3U) << lineHeight << ' ' << height;
            for (std::size_t at = 0; at < texts.size(); ++at) {
                EXPECT_TRUE(large.rect.contains(texts[at])) << lineHeight << ' ' << height << ' ' << at;
                for (std::size_t before = 0; before < at; ++before)
                    EXPECT_FALSE(texts[before].intersects(texts[at])) << lineHeight << ' ' << height << ' ' << at;
            }
        }
    }
}

/// As narrow as the chart of the smallest window, with figures as long as they come in rupiah.
TEST(ChartLegend, WritesEveryFigureInsideItsRoomInEachLanguage)
{
    for (const std::string_view locale : {"zh-CN", "id-ID", "vi-VN", "en-US"}) {
        auto data = incomeAndExpense();
        data.currency = "IDR";
        data.places[0].name = DayText::month(std::chrono::year{2026} / std::chrono::November, locale);
        data.series[0].values[0] = 1'288'640'000'00;
        data.series[1].values[0] = -1'156'310'000'00;
        for (std::size_t at = 0; at < 3; ++at)
            data.series[at].name = wordIn(locale, reportWords(), std::array{"income", "expense", "net"}[at]);
        const ChartLayouts::Room narrow{.rect = {2, 2, 456, 200}, .lineHeight = 16, .widthOf = [](const QString& text) {
                                            return 7.0 * static_cast<double>(text.size());
                                        }};
        for (const QSizeF heading : {QSizeF{0, 0}, QSizeF{60, 20}, QSizeF{200, 20}}) {
            const auto height = ChartLegends::height(data, narrow, locale, heading);
            EXPECT_LT(height, narrow.rect.height() / 3) << locale;
            for (const auto slot : {std::optional<std::size_t>{0}, std::optional<std::size_t>{1}, {}}) {
                const auto parts = ChartLegends::parts(data, narrow, slot, locale, heading);
                ASSERT_EQ(parts.size(), slot ? 4U : 3U) << locale;
                const QRectF kept{2, 2, 456, height};
                for (std::size_t at = 0; at < parts.size(); ++at) {
                    const auto whole = parts[at].rect.united(parts[at].sample);
                    EXPECT_TRUE(kept.contains(whole)) << locale << ' ' << parts[at].text.toStdString();
                    EXPECT_FALSE(parts[at].sample.intersects(parts[at].rect)) << locale;
                    EXPECT_FALSE(whole.intersects({{2, 2}, heading})) << locale << ' ' << at;
                    for (std::size_t before = 0; before < at; ++before)
                        EXPECT_FALSE(parts[before].rect.intersects(whole)) << locale << ' ' << at;
                }
            }
        }
    }
}

/// The line of the heading is the first one of the legend, and no second one is kept where none is needed.
TEST(ChartLegend, TakesALineOfItsOwnOnlyWhereAFigureNeedsIt)
{
    const auto data = incomeAndExpense();
    EXPECT_EQ(ChartLegends::height(data, room(1'000), "en-US", {60, 20}), 20);
    EXPECT_EQ(ChartLegends::parts(data, room(1'000), 0, "en-US", {60, 20}).front().rect.height(), 20);
    EXPECT_EQ(ChartLegends::height(data, room(500), "en-US", {60, 20}), 20 + 10);
}

TEST(ChartLayout, FindsTheSlotUnderThePointer)
{
    const auto data = incomeAndExpense();
    const auto layout = ChartLayouts::layout(data, room(), "en-US");
    EXPECT_EQ(ChartLayouts::slotAt(layout, data, layout.plot.left()), 0U);
    EXPECT_EQ(ChartLayouts::slotAt(layout, data, layout.plot.center().x() + 1), 1U);
    EXPECT_EQ(ChartLayouts::slotAt(layout, data, layout.plot.right() - 0.01), 1U);
    EXPECT_EQ(ChartLayouts::slotAt(layout, data, layout.plot.left() - 1), std::nullopt);
    EXPECT_EQ(ChartLayouts::slotAt(layout, data, layout.plot.right()), std::nullopt);
    const ChartData empty{.currency = "USD", .places = {}, .series = {}, .chosen = {}};
    EXPECT_EQ(ChartLayouts::slotAt(ChartLayouts::layout(empty, room(), "en-US"), empty, 10), std::nullopt);
}

TEST(ChartLayout, ReadsASlotAloud)
{
    EXPECT_EQ(ChartLayouts::reading(incomeAndExpense(), 0, "en-US").toStdString(),
              "Month 1: Income USD 300.00, Expense USD −100.00, Net USD 200.00");
    EXPECT_EQ(ChartLayouts::reading(incomeAndExpense(), 1, "id-ID").toStdString(),
              "Month 2: Income USD 0,00, Expense USD −100,00, Net USD −100,00");
}

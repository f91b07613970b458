#include <gtest/gtest.h>

#include "LedgerUI/Presentation/Reports/Grids/ReportGridModel.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportMatrixGrids.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportOwnGrids.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportTrend.h"
#include "LedgerUI/Presentation/Reports/Sheets/ReportPart.h"
#include "LedgerUI/Presentation/tests/ReportGridSample.h"

using namespace ReportGridSample;

namespace {

ReportTrend trendOf(const ReportBooks& held, ReportQuery query)
{
    query.currency = "USD";
    query.today = today;
    auto trend = ReportTrends::trend(held, query, english);
    EXPECT_TRUE(trend.has_value());
    return trend.value_or(ReportTrend{});
}

}

TEST(ReportTrend, ShowsTwelveMonthsUpToTheChosenOne)
{
    const auto held = heldOf(books());
    const auto trend = trendOf(held, {.period = month(today)});
    ASSERT_EQ(trend.periods.size(), 12U);
    EXPECT_EQ(trend.periods.front(), month(2025y / 12 / 1));
    EXPECT_EQ(trend.chosen, 11U);
    EXPECT_EQ(trend.chart.series[0].values[10], 40'000);
    EXPECT_EQ(trend.chart.series[1].values[11], -88'200);
    EXPECT_EQ(trend.chart.series[2].values[11], 11'800);
    const auto rows = read(trend.table);
    ASSERT_EQ(rows.size(), 12U);
    EXPECT_EQ(rows[0], "November 2026 | +1,000.00 | −882.00 | +118.00 | 168.00");
    EXPECT_EQ(rows[1], "October 2026 | +400.00 | −250.00 | +150.00 | 50.00");
    EXPECT_EQ(rows[11], "December 2025 | 0.00 | 0.00 | 0.00 | −100.00");
    const auto year = trendOf(held, {.period = Period::containing(Span::year, today), .part = month(2026y / 10 / 1)});
    ASSERT_EQ(year.periods.size(), 12U);
    EXPECT_EQ(year.periods.back(), month(2026y / 12 / 1));
    EXPECT_EQ(year.chosen, 9U);
    EXPECT_EQ(year.of, QStringLiteral("October 2026"));
}

TEST(ReportTrend, FoldsCategoriesUnderTheirParentsLargestFirst)
{
    const auto held = heldOf(books());
    const auto trend = trendOf(held, {.period = month(today)});
    EXPECT_EQ(read(trend.categories),
              (Texts{"Wages | 600.00 | 68.0 % | new | new", "Premises | 280.00 | 31.7 % | +12.0 % | +180.0 %",
                     "Rent | 250.00 | 28.3 % | +25.0 % | +150.0 %", "Premises | 30.00 | 3.4 % | new | new",
                     "Power | 0.00 | – | −100.0 % | –", "Fees | 1.00 | 0.1 % | new | new",
                     "Stamps | 1.00 | 0.1 % | new | new", "Total expense | 882.00 | 100.0 % | +252.8 % | +782.0 %"}));
    const auto income = trendOf(held, {.period = month(today), .side = Movement::income});
    EXPECT_EQ(read(income.categories), (Texts{"Sales | 1,000.00 | 100.0 % | +150.0 % | new",
                                              "Total income | 1,000.00 | 100.0 % | +150.0 % | new"}));
}

/// A share opens what it is a part by, a change what it is compared with: figures that nothing else in the row shows.
TEST(ReportTrend, OpensWhatSharesAndChangesAreMadeOf)
{
    const auto held = heldOf(books());
    const auto grid = trendOf(held, {.period = month(today)}).categories;
    const auto behind = [&](std::size_t row, std::size_t column) {
        const auto& backing = grid.rows[row].cells[column].backing;
        std::int64_t sum = 0;
        if (!backing)
            return std::string{"nothing"};
        for (const auto& leg : held.book->legs(backing->figure, ReportRanges::of(backing->period)))
            sum += leg.amountMinor;
        return std::to_string(sum);
    };
    const auto opened = [&](std::size_t row) { return Texts{behind(row, 2), behind(row, 3), behind(row, 4)}; };
    EXPECT_EQ(opened(0), (Texts{"-60000", "-60000", "-60000"})) << "wages are new: they are all there is to see";
    EXPECT_EQ(opened(1), (Texts{"-28000", "-25000", "-10000"})) << "premises with its children";
    EXPECT_EQ(opened(4), (Texts{"0", "-5000", "0"}));
    EXPECT_EQ(opened(7), (Texts{"-88200", "-25000", "-10000"})) << "the total";
    EXPECT_EQ(grid.rows[1].cells[3].spoken.toStdString(), "+12.0 %, against 250.00 US dollar in October 2026");
    const auto all = trendOf(held, {.period = Period::allTime()}).categories;
    EXPECT_EQ(all.rows.front().cells[3].backing, std::nullopt) << "all time is compared with nothing";
}

/// In a file the rows without a parent add up to the total, and those with one to their parent.
TEST(ReportTrend, TellsPartsFromWholesInFilesAndWhatANarrowTableLeavesOut)
{
    const auto held = heldOf(books());
    const auto grid = trendOf(held, {.period = month(today)}).categories;
    const auto lines = QString::fromStdString(ReportGrids::csvText(grid)).split(QStringLiteral("\r\n"));
    EXPECT_TRUE(lines[0].contains(QStringLiteral("\"Category\",\"Part of\",\"Currency\",\"Amount\"")))
        << lines[0].toStdString();
    EXPECT_TRUE(lines[2].contains(QStringLiteral("\"Premises\",\"\",\"USD\",\"280.00\""))) << lines[2].toStdString();
    EXPECT_TRUE(lines[3].contains(QStringLiteral("\"Rent\",\"Premises\",\"USD\",\"250.00\"")))
        << lines[3].toStdString();
    EXPECT_TRUE(ReportGrids::spreadsheetText(grid, {2}).contains(QStringLiteral("Rent\tPremises\tUSD\t250.00\t")));
    ReportGridModel model;
    model.present(grid);
    EXPECT_EQ(model.index(1, 0).data(Qt::ToolTipRole).toString().toStdString(),
              "Premises\nvs. previous: +12.0 %, against 250.00 US dollar in October 2026\n"
              "vs. last year: +180.0 %, against 100.00 US dollar in November 2025");
}

TEST(ReportTrend, NamesPeriodsUnderTheAxisAsTheLanguageDoesWithTheYearWhereTheyComeTwice)
{
    const auto held = heldOf(books());
    const auto labels = [&](ReportQuery query, std::string_view locale = english) {
        query.currency = "USD";
        query.today = today;
        const auto places = ReportTrends::trend(held, query, locale).value_or(ReportTrend{}).chart.places;
        return Texts{places.front().label.toStdString(), places.back().label.toStdString()};
    };
    EXPECT_EQ(labels({.period = month(today)}), (Texts{"Dec", "Nov"}));
    EXPECT_EQ(labels({.period = Period::allTime(), .grain = Span::month}), (Texts{"Nov 2025", "Nov 2026"}));
    EXPECT_EQ(labels({.period = month(today), .grain = Span::quarter}), (Texts{"Q1 2024", "Q4 2026"}));
    const ReportQuery byDay{.period = month(today), .grain = Span::day};
    const ReportQuery byMonth{.period = Period::allTime(), .grain = Span::month};
    const ReportQuery byQuarter{.period = Period::containing(Span::year, today), .grain = Span::quarter};
    EXPECT_EQ(labels(byDay), (Texts{"1 Nov", "30 Nov"}));
    EXPECT_EQ(labels(byDay, "zh-CN"), (Texts{"11月1日", "11月30日"}));
    EXPECT_EQ(labels(byDay, "vi-VN"), (Texts{"1/11", "30/11"}));
    EXPECT_EQ(labels(byMonth, "zh-CN").back(), "2026年11月");
    EXPECT_EQ(labels(byMonth, "id-ID").back(), "Nov 2026");
    EXPECT_EQ(labels(byMonth, "vi-VN").back(), "11/2026");
    EXPECT_EQ(labels(byQuarter, "id-ID"), (Texts{"K1", "K4"}));
}

TEST(ReportTrend, OffersNoGrainOfMorePeriodsThanAChartShows)
{
    const auto held = heldOf(books());
    const auto grains = [&](int days) { return trendOf(held, {.period = between(2026y / 1 / 1, days)}).grains; };
    EXPECT_EQ(grains(120).front(), Span::day);
    EXPECT_EQ(grains(121).front(), Span::week);
    EXPECT_EQ(grains(121).size(), 4U);
    EXPECT_EQ(grains(40'000), std::vector{Span::year}) << "years are always on offer";
    const auto grainFor = [&](int days) { return ReportTrends::grainFor(between(2020y / 1 / 1, days), held, today); };
    EXPECT_EQ((std::vector{grainFor(31), grainFor(32), grainFor(120), grainFor(121), grainFor(1100), grainFor(1101),
                           grainFor(3660), grainFor(3661)}),
              (std::vector{Span::day, Span::week, Span::week, Span::month, Span::month, Span::quarter, Span::quarter,
                           Span::year}));
    EXPECT_EQ(ReportTrends::grainFor(Period::allTime(), held, today), Span::month) << "from the first entry to today";
    EXPECT_EQ(trendOf(held, {.period = month(today), .grain = Span::week}).grain, Span::week);
    EXPECT_EQ(trendOf(held, {.period = between(2020y / 1 / 1, 2000), .grain = Span::day}).grain, Span::quarter)
        << "one that is not on offer gives way";
}

TEST(ReportTrend, DividesAPeriodIntoWholeParts)
{
    const auto held = heldOf(books());
    const auto parts = [&](const Period& period, Span grain) {
        return ReportTrends::periodsOf(period, grain, held, today);
    };
    EXPECT_EQ(parts(between(2026y / 1 / 15, 65), Span::month),
              (std::vector{month(2026y / 1 / 1), month(2026y / 2 / 1), month(2026y / 3 / 1)}));
    const auto quarters = parts(between(2026y / 1 / 15, 65), Span::quarter);
    ASSERT_EQ(quarters.size(), 12U) << "a single one is shown with those before it";
    EXPECT_EQ(quarters.back(), Period::containing(Span::quarter, 2026y / 2 / 1));
    EXPECT_EQ(quarters.front(), Period::containing(Span::quarter, 2023y / 5 / 1));
    const auto all = parts(Period::allTime(), Span::month);
    EXPECT_EQ(all.size(), 13U);
    EXPECT_EQ(all.front(), month(2025y / 11 / 10));
}

TEST(ReportTrend, ComparesWithTheSameTimeAYearBefore)
{
    EXPECT_EQ(ReportTrends::yearBefore(month(2024y / 2 / 1)), month(2023y / 2 / 1));
    EXPECT_EQ(ReportTrends::yearBefore(Period::containing(Span::day, 2024y / 2 / 29)),
              Period::containing(Span::day, 2023y / 2 / 28));
    EXPECT_EQ(ReportTrends::yearBefore(Period::containing(Span::week, today))->firstDay(), 2025y / 11 / 17)
        << "a Monday as well";
    EXPECT_EQ(ReportTrends::yearBefore(between(2024y / 2 / 20, 10)), Period::between(2023y / 2 / 20, 2023y / 2 / 28));
    EXPECT_EQ(ReportTrends::yearBefore(Period::allTime()), std::nullopt);
    const auto change = [](std::int64_t before, std::int64_t now) {
        return ReportTrends::changeText(before, now, english).replace(QChar::Nbsp, QLatin1Char{' '}).toStdString();
    };
    EXPECT_EQ((Texts{change(0, 0), change(0, 5), change(100, 0), change(200, 199), change(1000, 1000)}),
              (Texts{"–", "new", "−100.0 %", "−0.5 %", "0.0 %"}));
    EXPECT_EQ((Texts{change(2000, 2001), change(2001, 2002), change(1, 101), change(-100, 10'000'000)}),
              (Texts{"+0.1 %", "0.0 %", "≫", "≫"}));
    EXPECT_EQ(change(1000, 100'998), "+9999.8 %");
}

TEST(ReportMatrix, TellsWhatMovedEachAccountAndWhatWasThereAtTheEndOfMonths)
{
    const auto held = heldOf(books());
    const auto grids =
        ReportMatrixGrids::of(held, {.period = month(today), .currency = "USD", .today = today}, english);
    ASSERT_TRUE(grids.has_value());
    EXPECT_EQ(read(grids->movements),
              (Texts{"Company accounts |  |  |  |  | ", "bank | 50.00 | +1,000.00 | −852.00 | −70.00 | 128.00",
                     "cash | 0.00 | – | −30.00 | +70.00 | 40.00", "Total | 50.00 | +1,000.00 | −882.00 | – | 168.00"}));
    EXPECT_EQ(read(grids->monthEnds), (Texts{"Company accounts |  |  |  |  |  |  | ",
                                             "bank | −100.00 | −100.00 | −100.00 | −100.00 | 50.00 | 128.00 | ",
                                             "cash | 0.00 | 0.00 | 0.00 | 0.00 | 0.00 | 40.00 | ",
                                             "Total | −100.00 | −100.00 | −100.00 | −100.00 | 50.00 | 168.00 | "}));
    const auto heads = [&](const Period& period) {
        const auto& columns =
            ReportMatrixGrids::of(held, {.period = period, .currency = "USD", .today = today}, english)
                .value_or(ReportMatrixGrids{})
                .monthEnds.columns;
        return Texts{columns.at(1).head.toStdString(), columns.at(6).head.toStdString()};
    };
    EXPECT_EQ(heads(month(today)), (Texts{"Jun", "Nov"}));
    EXPECT_EQ(heads(month(2026y / 2 / 1)), (Texts{"Sep 2025", "Feb 2026"})) << "the months of two years";
}

/// Where time has no end a balance opens all entries, not those up to the last day that a calendar knows.
TEST(ReportSheet, OpensTheBalancesOfAllTimeWithoutAnEnd)
{
    const auto held = std::make_shared<const ReportBooks>(books().share());
    for (const auto part : {ReportPart::overview, ReportPart::matrix, ReportPart::summary}) {
        const auto sheet = reportSheet(
            held, {.report = part, .period = Period::allTime(), .currency = "USD", .today = today}, english);
        const auto& grid = *ReportParts::tables(sheet, part).front();
        std::size_t opened = 0;
        for (const auto& row : grid.rows) {
            const auto column = [&](const char* id) {
                const auto found = std::ranges::find(grid.columns, id, &ReportGridColumn::id);
                return row.cells[static_cast<std::size_t>(found - grid.columns.begin())];
            };
            if (row.level == ReportGridRow::Level::heading)
                continue;
            EXPECT_FALSE(column("opening").backing.has_value()) << grid.id << ": nothing was there before all time";
            ASSERT_TRUE(column("closing").backing.has_value()) << grid.id;
            EXPECT_EQ(column("closing").backing->period, Period::allTime()) << grid.id;
            ++opened;
        }
        EXPECT_GE(opened, 2U) << grid.id;
    }
}

TEST(ReportOwn, ShowsEachOwnAccountAndTheLatestEntries)
{
    const auto held = heldOf(books());
    const auto grids = ReportOwnGrids::of(held, {.period = month(today), .currency = "USD", .today = today}, english);
    ASSERT_TRUE(grids.has_value());
    EXPECT_EQ(read(grids->accounts), (Texts{"cash | IDR | 0 | 0 | +9,000 | 0 | 0 | 9,000",
                                            "bank | USD | 50.00 | −70.00 | +1,000.00 | −852.00 | 0.00 | 128.00",
                                            "cash | USD | 0.00 | +70.00 | 0.00 | −30.00 | 0.00 | 40.00"}));
    EXPECT_EQ(read(grids->latest),
              (Texts{"10 Nov | Sales | IDR | +9,000", "9 Nov | Transfers | USD | −70.00", "8 Nov | Fees | USD | −1.00",
                     "7 Nov | Stamps | USD | −1.00", "6 Nov | Premises | USD | −30.00", "5 Nov | Wages | USD | −600.00",
                     "3 Nov | Premises › Rent | USD | −250.00", "2 Nov | Sales | USD | +1,000.00"}));
    const auto later = ReportOwnGrids::of(
        held, {.period = month(today), .currency = "USD", .today = today + std::chrono::years{1}}, english);
    ASSERT_TRUE(later.has_value());
    EXPECT_EQ(read(later->latest).front(), "10 Nov 2026 | Sales | IDR | +9,000") << "a day of another year";
}

/// Every figure and text of a copied row stands in a column of its own, so that a spreadsheet can go on with it.
TEST(ReportOwn, IsCopiedWithItsCurrenciesDaysAndNotes)
{
    LedgerTransaction noted;
    noted.id = "n9";
    noted.kind = EntryKind::expense;
    noted.date = "2026-11-11";
    noted.createdAt = "2026-11-11T03:00:00Z";
    noted.memberID = "m1";
    noted.categoryID = "fees";
    noted.note = "For the\nnew desk";
    noted.legs = {{"bank", "USD", -200}};
    const auto sheet = reportSheet(
        std::make_shared<const ReportBooks>(books().entry(noted).share()),
        {.report = ReportPart::summary, .period = month(today), .currency = "USD", .today = today}, english);
    const auto lines = [](const ReportGrid& grid) {
        Texts all;
        for (const auto& line : ReportGrids::spreadsheetText(grid, {0}).split(QLatin1Char('\n')))
            all.push_back(line.toStdString());
        return all;
    };
    EXPECT_EQ(lines(sheet.own.latest),
              (Texts{"Date\tEntry\tNote\tCurrency\tAmount", "2026-11-11\tFees\tFor the new desk\tUSD\t-2.00", ""}));
    EXPECT_EQ(lines(sheet.own.accounts).at(1).substr(0, 9), "cash\tIDR\t");
    EXPECT_EQ(lines(sheet.largestExpenses),
              (Texts{"Category\tCurrency\tAmount\tShare", "Wages\tUSD\t600.00\t67.9 %", ""}));
}

TEST(ReportSheet, WorksOutTheReportThatIsAskedForAndNoOther)
{
    const auto held = std::make_shared<const ReportBooks>(books().share());
    for (const auto asked : ReportParts::all) {
        const auto sheet =
            reportSheet(held, {.report = asked, .period = month(today), .currency = "USD", .today = today}, english);
        ASSERT_FALSE(sheet.failure.has_value());
        for (const auto part : ReportParts::all)
            EXPECT_EQ(ReportParts::tables(sheet, part).empty(), part != asked)
                << ReportParts::idOf(part) << " of " << ReportParts::idOf(asked);
    }
    const auto own = reportSheet(
        held, {.report = ReportPart::summary, .period = month(today), .currency = "USD", .today = today}, english);
    EXPECT_FALSE(own.own.accounts.rows.empty());
    EXPECT_FALSE(own.largestExpenses.rows.empty());
}

TEST(ReportSheet, GoesOnWithoutAccountsThatAreNotSeenAnyMore)
{
    const auto held = std::make_shared<const ReportBooks>(books().share());
    const auto of = [&](std::set<std::string, std::less<>> accountIDs) {
        return reportSheet(
            held, {.period = month(today), .currency = "USD", .accountIDs = std::move(accountIDs), .today = today},
            english);
    };
    const auto both = of({"cash", "gone"});
    EXPECT_EQ(both.lostAccounts, 1U);
    EXPECT_EQ(read(both.currencies), read(of({"cash"}).currencies));
    const auto none = of({"gone", "lost"});
    EXPECT_EQ(none.lostAccounts, 2U);
    EXPECT_EQ(none.query.accountIDs, std::nullopt) << "it says of itself that it is of all accounts, as it is";
    EXPECT_EQ(read(none.currencies), read(of({"bank", "cash"}).currencies));
    EXPECT_EQ(of({"bank", "cash"}).lostAccounts, 0U);
}

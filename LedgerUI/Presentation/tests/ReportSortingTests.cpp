#include <gtest/gtest.h>

#include "LedgerUI/Presentation/Reports/Grids/FundMovementGrids.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportPeriodGrid.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportSorting.h"
#include "LedgerUI/Presentation/Reports/Sheets/ReportPart.h"
#include "LedgerUI/Presentation/tests/ReportGridSample.h"

using namespace ReportGridSample;

namespace {

constexpr auto up = ReportSort::Direction::ascending;
constexpr auto down = ReportSort::Direction::descending;

ReportSheet sortedSheet(ReportPart part, ReportSorts sorts, std::string locale = english)
{
    return reportSheet(
        std::make_shared<const ReportBooks>(books().share()),
        {.report = part, .period = month(today), .currency = "USD", .today = today, .sorts = std::move(sorts)},
        std::move(locale));
}

/// Money that goes to and fro between two accounts.
SnapshotBuilder movedOften()
{
    auto often = books();
    for (const int at : {1, 2, 3})
        often.transfer("there" + std::to_string(at), "2026-11-1" + std::to_string(at), "bank", "cash", "USD", 500 * at)
            .transfer("back" + std::to_string(at), "2026-11-1" + std::to_string(at), "cash", "bank", "USD", 900 / at);
    return often;
}

Texts namesOf(const ReportGrid& grid)
{
    Texts names;
    for (const auto& row : grid.rows)
        names.push_back(row.cells.front().text.toStdString());
    return names;
}

}

/// Figures by value, not by their texts; parts below what they belong to; what has no value last either way.
TEST(ReportSorting, SortsByValueAndLeavesPartsAndTotalsAtTheirPlaces)
{
    const auto sorted = [](const char* column, ReportSort::Direction direction) {
        return sortedSheet(ReportPart::income, {{"categories", {column, direction}}}).trend.categories;
    };
    EXPECT_EQ(namesOf(sorted("amount", up)),
              (Texts{"Fees", "Stamps", "Premises", "Power", "Premises", "Rent", "Wages", "Total expense"}));
    EXPECT_EQ(namesOf(sorted("category", down)),
              (Texts{"Wages", "Stamps", "Premises", "Rent", "Premises", "Power", "Fees", "Total expense"}));
    const Texts changed{"Premises", "Rent", "Power", "Premises", "Wages", "Fees", "Stamps", "Total expense"};
    EXPECT_EQ(namesOf(sorted("change.before", down)), changed) << "+25.0 %, −100.0 % and new";
    EXPECT_EQ(sorted("change.before", up).rows.at(4).cells.front().text, QStringLiteral("Wages")) << "new ones last";
    EXPECT_EQ(namesOf(sorted("gone", up)), namesOf(sortedSheet(ReportPart::income, {}).trend.categories));
    const auto lines = QString::fromStdString(ReportGrids::csvText(sorted("amount", up))).split(QStringLiteral("\r\n"));
    EXPECT_TRUE(lines[4].startsWith(QStringLiteral("\"Power\",\"Premises\""))) << lines[4].toStdString();
    const auto matrix = sortedSheet(ReportPart::matrix, {{"accounts", {"closing", up}}}).matrix.movements;
    EXPECT_EQ(namesOf(matrix), (Texts{"Company accounts", "cash", "bank", "Total"}));
    const auto periods = sortedSheet(ReportPart::income, {{"periods", {"period", up}}}, "vi-VN").trend.table;
    EXPECT_EQ(periods.rows.front().id, ReportPeriodGrids::idOf(month(2025y / 12 / 1))) << "by time in every language";
}

TEST(ReportSorting, KeepsTheFiguresOfEachCurrencyAmongThemselves)
{
    const auto own = sortedSheet(ReportPart::summary, {{"ownAccounts", {"closing", up}}}).own.accounts;
    EXPECT_EQ(read(own), (Texts{"cash | IDR | 0 | 0 | +9,000 | 0 | 0 | 9,000",
                                "cash | USD | 0.00 | +70.00 | 0.00 | −30.00 | 0.00 | 40.00",
                                "bank | USD | 50.00 | −70.00 | +1,000.00 | −852.00 | 0.00 | 128.00"}));
    const auto sheet = sortedSheet(ReportPart::overview, {{"currencies", {"closing", down}}});
    ASSERT_EQ(sheet.currencies.rows.size(), 2U);
    EXPECT_FALSE(ReportSorting::isOffered(sheet.currencies, 1)) << "one row of each currency";
    EXPECT_TRUE(ReportSorting::isOffered(sheet.currencies, 0));
    EXPECT_EQ(sheet.currencies.sort, std::nullopt);
}

TEST(ReportSorting, GoesFromAColumnToTheOtherWayAndBackToTheBooks)
{
    auto grid = sortedSheet(ReportPart::income, {}).trend.categories;
    const auto all = [](std::size_t) { return true; };
    const ReportSort largest{"amount", down};
    EXPECT_EQ(ReportSorting::pressed(grid, 1), largest);
    EXPECT_EQ(ReportSorting::turned(grid), std::nullopt);
    EXPECT_EQ(ReportSorting::next(grid, all), (ReportSort{"category", up}));
    grid.sort = largest;
    EXPECT_EQ(ReportSorting::pressed(grid, 1), (ReportSort{"amount", up}));
    EXPECT_EQ(ReportSorting::next(grid, [](std::size_t column) { return column > 2; }),
              (ReportSort{"change.before", down}));
    grid.sort = {"amount", up};
    EXPECT_EQ(ReportSorting::pressed(grid, 1), std::nullopt);
    grid.sort = {"change.lastYear", down};
    EXPECT_EQ(ReportSorting::next(grid, all), std::nullopt);
}

/// A page that shows some of the movements shows the first of the order that was asked for, not of the latest ones.
TEST(ReportSorting, SortsAllMovementsOfFundsBeforeItShowsTheFirst)
{
    const auto held = heldOf(books());
    ReportQuery query{.period = month(today), .currency = "USD", .today = today};
    EXPECT_EQ(FundMovementGrids::of(held, query, english, 1).list.rows.front().cells[3].text.toStdString(), "+70.00");
    query.sorts = {{"fundMovements", {"fund.out", down}}};
    const auto list = FundMovementGrids::of(held, query, english, 1).list;
    ASSERT_EQ(list.rows.size(), 1U);
    EXPECT_EQ(list.rows.front().cells[4].text.toStdString(), "−70.00");
    EXPECT_TRUE(list.isCut);
    query.accountIDs = {{"bank"}}; // so that there are balances
    for (const auto* column : {"day", "fund.movement", "account", "fund.in", "fund.out", "fund.balance"}) {
        for (const auto direction : {up, down}) {
            query.sorts = {{"fundMovements", {column, direction}}};
            auto whole = FundMovementGrids::of(heldOf(movedOften()), query, english, FundMovementGrids::all).list;
            ASSERT_EQ(whole.rows.size(), 7U);
            EXPECT_FALSE(whole.isCut);
            EXPECT_EQ(whole.sort, (ReportSort{column, direction}));
            auto first = FundMovementGrids::of(heldOf(movedOften()), query, english, 4).list;
            whole.rows.resize(4);
            EXPECT_EQ(first.rows, whole.rows) << column;
            auto again = whole;
            ReportSorting::apply(again, query.sorts, english);
            EXPECT_EQ(again.rows, whole.rows) << column << " by what its rows say";
        }
    }
    query.sorts = {{"fundMovements", {"fund.out", down}}};
    EXPECT_EQ(ReportSorting::pressed(FundMovementGrids::of(held, {.period = month(today), .currency = "USD"}, english,
                                                           FundMovementGrids::all)
                                         .list,
                                     4),
              (ReportSort{"fund.out", up}))
        << "what took the most comes first";
}

TEST(FundMovementGrids, TellWhatIsLeftOfAnIncomeToWhoMayNotRefundIt)
{
    LedgerTransaction refund;
    refund.id = "r1";
    refund.kind = EntryKind::refund;
    refund.date = "2026-11-12";
    refund.createdAt = "2026-11-12T03:00:00Z";
    refund.memberID = "m1";
    refund.originalTransactionID = "n1";
    refund.legs = {{"bank", "USD", -30'000}};
    const auto held = heldOf(books().permissions({"viewCompany"}).entry(refund));
    const ReportQuery query{.period = month(today), .currency = "USD", .today = today};
    const auto list = read(FundMovementGrids::of(held, query, english, FundMovementGrids::all).list);
    EXPECT_TRUE(std::ranges::any_of(list, [](const std::string& row) {
        return row.contains("of income on 2 Nov 2026, USD 700.00 still refundable");
    })) << testing::PrintToString(list);
}

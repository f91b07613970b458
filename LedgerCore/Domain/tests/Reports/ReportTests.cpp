#include "LedgerCore/Domain/Reports/ReportBook.h"

#include <map>

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"

namespace {

std::chrono::sys_days day(std::string_view text)
{
    return LedgerDay::parse(text).value();
}

LedgerTransaction& post(LedgerSnapshot& books, std::string id, std::string_view kind, std::string date,
                        std::vector<LedgerLeg> legs)
{
    for (const auto& leg : legs) {
        for (auto& account : books.accounts) {
            if (account.id == leg.accountID)
                account.balances[leg.currency] += leg.amountMinor;
        }
    }
    auto& entry = books.transactions.emplace_back();
    entry.id = std::move(id);
    entry.kind = kind;
    entry.date = std::move(date);
    entry.legs = std::move(legs);
    return entry;
}

Account account(std::string id, std::vector<std::string> currencies)
{
    Account made;
    made.id = std::move(id);
    made.currencies = std::move(currencies);
    return made;
}

Category category(std::string id, std::string kind, std::optional<std::string> parent)
{
    Category made;
    made.id = std::move(id);
    made.kind = std::move(kind);
    made.parentID = std::move(parent);
    return made;
}

/// Two months of a small company: bank and float in USD, an empty cash box, and yuan bought with dollars.
LedgerSnapshot company()
{
    LedgerSnapshot books;
    books.accounts = {account("bank", {"USD", "CNY"}), account("float", {"USD"}), account("cash", {"USD"})};
    books.categories = {category("sales", "income", {}), category("online", "income", "sales"),
                        category("office", "expense", {}), category("paper", "expense", "office")};
    post(books, "o1", "opening", "2026-01-01", {{"bank", "USD", 100000}});
    post(books, "i1", "income", "2026-01-10", {{"bank", "USD", 50000}}).categoryID = "online";
    post(books, "i2", "income", "2026-01-11", {{"bank", "USD", 7000}}).categoryID = "sales";
    post(books, "e1", "expense", "2026-01-12", {{"bank", "USD", -3000}}).categoryID = "paper";
    post(books, "t1", "transfer", "2026-01-31", {{"bank", "USD", -20000}, {"float", "USD", 20000}});
    post(books, "e2", "expense", "2026-02-01", {{"float", "USD", -1500}}).categoryID = "office";
    post(books, "f1", "refund", "2026-02-02", {{"bank", "USD", -10000}}).originalTransactionID = "i1";
    post(books, "f2", "refund", "2026-02-03", {{"bank", "USD", -600}}).externalReference = "card 7";
    post(books, "r1", "reversal", "2026-02-04", {{"bank", "USD", 3000}}).reversalOf = "e1";
    post(books, "x1", "exchange", "2026-02-05", {{"bank", "USD", -14000}, {"bank", "CNY", 100000}});
    post(books, "c1", "capital", "2026-02-06", {{"bank", "USD", 90000}});
    post(books, "d1", "dividend", "2026-02-07", {{"bank", "USD", -25000}});
    post(books, "r2", "reversal", "2026-02-08", {{"bank", "USD", 600}}).reversalOf = "f2";
    books.transactions[3].reversedBy = "r1";
    books.transactions[7].reversedBy = "r2";
    return books;
}

const std::vector<ReportRange> januaryAndFebruary{{day("2026-01-01"), day("2026-01-31")},
                                                  {day("2026-02-01"), day("2026-02-28")}};

TEST(FundMovements, HoldWhatWasNeitherEarnedNorSpentAndWhatWasTakenBack)
{
    const auto books = company();
    const auto book = ReportBook::create(books);
    ASSERT_TRUE(book);
    const auto february = book->fundMovements({.currency = "USD"}, januaryAndFebruary[1]);
    std::string legs;
    for (const auto& leg : february.legs)
        legs += books.transactions[leg.entry].id + "@" + books.accounts[leg.account].id + " " +
                std::to_string(leg.amountMinor) + "\n";
    EXPECT_EQ(legs, "f1@bank -10000\nf2@bank -600\nr1@bank 3000\nx1@bank -14000\nc1@bank 90000\nd1@bank -25000\n"
                    "r2@bank 600\n");
    EXPECT_EQ(february.sums, (std::vector<FundMovementSum>{{Movement::refund, 600, -10600, 3},
                                                           {Movement::exchange, 0, -14000, 1},
                                                           {Movement::capital, 90000, 0, 1},
                                                           {Movement::dividend, 0, -25000, 1}}));
    EXPECT_EQ(february.reversals.netMinor(), 3000) << "paper that was taken back";
    EXPECT_EQ(february.total, (FundMovementSum{Movement::other, 93600, -49600, 7}));
    const auto january = book->fundMovements({.currency = "USD", .accountIDs = {{"float"}}}, januaryAndFebruary[0]);
    ASSERT_EQ(january.legs.size(), 1U);
    EXPECT_EQ(january.sums.front(), (FundMovementSum{Movement::transfer, 20000, 0, 1}));
}

/// Each sum opens its entries by a figure, whose legs must be the same money.
TEST(FundMovements, AreWhatTheirFiguresFind)
{
    const auto books = company();
    const auto book = ReportBook::create(books);
    ASSERT_TRUE(book);
    const ReportRange all{day("2026-01-01"), day("2026-12-31")};
    const ReportScope scope{.currency = "USD"};
    const auto found = book->fundMovements(scope, all);
    const auto sumOf = [&](const ReportFigure& figure) {
        std::int64_t sum = 0;
        for (const auto& leg : book->legs(figure, all))
            sum += leg.amountMinor;
        return sum;
    };
    for (const auto& each : found.sums) {
        ReportFigure figure{.scope = scope, .movements = {each.movement}};
        EXPECT_EQ(sumOf(figure), each.netMinor()) << rawValue(each.movement);
        figure.direction = LegDirection::arriving;
        EXPECT_EQ(sumOf(figure), each.arrivedMinor) << rawValue(each.movement);
        figure.direction = LegDirection::leaving;
        EXPECT_EQ(sumOf(figure), each.leftMinor) << rawValue(each.movement);
    }
}

TEST(Report, AddsEachCategoryToTheUppermostAboveItHoweverTheyAreListed)
{
    LedgerSnapshot books;
    books.accounts = {account("bank", {"USD"})};
    books.categories = {category("toner", "expense", "paper"), category("paper", "expense", "office"),
                        category("office", "expense", {}),     category("office", "expense", "toner"),
                        category("hen", "expense", "egg"),     category("egg", "expense", "hen"),
                        category("lost", "expense", "gone")};
    for (const auto* id : {"toner", "office", "hen", "egg", "lost"})
        post(books, id, "expense", "2026-01-10", {{"bank", "USD", -100}}).categoryID = id;
    const auto report = ReportBook::create(books).value().report({"USD"}, januaryAndFebruary).value();
    std::map<std::string, std::int64_t> sums;
    for (const auto& line : report.periods[0].parentCategories)
        sums[line.categoryID] = line.netMinor();
    EXPECT_EQ(sums, (std::map<std::string, std::int64_t>{{"office", -200}, {"hen", -200}, {"lost", -100}}));
}

TEST(Report, TellsWhereTheMoneyOfEachPeriodCameFromAndWent)
{
    const auto books = company();
    const auto report = ReportBook::create(books).value().report({"USD"}, januaryAndFebruary).value();
    ASSERT_EQ(report.periods.size(), 2u);

    const auto& january = report.periods[0];
    EXPECT_EQ(january.openingMinor, 0);
    EXPECT_EQ(january.movements[Movement::opening].netMinor(), 100000);
    EXPECT_EQ(january.movements.incomeMinor(), 57000);
    EXPECT_EQ(january.movements.expenseMinor(), -3000);
    EXPECT_EQ(january.movements[Movement::transfer].netMinor(), 0);
    EXPECT_EQ(january.closingMinor, 154000);
    EXPECT_EQ(january.entryCount, 5u);

    const auto& february = report.periods[1];
    EXPECT_EQ(february.openingMinor, 154000);
    EXPECT_EQ(february.movements.incomeMinor(), -10000);
    EXPECT_EQ(february.movements.expenseMinor(), 1500);
    EXPECT_EQ(february.movements[Movement::expense], (MovementFigure{-1500, 3000}));
    EXPECT_EQ(february.movements[Movement::refund], (MovementFigure{-10600, 600}));
    EXPECT_EQ(february.movements[Movement::exchange].netMinor(), -14000);
    EXPECT_EQ(february.movements[Movement::capital].netMinor(), 90000);
    EXPECT_EQ(february.movements[Movement::dividend].netMinor(), -25000);
    EXPECT_EQ(february.movements.otherMinor(), 51000);
    EXPECT_EQ(february.closingMinor, 196500);
    EXPECT_EQ(february.entryCount, 8u);
}

struct LineCase {
    const char* name;
    std::size_t period;
    std::vector<ReportCategoryLine> categories;
    std::vector<ReportCategoryLine> parents;
};

class ReportCategories : public testing::TestWithParam<LineCase> {};

TEST_P(ReportCategories, StandUnderTheirParentsWithRefundsAndReversals)
{
    const auto books = company();
    const auto report = ReportBook::create(books).value().report({"USD"}, januaryAndFebruary).value();
    EXPECT_EQ(report.periods[GetParam().period].categories, GetParam().categories);
    EXPECT_EQ(report.periods[GetParam().period].parentCategories, GetParam().parents);
}

constexpr auto income = Movement::income;
constexpr auto expense = Movement::expense;

INSTANTIATE_TEST_SUITE_P(Months, ReportCategories,
                         testing::Values(LineCase{"January",
                                                  0,
                                                  {{"sales", income, 7000, 0, 0, 1},
                                                   {"online", income, 50000, 0, 0, 1},
                                                   {"paper", expense, -3000, 0, 0, 1}},
                                                  {{"sales", income, 57000, 0, 0, 2},
                                                   {"office", expense, -3000, 0, 0, 1}}},
                                         LineCase{"February",
                                                  1,
                                                  {{"online", income, 0, -10000, 0, 1},
                                                   {"", income, 0, -600, 600, 2},
                                                   {"office", expense, -1500, 0, 0, 1},
                                                   {"paper", expense, 0, 0, 3000, 1}},
                                                  {{"sales", income, 0, -10000, 0, 1},
                                                   {"", income, 0, -600, 600, 2},
                                                   {"office", expense, -1500, 0, 3000, 2}}}),
                         [](const auto& each) { return std::string{each.param.name}; });

TEST(Report, KeepsToTheAccountsAndTheCurrencyOfItsScope)
{
    const auto books = company();
    const auto book = ReportBook::create(books).value();
    const auto onFloat = book.report({"USD", {{"float"}}}, januaryAndFebruary).value();
    EXPECT_EQ(onFloat.periods[0].movements[Movement::transfer].netMinor(), 20000);
    EXPECT_EQ(onFloat.periods[1].closingMinor, 18500);
    const auto yuan = book.report({"CNY"}, januaryAndFebruary).value();
    EXPECT_EQ(yuan.periods[1].movements.netMinor(), 100000);
    EXPECT_EQ(yuan.periods[1].entryCount, 1u);
    EXPECT_EQ(book.report({"EUR"}, januaryAndFebruary).value().periods[1], (ReportPeriod{januaryAndFebruary[1]}));
    EXPECT_EQ(book.currencies(), (std::vector<std::string>{"CNY", "USD"}));
}

TEST(Report, LaysAccountsOutByPeriodAndMovement)
{
    const auto books = company();
    const auto matrix = ReportBook::create(books).value().matrix({"USD"}, januaryAndFebruary).value();
    ASSERT_EQ(matrix.rows.size(), 3u);
    const auto& bank = matrix.rows[0].cells;
    EXPECT_EQ(bank[0].closingMinor, 134000);
    EXPECT_EQ(bank[0].arrivedMinor, 157000);
    EXPECT_EQ(bank[0].leftMinor, -23000);
    EXPECT_EQ(bank[1].openingMinor, 134000);
    EXPECT_EQ(bank[1].movements.reversedMinor(), 3600);
    EXPECT_EQ(matrix.rows[1].cells[1].closingMinor, books.accounts[1].balance("USD"));
    EXPECT_EQ(matrix.rows[2].cells[1], ReportCell{});
    EXPECT_EQ(matrix.totals[1].closingMinor, 196500);
    EXPECT_EQ(matrix.totals[1].movements[Movement::transfer].netMinor(), 0);
    EXPECT_EQ(ReportBook::create(books).value().matrix({"CNY"}, januaryAndFebruary).value().rows.size(), 1u);
}

TEST(Report, GivesTheBalanceOfEveryDay)
{
    const auto books = company();
    const auto daily =
        ReportBook::create(books).value().dailyBalances({"USD"}, {day("2026-01-11"), day("2026-01-13")}).value();
    EXPECT_EQ(daily.closingMinor, (std::vector<std::int64_t>{157000, 154000, 154000}));
}

TEST(Report, RefusesRangesWithGapsAndBooksThatCannotBeSummed)
{
    auto books = company();
    const auto book = ReportBook::create(books).value();
    const std::vector<ReportRange> gap{{day("2026-01-01"), day("2026-01-30")}, {day("2026-02-01"), day("2026-02-28")}};
    EXPECT_EQ(book.report({"USD"}, gap).error(), ReportError::invalidRanges);
    EXPECT_EQ(book.matrix({"USD"}, {}).error(), ReportError::invalidRanges);
    EXPECT_EQ(book.dailyBalances({"USD"}, {day("2026-02-01"), day("2026-01-31")}).error(), ReportError::invalidRanges);

    post(books, "bad", "income", "2026-02-30", {{"bank", "USD", 1}});
    EXPECT_EQ(ReportBook::create(books).error(), ReportError::invalidDay);
    books.transactions.back().date = "2026-02-28";
    books.transactions.back().legs = {{"bank", "USD", std::numeric_limits<std::int64_t>::min()}};
    EXPECT_EQ(ReportBook::create(books).error(), ReportError::amountOverflow);
}

struct CutCase {
    const char* name;
    Period::Span span;
    const char* first;
    const char* last;
    std::vector<std::pair<const char*, const char*>> parts;
};

class ReportCut : public testing::TestWithParam<CutCase> {};

TEST_P(ReportCut, FollowsTheCalendarInsideTheWhole)
{
    const auto& given = GetParam();
    std::vector<ReportRange> expected;
    for (const auto& [first, last] : given.parts)
        expected.push_back({day(first), day(last)});
    EXPECT_EQ(ReportRanges::cut({day(given.first), day(given.last)}, given.span), expected);
}

INSTANTIATE_TEST_SUITE_P(
    Spans, ReportCut,
    testing::Values(CutCase{"Months",
                            Period::Span::month,
                            "2024-01-15",
                            "2024-03-01",
                            {{"2024-01-15", "2024-01-31"}, {"2024-02-01", "2024-02-29"}, {"2024-03-01", "2024-03-01"}}},
                    CutCase{"WeeksFromMonday",
                            Period::Span::week,
                            "2026-11-20",
                            "2026-11-24",
                            {{"2026-11-20", "2026-11-22"}, {"2026-11-23", "2026-11-24"}}},
                    CutCase{"Dates", Period::Span::dates, "2026-01-01", "2026-12-31", {{"2026-01-01", "2026-12-31"}}},
                    CutCase{"EndsBeforeItBegins", Period::Span::day, "2026-01-02", "2026-01-01", {}}),
    [](const auto& each) { return std::string{each.param.name}; });

}

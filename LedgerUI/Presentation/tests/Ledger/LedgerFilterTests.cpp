#include "LedgerUI/Presentation/Ledger/Listing/LedgerFilter.h"

#include <QStringList>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerFilterChoices.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerListing.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerNotice.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerSearch.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerSort.h"
#include "LedgerUI/Presentation/tests/LedgerSample.h"

namespace {

using Part = LedgerFilter::Part;
using Receipts = LedgerFilter::Receipts;

Period month(std::string_view day)
{
    return Period::containing(Period::Span::month, LedgerDay::parse(day).value());
}

struct FilterCase {
    std::string_view name;
    LedgerFilter filter;
    std::string_view shown;
};

void PrintTo(const FilterCase& each, std::ostream* out)
{
    *out << each.name;
}

class LedgerFilters : public testing::TestWithParam<FilterCase> {};

TEST_P(LedgerFilters, ShowWhatPassesThemNewestFirst)
{
    const auto book = bookOf(sampleLedger());
    EXPECT_EQ(idsOf(book, matching(book, GetParam().filter)), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    Parts, LedgerFilters,
    testing::Values(
        FilterCase{"Nothing", {}, "v1 e3 r1 x1 t1 e1 e2 i1 o1"},
        FilterCase{"Month", {.period = month("2026-10-05")}, "i1"},
        FilterCase{"TextIgnoresCaseAndDiacritics", {.text = "DIEN van"}, "e1"},
        FilterCase{"TextInAccount", {.text = "rizky"}, "t1"}, FilterCase{"TextInMember", {.text = "huong"}, "v1 e3 r1"},
        FilterCase{"TextInReference", {.text = "rf-77"}, "r1"},
        FilterCase{"TextInACategorysOtherLanguage", {.text = "sales (vi)"}, "i1"},
        FilterCase{"TextInTheParentCategory", {.text = "utilities"}, "v1 e3 e1 e2"},
        FilterCase{"TextInTheKindsName", {.text = "exchange"}, "x1"},
        FilterCase{"AmountAsShown", {.text = "4,385,200"}, "e2"},
        FilterCase{"AmountAsAnotherLanguageShowsIt", {.text = "4.385.200"}, "e2"},
        FilterCase{"AmountDigits", {.text = "43850"}, "e1"}, FilterCase{"AmountWithAMinus", {.text = "-438.50"}, "e1"},
        FilterCase{"AmountWithAPlus", {.text = "+2,500.00"}, "i1"},
        FilterCase{"EveryWordMustBeFound", {.text = "huong typed"}, "v1"},
        FilterCase{"KindsAddUp", {.kinds = {"income", "exchange"}}, "x1 i1"},
        FilterCase{"AccountOfEitherLeg", {.accountIDs = {"Rizky float"}}, "t1"},
        FilterCase{"ParentCategoryHoldsItsChildren", {.categoryIDs = {"utilities"}}, "v1 e3 e1 e2"},
        FilterCase{"ChildCategoryAlone", {.categoryIDs = {"power"}}, "v1 e3 e1"},
        FilterCase{"Currency", {.currencies = {"SGD", "IDR"}}, "x1 e2"},
        FilterCase{"AccountAndCurrencyMeetInOneLeg", {.accountIDs = {"Operating bank"}, .currencies = {"SGD"}}, ""},
        FilterCase{"WithReceipts", {.receipts = Receipts::attached}, "e3"},
        FilterCase{"InForce", {.standings = {"inForce"}}, "r1 x1 t1 e1 e2 i1 o1"},
        FilterCase{"StandingsAddUp", {.standings = {"reversed", "reversals"}}, "v1 e3"},
        FilterCase{"ReversedAlone", {.standings = {"reversed"}}, "e3"},
        FilterCase{"OfOnesOwnReversalsNoneByOthers", {.standings = {"ownByOthers"}}, ""},
        FilterCase{"Member", {.memberIDs = {"m2"}}, "v1 e3 r1"},
        FilterCase{"AmountsWhicheverWayWithBothBounds", {.amounts = {.least = 20'000, .most = 250'000}}, "r1 e1 i1"},
        FilterCase{"AmountsFrom", {.amounts = {.least = 1'000'001}}, "x1 e2"},
        FilterCase{"AmountsMeetCurrencyInOneLeg",
                   {.currencies = {"SGD"}, .amounts = {.least = 1'200'000, .most = 1'200'000}},
                   ""},
        FilterCase{"Day", {.text = "2026-11-02"}, "e1 e2"}, FilterCase{"DayOfAnyYear", {.text = "2/11"}, "e1 e2"},
        FilterCase{"DayAsWritten", {.text = "02.11.2026 listrik"}, "e2"},
        FilterCase{"MonthInTheSearch", {.text = "2026-10"}, "i1"},
        FilterCase{"OneOfSeveralDaysIsEnough", {.text = "31/10 2/11"}, "e1 e2 i1"},
        FilterCase{"SeveralDaysAndAWord", {.text = "31/10 9/11 cahaya"}, "i1"},
        FilterCase{"PartsNarrowEachOther",
                   {.period = month("2026-11-01"), .kinds = {"expense"}, .receipts = Receipts::missing},
                   "e1 e2"}),
    [](const auto& each) { return std::string{each.param.name}; });

TEST(LedgerFilter, TakesAmountsInTheUnitsOfEachCurrency)
{
    auto books = snapshot().account("bank", {"VND", "USD"}).grantAll();
    books.income("v", "2026-11-01", "bank", "VND", 150).income("u", "2026-11-01", "bank", "USD", 15'000);
    books.income("big", "2026-11-01", "bank", "VND", 15'000);
    const auto book = bookOf(books);
    EXPECT_EQ(idsOf(book, matching(book, {.amounts = {.least = 10'000, .most = 20'000}})), "v u");
    const auto texts = [&](LedgerFilter::Amounts amounts) {
        return partText(book, {.amounts = amounts}, Part::amounts).toStdString();
    };
    EXPECT_EQ(texts({.least = 10'000, .most = 20'050}), "Amount range: 100–200.50");
    EXPECT_EQ(texts({.most = 10'000}), "Amount range: up to 100");
    EXPECT_EQ(readAmountBound(QStringLiteral(" 1.200,5 "), "id-ID").value(), 120'050);
    ASSERT_TRUE(readAmountBound({}, "en-US").has_value()) << "an empty bound is none, not a mistake";
    EXPECT_FALSE(readAmountBound({}, "en-US")->has_value());
    EXPECT_FALSE(readAmountBound(QStringLiteral("-5"), "en-US").has_value());
    EXPECT_FALSE(readAmountBound(QStringLiteral("rent"), "en-US").has_value());
}

TEST(LedgerSearch, TellsDaysFromAmountsAndReferences)
{
    for (const auto* word : {"2026-02-29", "31/4", "2026-13", "4.385.200", "438.50", "1/2/3/4", "rf-77", "2026", "1.",
                             ".5", "2026-1-1-1", "99999-1"})
        EXPECT_FALSE(dayPattern(word, "en-US").has_value()) << word;
    EXPECT_EQ(dayPattern("29/2", "vi-VN"), (LedgerDayPattern{.ofEveryYear = 229}));
    EXPECT_EQ(dayPattern("2/29", "zh-CN"), (LedgerDayPattern{.ofEveryYear = 229}));
    EXPECT_EQ(dayPattern("2026/1/5", "id-ID"), (LedgerDayPattern{.first = 20260105, .last = 20260105}));
}

TEST(LedgerFilter, NamesThePartThatHidesTheMost)
{
    const auto book = bookOf(sampleLedger());
    const LedgerFilter filter{.period = month("2026-11-01"), .text = "rizky", .kinds = {"expense"}};
    ASSERT_TRUE(matching(book, filter).empty());
    EXPECT_EQ(blockingPart(book, filter), (LedgerBlockingPart{Part::text, 3}));
    EXPECT_EQ(blockingPart(book, {.text = "nobody"}), (LedgerBlockingPart{Part::text, 9}));
    EXPECT_EQ(blockingPart(book, {.text = "nobody", .kinds = {"nothing"}}), std::nullopt);
}

TEST(LedgerFilter, OffersOnlyWhatTheBookHolds)
{
    const auto book = bookOf(sampleLedger());
    const auto texts = [&](Part part) {
        QStringList result;
        for (const auto& choice : filterChoices(book, part))
            result << (choice.level == LedgerFilterChoice::Level::child ? QStringLiteral("- ") : QString{}) +
                          choice.text;
        return result.join(QStringLiteral(", ")).toStdString();
    };
    EXPECT_EQ(texts(Part::kinds), "Income, Expense, Transfer, Exchange, Refund, Reversal, Opening balance");
    EXPECT_EQ(texts(Part::categories), "Sales, Utilities, - Electricity");
    EXPECT_EQ(texts(Part::currencies), "IDR  Indonesian rupiah, USD  US dollar, SGD  Singapore dollar");
    const auto both = withChosen({}, Part::receipts, {"attached", "missing"});
    EXPECT_EQ(both, LedgerFilter{});
}

struct SortCase {
    std::string_view name;
    LedgerSort sort;
    std::string_view shown;
};

void PrintTo(const SortCase& each, std::ostream* out)
{
    *out << each.name;
}

class LedgerSorts : public testing::TestWithParam<SortCase> {};

TEST_P(LedgerSorts, KeepEqualEntriesNewestFirst)
{
    const auto book = bookOf(sampleLedger());
    EXPECT_EQ(idsOf(book, sorted(book, matching(book, {}), GetParam().sort)), GetParam().shown);
}

using Key = LedgerSort::Key;
constexpr auto up = LedgerSort::Direction::ascending;
constexpr auto down = LedgerSort::Direction::descending;
INSTANTIATE_TEST_SUITE_P(
    Keys, LedgerSorts,
    testing::Values(SortCase{"OldestFirst", {Key::date, up}, "o1 i1 e2 e1 t1 x1 r1 e3 v1"},
                    SortCase{"Entry", {Key::entry, up}, "x1 t1 o1 r1 v1 i1 e2 e3 e1"},
                    SortCase{"Account", {Key::account, down}, "x1 v1 e3 r1 t1 e1 e2 i1 o1"},
                    SortCase{"Member", {Key::member, up}, "x1 t1 e1 e2 i1 o1 v1 e3 r1"},
                    SortCase{"AmountByCurrencyThenValue", {Key::amount, up}, "e2 x1 e1 r1 e3 t1 v1 i1 o1"},
                    SortCase{"AmountDown", {Key::amount, down}, "o1 i1 v1 t1 e3 r1 e1 x1 e2"}),
    [](const auto& each) { return std::string{each.param.name}; });

TEST(LedgerSort, FollowsTheAlphabetOfTheLanguage)
{
    auto books = snapshot().account("Đảo", {"USD"}).account("Dịch", {"USD"}).account("Quỹ 10", {"USD"});
    books.account("Quỹ 2", {"USD"});
    for (const auto* name : {"Đảo", "Dịch", "Quỹ 10", "Quỹ 2"})
        books.income(name, "2026-11-02", name, "USD", 100);
    const auto book = bookOf(books, "vi-VN");
    EXPECT_EQ(idsOf(book, sorted(book, matching(book, {}), {Key::account, up})), "Dịch Đảo Quỹ 2 Quỹ 10");
    QStringList offered;
    for (const auto& choice : filterChoices(book, Part::accounts))
        offered << choice.text;
    EXPECT_EQ(offered.join(QLatin1Char(' ')).toStdString(), "Dịch Đảo Quỹ 2 Quỹ 10");
}

TEST(LedgerNotice, SaysWhyNothingIsShownAndOffersTheWayOut)
{
    const auto book = bookOf(sampleLedger());
    const auto counts = book.counts();

    const auto empty = noticeFor(book, {.period = month("2026-03-01")}, counts, sampleToday);
    EXPECT_EQ(empty.headline, QStringLiteral("No entries in March 2026"));
    ASSERT_EQ(empty.offers.size(), 1U);
    EXPECT_EQ(empty.offers[0].text, QStringLiteral("Go to November 2026"));
    EXPECT_EQ(empty.offers[0].filter.period, month("2026-11-01"));

    const LedgerFilter narrow{.period = month("2026-11-01"), .kinds = {"expense"}, .receipts = Receipts::attached};
    const auto blocked = noticeFor(book, withChosen(narrow, Part::categories, {"sales"}), counts, sampleToday);
    EXPECT_EQ(blocked.sentence, QStringLiteral("1 entry matches without the filter “Category: Sales”."));
    ASSERT_EQ(blocked.offers.size(), 2U);
    EXPECT_EQ(blocked.offers[0].filter, narrow);
    EXPECT_TRUE(blocked.offers[1].filter.period.isAllTime());
}

TEST(LedgerNotice, TellsAnEmptyLedgerFromOneThatMayNotBeSeen)
{
    const auto fresh = bookOf(snapshot().account("bank", {"USD"}).grantAll());
    const auto inviting = noticeFor(fresh, {}, fresh.counts(), sampleToday);
    ASSERT_EQ(inviting.steps.size(), 2U);
    EXPECT_EQ(inviting.steps[0].offer.remedy, LedgerNotice::Remedy::recordOpening);
    EXPECT_EQ(inviting.steps[1].offer.remedy, LedgerNotice::Remedy::record);

    const auto employee = bookOf(snapshot().account("bank", {"USD"}).grant("bank", {"view", "expense"}));
    const auto modest = noticeFor(employee, {}, employee.counts(), sampleToday);
    EXPECT_TRUE(modest.steps.empty());
    ASSERT_EQ(modest.offers.size(), 1U);
    EXPECT_EQ(modest.offers[0].remedy, LedgerNotice::Remedy::record);

    const auto readOnly = bookOf(snapshot().account("bank", {"USD"}).grant("bank", {"view"}));
    EXPECT_TRUE(noticeFor(readOnly, {}, readOnly.counts(), sampleToday).offers.empty());

    const auto blind = bookOf(snapshot().currentMember(SnapshotBuilder::person("m1", "Rizky")));
    EXPECT_EQ(noticeFor(blind, {}, blind.counts(), sampleToday).reason, LedgerNotice::Reason::noAccess);

    const auto founded = bookOf(snapshot().currentMember(SnapshotBuilder::person("m1", "Dewi", "owner")));
    const auto leading = noticeFor(founded, {}, founded.counts(), sampleToday);
    EXPECT_EQ(leading.sentence, QStringLiteral("Set up the company's books first. Then entries can be recorded."));
    ASSERT_EQ(leading.offers.size(), 1U);
    EXPECT_EQ(leading.offers[0].remedy, LedgerNotice::Remedy::setUp);
}

/// The total under the ledger when a figure of a report is opened: the figure itself, in minor units.
std::int64_t totalOf(const LedgerBookPointer& book, ReportFigure figure, const Period& period)
{
    const auto listing =
        listingOf(book, {.filter = {.period = period, .figure = std::move(figure)}, .sort = {}, .today = sampleToday});
    EXPECT_EQ(listing.totals.size(), 1U);
    return listing.totals.front().net.value_or(-1);
}

TEST(LedgerFilter, OfAFigureShowsTheEntriesThatItIsTheSumOf)
{
    const auto book = std::make_shared<const LedgerBook>(sampleLedger().share(), "en-US");
    const auto november = month("2026-11-01");
    const ReportScope dollars{.currency = "USD"};
    const auto idsBehind = [&](const ReportFigure& figure) {
        return idsOf(*book, matching(*book, {.period = november, .figure = figure}));
    };
    // A refund stands against income; a reversed expense and its reversal are both behind the figure.
    const ReportFigure income{.scope = dollars, .movements = ReportFigure::incomeMovements()};
    EXPECT_EQ(idsBehind(income), "r1");
    EXPECT_EQ(totalOf(book, income, november), -20000);
    const ReportFigure expense{.scope = dollars, .movements = ReportFigure::expenseMovements()};
    EXPECT_EQ(idsBehind(expense), "v1 e3 e1");
    EXPECT_EQ(totalOf(book, expense, november), -43850);
    // Between all accounts a transfer moves nothing, on one of them it does; of an exchange only the dollars count.
    const ReportFigure other{.scope = dollars, .movements = ReportFigure::otherMovements()};
    EXPECT_EQ(totalOf(book, other, november), -1200000);
    auto ofFloat = other;
    ofFloat.scope.accountIDs = {{"Rizky float"}};
    EXPECT_EQ(idsBehind(ofFloat), "t1");
    EXPECT_EQ(totalOf(book, ofFloat, november), 5000);
    // A parent category stands for its children, unless it is asked for alone.
    auto utilities = expense;
    utilities.lines = ReportFigure::Lines::categoryWithChildren;
    utilities.categoryID = "utilities";
    EXPECT_EQ(totalOf(book, utilities, november), -43850);
    utilities.lines = ReportFigure::Lines::categoryAlone;
    EXPECT_EQ(idsBehind(utilities), "");
    // The refund bears the category of the income that it takes back.
    auto sales = income;
    sales.lines = ReportFigure::Lines::categoryAlone;
    sales.categoryID = "sales";
    EXPECT_EQ(totalOf(book, sales, november), -20000);
}

TEST(LedgerFilter, OfAFigureIsNamedAndDroppedLikeAnyOther)
{
    const auto book = bookOf(sampleLedger());
    LedgerFilter filter{.period = month("2026-11-01"),
                        .figure = ReportFigure{.scope = {.currency = "USD", .accountIDs = {{"Singapore"}}},
                                               .movements = ReportFigure::expenseMovements(),
                                               .lines = ReportFigure::Lines::categoryWithChildren,
                                               .categoryID = "utilities"}};
    EXPECT_EQ(partText(book, filter, Part::figure).toStdString(), "Figure: Expense, USD, Utilities, Singapore");
    EXPECT_TRUE(filter.narrows());
    EXPECT_EQ(blockingPart(book, filter), (LedgerBlockingPart{Part::figure, 7}));
    EXPECT_FALSE(filter.without(Part::figure).narrows());
}

}

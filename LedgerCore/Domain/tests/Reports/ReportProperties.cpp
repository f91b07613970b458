#include "LedgerCore/Domain/Reports/ReportBook.h"

#include <numeric>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Reports/ReportSource.h"

namespace {

using std::chrono::days;
using std::chrono::sys_days;

constexpr sys_days firstDay{std::chrono::year{2024} / 2 / 20};
constexpr int bookDays = 400;

std::string dayText(int offset)
{
    return LedgerDay::format(std::chrono::year_month_day{firstDay + days{offset}});
}

/// Books of random entries on three accounts, two currencies and four categories, in no order of days.
LedgerSnapshot randomBooks()
{
    LedgerSnapshot books;
    for (const auto* id : {"a", "b", "c"}) {
        auto& account = books.accounts.emplace_back();
        account.id = id;
        account.currencies = {"USD", "JPY"};
    }
    for (const auto* id : {"top", "left", "right", "alone"})
        books.categories.emplace_back().id = id;
    books.categories[1].parentID = books.categories[2].parentID = "top";

    const auto count = *rc::gen::inRange(0, 60);
    for (int at = 0; at < count; ++at) {
        LedgerTransaction entry;
        entry.id = "t" + std::to_string(at);
        entry.kind = *rc::gen::elementOf(std::vector<std::string>{"income", "expense", "refund", "transfer", "exchange",
                                                                  "opening", "capital", "dividend", "reversal"});
        entry.date = dayText(*rc::gen::inRange(0, bookDays));
        if (const auto category = *rc::gen::inRange(0, 6); category < 4)
            entry.categoryID = books.categories[static_cast<std::size_t>(category)].id;
        if (at > 0)
            entry.reversalOf = entry.originalTransactionID = "t" + std::to_string(*rc::gen::inRange(0, at));
        const auto legs = *rc::gen::inRange(1, 4);
        for (int leg = 0; leg < legs; ++leg) {
            auto& account = books.accounts[*rc::gen::inRange<std::size_t>(0, 3)];
            const auto* currency = *rc::gen::element("USD", "JPY");
            const auto amount = *rc::gen::inRange<std::int64_t>(-9'000'000'000'000, 9'000'000'000'001);
            entry.legs.push_back({account.id, currency, amount});
            account.balances[currency] += amount;
        }
        books.transactions.push_back(std::move(entry));
    }
    return books;
}

/// The days of the books cut at random places, beginning and ending anywhere.
std::vector<ReportRange> randomCut()
{
    std::vector<ReportRange> ranges;
    auto day = firstDay + days{*rc::gen::inRange(-5, bookDays)};
    const auto count = *rc::gen::inRange(1, 20);
    for (int at = 0; at < count; ++at) {
        const auto last = day + days{*rc::gen::inRange(0, 60)};
        ranges.push_back({day, last});
        day = last + days{1};
    }
    return ranges;
}

std::int64_t sumOf(const std::vector<ReportCategoryLine>& lines)
{
    return std::accumulate(lines.begin(), lines.end(), std::int64_t{0},
                           [](std::int64_t sum, const ReportCategoryLine& line) { return sum + line.netMinor(); });
}

/// What the accounts held after `last`, added up leg by leg.
std::int64_t heldAfter(const LedgerSnapshot& books, sys_days last, std::string_view currency)
{
    std::int64_t held = 0;
    for (const auto& entry : books.transactions) {
        if (sys_days{LedgerDay::parse(entry.date).value()} > last)
            continue;
        for (const auto& leg : entry.legs)
            held += leg.currency == currency ? leg.amountMinor : 0;
    }
    return held;
}

RC_GTEST_PROP(ReportProperty, OpeningAndMovementsMakeTheClosingInAnyCutOfAnyBooks, ())
{
    const auto books = randomBooks();
    const auto ranges = randomCut();
    const auto book = ReportBook::create(books).value();
    const auto report = book.report({"USD"}, ranges).value();
    auto carried = heldAfter(books, ranges.front().first - days{1}, "USD");
    for (const auto& period : report.periods) {
        RC_ASSERT(period.openingMinor == carried);
        RC_ASSERT(period.openingMinor + period.movements.netMinor() == period.closingMinor);
        RC_ASSERT(period.closingMinor == heldAfter(books, period.days.last, "USD"));
        const auto booked = period.movements.incomeMinor() + period.movements.expenseMinor();
        RC_ASSERT(sumOf(period.categories) == booked);
        RC_ASSERT(sumOf(period.parentCategories) == booked);
        carried = period.closingMinor;
    }

    const auto daily = book.dailyBalances({"USD"}, {ranges.front().first, ranges.back().last}).value();
    for (const auto& period : report.periods) {
        const auto at = static_cast<std::size_t>((period.days.last - daily.firstDay).count());
        RC_ASSERT(daily.closingMinor.at(at) == period.closingMinor);
    }
}

RC_GTEST_PROP(ReportProperty, AccountsAddUpToTheReportAndCloseWithTheirBalances, ())
{
    const auto books = randomBooks();
    auto ranges = randomCut();
    ranges.push_back({ranges.back().last + days{1}, ranges.back().last + days{2 * bookDays}});
    const auto book = ReportBook::create(books).value();
    const auto report = book.report({"JPY"}, ranges).value();
    const auto matrix = book.matrix({"JPY"}, ranges).value();
    for (std::size_t at = 0; at < ranges.size(); ++at) {
        RC_ASSERT(matrix.totals[at].movements == report.periods[at].movements);
        RC_ASSERT(matrix.totals[at].openingMinor == report.periods[at].openingMinor);
        RC_ASSERT(matrix.totals[at].closingMinor == report.periods[at].closingMinor);
    }
    for (const auto& row : matrix.rows) {
        const auto& last = row.cells.back();
        RC_ASSERT(last.closingMinor == books.account(row.accountID)->balance("JPY"));
        RC_ASSERT(last.arrivedMinor + last.leftMinor == last.movements.netMinor());
    }
}

RC_GTEST_PROP(ReportProperty, WhatReportsReadOfTheJsonGivesTheReportsOfTheWholeSnapshot, ())
{
    const auto books = randomBooks();
    const auto ranges = randomCut();
    auto text = Json::encode(books);
    const auto source = Json::view<ReportSource>(text);
    RC_ASSERT(source.has_value());
    const auto fromWhole = ReportBook::create(books).value();
    const auto fromPart = ReportBook::create(*source).value();
    RC_ASSERT(fromPart.currencies() == fromWhole.currencies());
    for (const auto* currency : {"USD", "JPY"})
        RC_ASSERT(fromPart.report({currency}, ranges).value() == fromWhole.report({currency}, ranges).value());
}

}

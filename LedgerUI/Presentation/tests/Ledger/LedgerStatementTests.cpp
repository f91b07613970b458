#include <gtest/gtest.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerListing.h"
#include "LedgerUI/Presentation/tests/LedgerSample.h"

namespace {

using Line = LedgerStatement::Line;

Period november()
{
    return Period::containing(Period::Span::month, sampleToday);
}

LedgerListing listed(const SnapshotBuilder& books, LedgerFilter filter, LedgerSort sort = {})
{
    return listingOf(std::make_shared<const LedgerBook>(books.share(), "en-US"),
                     {std::move(filter), sort, sampleToday});
}

/// "v1 USD 1181150, …", from the top.
std::string balances(const LedgerListing& listing)
{
    std::string text;
    for (std::size_t row = 0; row < listing.rows.size(); ++row) {
        text += (row > 0 ? ", " : "") + listing.book->transaction(listing.rows[row]).id;
        for (const auto& each : listing.statement->after(row))
            text += " " + listing.book->currencies().id(each.currency) + " " + std::to_string(each.minor);
    }
    return text;
}

}

TEST(LedgerStatement, GoesFromOpeningToClosingInEachCurrency)
{
    const auto listing = listed(sampleLedger(), {.period = november(), .accountIDs = {"Operating bank"}});
    ASSERT_TRUE(listing.statement.has_value());
    EXPECT_EQ(
        listing.statement->lines,
        (std::vector<Line>{
            {.currency = "IDR", .outgoing = -438'520'000, .closing = -438'520'000},
            {.currency = "USD", .opening = 1'250'000, .incoming = 9'900, .outgoing = -78'750, .closing = 1'181'150}}));
    for (const auto& line : listing.statement->lines)
        EXPECT_EQ(line.opening + line.incoming + line.outgoing, line.closing) << line.currency;
    EXPECT_EQ(balances(listing), "v1 USD 1181150, e3 USD 1171250, r1 USD 1181150, t1 USD 1201150, e1 USD 1206150, "
                                 "e2 IDR -438520000");
}

TEST(LedgerStatement, TellsTheSameBalancesInEveryOrderAndUnderEveryFilter)
{
    const LedgerFilter filter{.period = november(), .kinds = {"expense"}, .accountIDs = {"Operating bank"}};
    const auto listing = listed(sampleLedger(), filter, {LedgerSort::Key::amount, LedgerSort::Direction::descending});
    EXPECT_EQ(balances(listing), "e3 USD 1171250, e1 USD 1206150, e2 IDR -438520000");
}

TEST(LedgerStatement, NamesBothBalancesOfAnExchangeInsideTheAccount)
{
    const auto listing = listed(sampleLedger(), {.accountIDs = {"Singapore"}});
    EXPECT_EQ(balances(listing), "x1 USD -1200000 SGD 1607400");
    EXPECT_EQ(listing.statement->widest.size(), 2U);
}

TEST(LedgerStatement, IsAbsentWhereItWouldBeWrong)
{
    const LedgerFilter one{.accountIDs = {"Operating bank"}};
    EXPECT_TRUE(listed(sampleLedger(), one).statement.has_value());
    EXPECT_FALSE(listed(sampleLedger(), {}).statement.has_value());
    EXPECT_FALSE(listed(sampleLedger(), {.accountIDs = {"Operating bank", "Singapore"}}).statement.has_value());
    EXPECT_FALSE(listed(sampleLedger().balance("Operating bank", "USD", 5), one).statement.has_value())
        << "the visible entries do not explain what the account holds";
    EXPECT_FALSE(listed(sampleLedger().balance("Operating bank", "SGD", 5), one).statement.has_value());
}

TEST(LedgerListing, FindsTheRowOfADayOrTheNearestBeforeIt)
{
    const auto goesTo = [](LedgerFilter filter, std::string_view day, LedgerSort sort = {}) {
        const auto listing = listed(sampleLedger(), std::move(filter), sort);
        const auto row = placeOfDay(listing, LedgerDay::parse(day).value());
        return row ? listing.book->transaction(listing.rows[*row]).id : std::string{"nowhere"};
    };
    EXPECT_EQ(goesTo({}, "2026-11-09"), "v1");
    EXPECT_EQ(goesTo({}, "2026-11-04"), "e1");
    EXPECT_EQ(goesTo({}, "2026-01-01"), "o1") << "nothing stands before it";
    EXPECT_EQ(goesTo({}, "2026-11-04", {LedgerSort::Key::date, LedgerSort::Direction::ascending}), "e2");
    EXPECT_EQ(goesTo({.text = "nobody"}, "2026-11-04"), "nowhere");
}

#include "LedgerUI/Presentation/Ledger/Rows/LedgerSelection.h"

#include <gtest/gtest.h>

#include "LedgerUI/Presentation/Ledger/Listing/LedgerListing.h"
#include "LedgerUI/Presentation/tests/LedgerSample.h"

namespace {

LedgerListing everything()
{
    auto book = std::make_shared<const LedgerBook>(sampleLedger().share(), "en-US");
    LedgerQuery query;
    query.filter.period = Period::allTime();
    query.today = sampleToday;
    return listingOf(book, query);
}

LedgerSelection chosen(const LedgerListing& listing, std::initializer_list<std::string_view> ids)
{
    std::vector<std::uint32_t> entries;
    for (const auto id : ids)
        entries.push_back(listing.book->find(id));
    return LedgerSelection::of(listing, std::move(entries));
}

}

TEST(LedgerSelection, ShowsASingleEntryCloselyAndOfSeveralWhatTheyBring)
{
    const auto listing = everything();
    const auto one = chosen(listing, {"e1"});
    ASSERT_TRUE(one.one);
    EXPECT_EQ(one.one->id, "e1");
    const auto several = chosen(listing, {"i1", "e1"});
    EXPECT_FALSE(several.one);
    EXPECT_EQ(several.count("en-US").toStdString(), "2 selected");
    EXPECT_EQ(several.figures("en-US", 4).toStdString(), "USD\u00a0+2,061.50");
}

TEST(LedgerSelection, CountsTheCurrenciesThatHaveNoRoom)
{
    const auto listing = everything();
    const auto mixed = chosen(listing, {"e1", "e2", "x1"});
    EXPECT_EQ(mixed.amounts("en-US").size(), 3U);
    EXPECT_TRUE(mixed.figures("en-US", 2).endsWith(QStringLiteral("   +1"))) << mixed.figures("en-US", 2).toStdString();
}

/// An empty choice must not keep a ledger alive that another has replaced.
TEST(LedgerSelection, HoldsNothingWhileNothingIsChosen)
{
    EXPECT_EQ(chosen(everything(), {}).book, nullptr);
    EXPECT_TRUE(chosen(everything(), {}).figures("en-US", 2).isEmpty());
}

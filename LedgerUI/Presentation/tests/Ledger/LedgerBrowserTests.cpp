#include "LedgerUI/Presentation/Ledger/Listing/LedgerBrowser.h"

#include <QCoreApplication>
#include <QThreadPool>
#include <gtest/gtest.h>

#include "LedgerCore/Client/testing/WaitFor.h"
#include "LedgerUI/Presentation/tests/LedgerSample.h"

namespace {

/// More entries than are made ready at once, all in January, the last one named "last".
SnapshotPointer largeBooks(const std::string& last)
{
    auto books = snapshot().account("bank", {"USD"});
    for (int each = 0; each < 2500; ++each)
        books.income("i" + std::to_string(each), "2026-01-05", "bank", "USD", 1);
    return books.income(last, "2026-01-06", "bank", "USD", 1).share();
}

TEST(LedgerBrowser, KeepsWhatItShowsUntilALargeBookIsReadyAndAdoptsOnlyTheLastOneAsked)
{
    LedgerBrowser browser;
    browser.open(sampleLedger().share(), "en-US", sampleToday);
    const auto before = browser.book();
    browser.open(largeBooks("first"), "en-US", sampleToday);
    browser.open(largeBooks("second"), "en-US", sampleToday);
    EXPECT_TRUE(browser.isPreparing());
    EXPECT_EQ(browser.book(), before);
    waitUntil([&] { return !browser.isPreparing(); });
    EXPECT_NE(browser.book()->find("second"), LedgerBook::none);
    EXPECT_EQ(browser.book()->find("first"), LedgerBook::none);
}

TEST(LedgerBrowser, AnswersTheLastQuestionAboutALargeBookAndSaysWhatBecameOfTheRows)
{
    LedgerBrowser browser;
    browser.open(largeBooks("last"), "en-US", sampleToday);
    waitUntil([&] { return !browser.isPreparing(); });
    const auto all = browser.filter();
    // A quick worker may have answered a question before the next one is asked.
    std::vector<std::size_t> rowsShown{browser.listing()->rows.size()};
    std::vector<std::size_t> rowsBefore;
    QObject::connect(&browser, &LedgerBrowser::changed, [&] {
        if (browser.isPreparing())
            return;
        rowsBefore.push_back(browser.change().moved.size());
        rowsShown.push_back(browser.listing()->rows.size());
    });
    browser.setFilter(all.without(LedgerFilter::Part::period));
    browser.setFilter({.period = all.period, .text = "nothing"});
    browser.setFilter({.period = all.period, .text = "1.00"});
    waitUntil([&] { return !browser.isPreparing(); });
    EXPECT_EQ(browser.listing()->rows.size(), 0U);
    browser.setFilter(browser.clearedFilter());
    waitUntil([&] { return !browser.isPreparing(); });
    EXPECT_EQ(browser.listing()->lineOf("last"), 0);
    EXPECT_EQ(browser.change().fresh, (std::vector<RowChange::Range>{{0, 2500}}));
    EXPECT_EQ(rowsShown.front(), 2501U);
    rowsShown.pop_back();
    EXPECT_EQ(rowsBefore, rowsShown) << "each change tells what became of the rows that were shown until then";
}

TEST(LedgerBrowser, ForgetsABookThatIsStillBeingMadeReady)
{
    LedgerBrowser browser;
    browser.open(largeBooks("left"), "en-US", sampleToday);
    browser.open(nullptr, "en-US", sampleToday);
    EXPECT_FALSE(browser.isPreparing());
    browser.open(largeBooks("entered"), "en-US", sampleToday);
    waitUntil([&] { return !browser.isPreparing(); });
    EXPECT_NE(browser.book()->find("entered"), LedgerBook::none);
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::processEvents();
    EXPECT_NE(browser.book()->find("entered"), LedgerBook::none);
    browser.open(largeBooks("left again"), "en-US", sampleToday);
    browser.open(nullptr, "en-US", sampleToday);
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::processEvents();
    EXPECT_EQ(browser.listing(), nullptr);
}

TEST(LedgerBrowser, RevealsAnEntryByWideningOnlyWhatHidesIt)
{
    LedgerBrowser browser;
    browser.open(sampleLedger().share(), "en-US", sampleToday);
    auto filter = browser.filter();
    filter.kinds = {"income"};
    browser.setFilter(filter);
    ASSERT_TRUE(browser.listing()->rows.empty());
    EXPECT_TRUE(browser.reveal("t1"));
    EXPECT_EQ(browser.filter().period, filter.period);
    EXPECT_TRUE(browser.filter().kinds.empty());
    EXPECT_TRUE(browser.reveal("i1"));
    EXPECT_EQ(idsOf(*browser.book(), browser.listing()->rows), "i1");
    EXPECT_FALSE(browser.reveal("nothing"));
}

TEST(LedgerBrowser, GroupsByDayAloneAndKeepsThatThroughEveryQuestion)
{
    LedgerBrowser browser;
    browser.open(sampleLedger().share(), "en-US", sampleToday);
    browser.setSort({LedgerSort::Key::amount, LedgerSort::Direction::descending});
    browser.setGrouping(LedgerGrouping::byDay);
    EXPECT_TRUE(browser.isByDay());
    EXPECT_EQ(browser.sort(), LedgerSort{}) << "days have heads only where entries stand by their days";
    EXPECT_EQ(browser.listing()->days.size(), 5U);

    browser.setFilter({.kinds = {"expense"}});
    EXPECT_EQ(browser.listing()->days.size(), 2U);
    browser.setSort({LedgerSort::Key::member, LedgerSort::Direction::ascending});
    EXPECT_FALSE(browser.isByDay());
    EXPECT_TRUE(browser.listing()->days.empty());
    browser.setSort({});
    EXPECT_TRUE(browser.isByDay());
    browser.open(sampleLedger().share(), "vi-VN", sampleToday);
    EXPECT_EQ(browser.listing()->days.size(), 2U);
    browser.setGrouping(LedgerGrouping::none);
    EXPECT_EQ(browser.listing()->lines.size(), browser.listing()->rows.size());
}

TEST(LedgerBrowser, KeepsFilterAndOrderThroughARefreshAndAnotherLanguage)
{
    LedgerBrowser browser;
    browser.open(sampleLedger().share(), "en-US", sampleToday);
    const LedgerFilter filter{.text = "utilities", .kinds = {"expense"}};
    browser.setFilter(filter);
    browser.setSort({LedgerSort::Key::amount, LedgerSort::Direction::descending});
    const auto before = browser.listing()->rows;
    browser.open(sampleLedger().share(), "vi-VN", sampleToday);
    EXPECT_EQ(browser.filter(), filter);
    EXPECT_EQ(browser.listing()->rows, before);
    browser.open(nullptr, "vi-VN", sampleToday);
    EXPECT_EQ(browser.listing(), nullptr);
}

}

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Records/Requests/TransactionInput.h"
#include "LedgerUI/Components/Dialogs/FormDialog.h"
#include "LedgerUI/Components/Page/Banner.h"
#include "LedgerUI/tests/DraftsUnderTest.h"

namespace {

class BegunEntries : public testing::Test {
protected:
    void begin()
    {
        under.screen.press("newEntryButton");
        under.screen.waitForFocus("transactionForm");
    }
    void record()
    {
        under.server.replace("POST v1/transactions", ServerReply::json(R"({"id":"new"})"));
        under.screen.keys("Ctrl+Return");
        under.screen.waitUntilGone("transactionForm");
    }
    std::vector<TransactionInput> posted()
    {
        std::vector<TransactionInput> inputs;
        for (const auto& request : under.server.requests("POST v1/transactions"))
            inputs.push_back(Json::decode<TransactionInput>(request.body).value());
        return inputs;
    }
    /// All that the service was told of drafts, in its order.
    std::vector<DraftKeep> told()
    {
        std::vector<DraftKeep> bodies;
        for (const auto& request : under.server.requests()) {
            if (request.method == "PUT")
                bodies.push_back(Json::decode<DraftKeep>(request.body).value());
        }
        return bodies;
    }

    WindowUnderTest under{ledgerAndReports()};
};

TEST_F(BegunEntries, AreOfferedAtTheNextStartAndGoOnWithTheirKey)
{
    openBooksWithDrafts(under, {draftLeft()});
    EXPECT_FALSE(under.screen.shows("transactionForm")) << "it comes when an entry is begun";
    begin();
    EXPECT_TRUE(under.screen.says("You had begun an entry: Expense · Rent · bank · USD 12.50 · Paid at the counter"))
        << under.screen.readAll();
    under.screen.press("entryBegunContinue");
    under.screen.waitUntil("what was typed stands there", [&] { return under.screen.read("entryAmount") == "12.50"; });
    EXPECT_EQ(under.screen.read("entryNote"), "Paid at the counter");
    EXPECT_FALSE(under.screen.shows("entryBegun"));
    waitUntil([&] { return !told().empty(); });
    EXPECT_EQ(told().front().takenFrom, "dead");
    under.screen.fill("entryAmount", "13");
    record();
    ASSERT_EQ(posted().size(), 1U);
    EXPECT_EQ(posted().front().idempotencyKey, "k1");
    EXPECT_EQ(posted().front().date, "2026-11-18");
    EXPECT_EQ(posted().front().amountMinor, 1'300);
    begin();
    EXPECT_FALSE(under.screen.shows("entryBegun"));
}

TEST_F(BegunEntries, AreDiscardedByAPersonAndNeverInTheWayOfWhatIsTyped)
{
    openBooksWithDrafts(under, {draftLeft("older"), draftLeft()});
    begin();
    under.screen.press("entryBegunDiscard");
    under.screen.press("questionCancel");
    EXPECT_TRUE(under.server.requests("DELETE v1/me/drafts/k1").empty()) << "nothing goes before it is answered";
    under.screen.press("entryBegunDiscard");
    under.screen.press("questionConfirm");
    waitUntil([&] { return under.server.requests("DELETE v1/me/drafts/k1").size() == 1; });
    EXPECT_TRUE(under.screen.shows("entryBegun")) << "there is another";
    under.screen.fill("entryAmount", "4");
    EXPECT_FALSE(under.screen.shows("entryBegun")) << "what is typed now goes first";
    under.screen.press("entryCancel");
    under.screen.press("questionConfirm");
    under.screen.waitUntilGone("transactionForm");
    EXPECT_TRUE(under.server.requests("DELETE v1/me/drafts/older").empty());
}

TEST_F(BegunEntries, ComeBackLockedWhereTheyWereBeingSent)
{
    openBooksWithDrafts(under, {draftSent()});
    under.screen.waitFor("transactionForm");
    EXPECT_TRUE(under.screen.says("Retry original request"));
    EXPECT_FALSE(under.screen.offers("entryAmount"));
    EXPECT_EQ(under.store.keptRequests().count(), 1U);
    under.server.replace("POST v1/transactions", ServerReply::json(R"({"id":"new"})"));
    under.screen.press("entrySave");
    under.screen.waitUntilGone("transactionForm");
    EXPECT_EQ(posted(), std::vector<TransactionInput>{*draftSent().sent});
    EXPECT_FALSE(under.screen.shows("unconfirmedButton"));
}

TEST_F(BegunEntries, GivenUpWhereTheyWereBeingSentAreForgottenByTheServiceToo)
{
    openBooksWithDrafts(under, {draftSent()});
    under.screen.waitFor("transactionForm");
    under.screen.press("entryCancel");
    under.screen.press("questionConfirm");
    under.screen.waitUntilGone("transactionForm");
    waitUntil([&] { return under.server.requests("DELETE v1/me/drafts/k1").size() == 1; });
    EXPECT_FALSE(under.store.keptEntry().has_value());
}

TEST_F(BegunEntries, AreKeptWhileTheyAreTypedAndSentWithNoMoreThanAQuietMark)
{
    openBooksWithDrafts(under, {});
    begin();
    under.screen.pick("entryAccount", "bank");
    under.screen.fill("entryAmount", "42");
    under.screen.waitForText("The draft is not kept on the service yet"); // the script knows no such key
    EXPECT_TRUE(under.screen.find<FormDialog>("transactionForm").banner().isHidden());
    const auto key = told().back().entry.idempotencyKey;
    under.server.replace("PUT v1/me/drafts/" + key, ServerReply::json("{}"));
    under.screen.fill("entryNote", "Stamps");
    under.screen.waitUntil("the mark goes", [&] { return !under.screen.says("not kept on the service"); });
    waitUntil([&] { return told().back().entry.note == "Stamps"; });
    EXPECT_FALSE(told().back().sent.has_value());
    under.screen.press("entryCategory0");
    under.server.replace("POST v1/transactions", ServerReply::dropped());
    under.screen.press("entrySave");
    under.screen.waitForText("Retry original request");
    waitUntil([&] { return told().back().sent.has_value(); });
    EXPECT_EQ(told().back().sent, posted().back());
}

TEST_F(BegunEntries, LeaveTheirKeyToTheWindowThatGoesOnWithThem)
{
    openBooksWithDrafts(under, {draftLeft()});
    begin();
    under.screen.press("entryBegunContinue");
    under.screen.waitUntil("what was typed stands there", [&] { return under.screen.read("entryAmount") == "12.50"; });
    waitUntil([&] { return told().size() == 1; });
    under.server.replace("PUT v1/me/drafts/k1", ServerReply::error(409, "conflict"));
    under.screen.fill("entryNote", "In this window");
    waitUntil([&] { return told().back().entry.idempotencyKey != "k1"; });
    waitUntil([&] { return told().back().entry.note == "In this window"; });
    const auto key = told().back().entry.idempotencyKey;
    record();
    ASSERT_EQ(posted().size(), 1U);
    EXPECT_EQ(posted().front().idempotencyKey, key) << "two windows, two entries";
}

}

#include <QAction>
#include <QLineEdit>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Records/Requests/TransactionInput.h"
#include "LedgerUI/Screens/Ledger/LedgerView.h"
#include "LedgerUI/Screens/Reports/ReportsView.h"
#include "LedgerUI/testing/WindowUnderTest.h"
#include "LedgerUI/tests/FormUnderTest.h"

namespace {

/// The window with a person who records an expense and whose session ends meanwhile.
class SessionThatEnds : public testing::Test {
protected:
    explicit SessionThatEnds(const PageRegistry& pages = ledger()) : under{pages}
    {
        signIn();
        if (!under.screen.offers("newEntryButton"))
            under.screen.keys("Ctrl+2");
        under.screen.press("newEntryButton");
        under.screen.waitFor("transactionForm");
        under.screen.pick("entryAccount", "vault");
        under.screen.fill("entryAmount", "12.5");
        under.screen.press("entryCategory0");
    }
    void signIn() { under.signIn(entryBooks()); }
    void answer(const ServerReply& reply) { under.server.replace("POST v1/transactions", reply); }
    std::vector<TransactionInput> posted()
    {
        std::vector<TransactionInput> inputs;
        for (const auto& request : under.server.requests("POST v1/transactions"))
            inputs.push_back(Json::decode<TransactionInput>(request.body).value());
        return inputs;
    }
    void saveWithoutAReply()
    {
        answer(ServerReply::dropped());
        under.screen.press("entrySave");
        under.screen.waitForText("Retry original request");
    }
    void loseTheSession()
    {
        answer(ServerReply::error(401, "unauthorized"));
        under.screen.press("entrySave");
        under.screen.waitFor("alertDialog");
        under.screen.press("messageClose");
        under.screen.waitFor("signInView");
    }

    static PageRegistry ledger()
    {
        PageRegistry pages;
        pages.add<LedgerView>(WorkspacePage::ledger);
        return pages;
    }

    WindowUnderTest under;
};

/// The same where another page than the ledger is the first.
class SessionThatBeginsElsewhere : public SessionThatEnds {
protected:
    SessionThatBeginsElsewhere() : SessionThatEnds{reportsFirst()} {}

    static PageRegistry reportsFirst()
    {
        auto pages = ledger();
        pages.add<ReportsView>(WorkspacePage::reports);
        return pages;
    }
};

}

TEST_F(SessionThatEnds, BringsAnUnconfirmedEntryBackLockedWithItsKey)
{
    saveWithoutAReply();
    loseTheSession();
    signIn();
    under.screen.waitFor("transactionForm");
    EXPECT_EQ(under.screen.read("entryAmount"), "12.50");
    EXPECT_FALSE(under.screen.offers("entryAmount"));
    EXPECT_TRUE(under.screen.says("Retry original request"));
    EXPECT_TRUE(under.screen.says("Retries keep the original bookkeeping date"));
    answer(ServerReply::json(R"({"id":"e9"})"));
    under.screen.press("entrySave");
    under.screen.waitUntilGone("transactionForm");
    ASSERT_EQ(posted().size(), 3U);
    EXPECT_EQ(posted()[1], posted()[0]);
    EXPECT_EQ(posted()[2], posted()[0]);
    EXPECT_FALSE(under.store.keptEntry().has_value());
}

TEST_F(SessionThatEnds, BringsAnEntryThatWasNeverJudgedBackToBeChangedOrSent)
{
    loseTheSession();
    signIn();
    under.screen.waitFor("transactionForm");
    EXPECT_TRUE(under.screen.offers("entryAmount"));
    answer(ServerReply::json(R"({"id":"e9"})"));
    under.screen.press("entrySave");
    under.screen.waitUntilGone("transactionForm");
    ASSERT_EQ(posted().size(), 2U);
    EXPECT_EQ(posted()[1], posted()[0]);
}

TEST_F(SessionThatEnds, KeepsAnEntryThatIsChangedAfterwardsOnceAndNeverRecordsItTwice)
{
    loseTheSession();
    signIn();
    under.screen.waitFor("transactionForm");
    under.screen.fill("entryAmount", "13.5");
    EXPECT_FALSE(under.store.keptEntry().has_value()) << "it is a draft now";
    under.server.replace("GET v1/snapshot", ServerReply::error(401, "unauthorized"));
    EXPECT_FALSE(resultOf(under.store.refresh(false)).has_value());
    under.screen.waitFor("alertDialog");
    under.screen.press("messageClose");
    under.screen.waitFor("signInView");
    signIn();
    under.screen.waitFor("ledgerView");
    settle();
    EXPECT_FALSE(under.screen.shows("transactionForm"));
    under.screen.choose("newEntryKinds", "newEntry.draft");
    under.screen.waitFor("transactionForm");
    EXPECT_EQ(under.screen.read("entryAmount"), "13.5") << "as it was typed";

    loseTheSession();
    signIn();
    under.screen.waitFor("transactionForm");
    EXPECT_EQ(under.store.keptRequests().count(), 1U);
    under.screen.fill("entryAmount", "14");
    answer(ServerReply::json(R"({"id":"e9"})"));
    under.screen.press("entrySave");
    under.screen.waitUntilGone("transactionForm");
    EXPECT_EQ(under.store.keptRequests().count(), 0U) << "what was recorded is not offered again";
    ASSERT_EQ(posted().size(), 3U);
    EXPECT_EQ(posted().back().amountMinor, 1'400);
}

TEST_F(SessionThatEnds, TakesUpWhatWasTypedAndNeverSent)
{
    const auto isOffered = [&] {
        return under.window.findChild<QAction*>(QStringLiteral("newEntry.draft"))->isVisible();
    };
    EXPECT_EQ(resultOf(under.store.logout()), Result<void>{});
    under.screen.waitFor("signInView");
    signIn();
    under.screen.waitFor("ledgerView");
    EXPECT_FALSE(under.screen.shows("transactionForm")) << "it comes when it is asked for";
    ASSERT_TRUE(isOffered());
    under.screen.choose("newEntryKinds", "newEntry.draft");
    under.screen.waitFor("transactionForm");
    EXPECT_EQ(under.screen.read("entryAmount"), "12.50");
    under.screen.fill("entryAmount", "13.5");
    under.screen.press("entryCancel");
    under.screen.press("questionConfirm");
    under.screen.waitUntilGone("transactionForm");
    ASSERT_TRUE(isOffered()) << "after Cancel as well";
    under.screen.choose("newEntryKinds", "newEntry.draft");
    under.screen.waitFor("transactionForm");
    EXPECT_EQ(under.screen.read("entryAmount"), "13.50");
    answer(ServerReply::json(R"({"id":"e9"})"));
    under.screen.press("entrySave");
    under.screen.waitUntilGone("transactionForm");
    EXPECT_EQ(posted().size(), 1U);
    EXPECT_FALSE(isOffered());
}

TEST_F(SessionThatEnds, NeverOffersWhatWasSentAsADraft)
{
    saveWithoutAReply();
    EXPECT_FALSE(under.window.findChild<QAction*>(QStringLiteral("newEntry.draft"))->isVisible())
        << "it may be recorded already";
    answer(ServerReply::error(422, "invalid_entry"));
    under.screen.press("entrySave");
    under.screen.waitUntil("it can be changed", [&] { return under.screen.offers("entryAmount"); });
    EXPECT_TRUE(under.window.findChild<QAction*>(QStringLiteral("newEntry.draft"))->isVisible());
}

TEST_F(SessionThatEnds, OffersAnEntryThatWasGivenUpNoMore)
{
    loseTheSession();
    signIn();
    under.screen.press("entryCancel");
    under.screen.press("questionConfirm");
    under.screen.waitUntilGone("transactionForm");
    EXPECT_FALSE(under.store.keptEntry().has_value());
}

TEST_F(SessionThatBeginsElsewhere, BringsTheEntryBackBeforeItCanBeTypedAgain)
{
    saveWithoutAReply();
    loseTheSession();
    signIn();
    under.screen.waitFor("transactionForm");
    EXPECT_TRUE(under.screen.says("Retry original request"));
}

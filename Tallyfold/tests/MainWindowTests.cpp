#include "Tallyfold/MainWindow.h"

#include <QScreen>
#include <gtest/gtest.h>

#include "LedgerCore/Client/testing/StoreUnderTest.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Screens/Company/CompanyView.h"
#include "LedgerUI/Screens/Ledger/LedgerView.h"
#include "LedgerUI/Screens/Root/RootView.h"
#include "LedgerUI/Screens/Workspace/PageRegistry.h"
#include "LedgerUI/testing/ScreenDriver.h"

namespace {

constexpr auto post = "POST v1/transactions";

SnapshotBuilder books()
{
    return snapshot().account("bank", {"USD"}).grantAll().category("rent", "expense", "Rent");
}

PageRegistry twoPages()
{
    PageRegistry pages;
    pages.add<LedgerView>(WorkspacePage::ledger);
    pages.add<CompanyView>(WorkspacePage::company);
    return pages;
}

class Window : public testing::Test {
protected:
    Window()
    {
        service.store.setAppLanguage("en-US");
        window.show();
        window.activateWindow();
    }
    /// Types an amount in a new entry, at a service that keeps no drafts.
    void beginAnEntry()
    {
        service.signIn(books());
        screen.waitFor("newEntry");
        screen.keys("Ctrl+N");
        screen.fill("entryAmount", "12.5");
    }
    /// Records an expense whose outcome never comes to be known.
    void leaveAnEntryUnconfirmed()
    {
        service.signIn(books());
        screen.waitFor("newEntry");
        service.server.replace(post, ServerReply::dropped());
        screen.keys("Ctrl+N");
        screen.fill("entryAmount", "12.5");
        screen.keys("Tab Space");
        screen.keys("Ctrl+Return");
        waitUntil([this] { return service.store.hasUnconfirmed(); });
    }
    /// Another device ends the session while the entry is sent again.
    void endTheSession()
    {
        service.server.replace(post, ServerReply::error(401, "unauthorized"));
        screen.keys("Ctrl+Return");
        screen.press("messageClose");
        screen.waitFor("signInView");
    }

    void turnAnEntryAway()
    {
        screen.waitFor("newEntry");
        screen.keys("Ctrl+N");
        screen.fill("entryAmount", "12.5");
        screen.keys("Tab Space");
        endTheSession();
    }

    StoreUnderTest service;
    PageRegistry pages = twoPages();
    MainWindow window{service.store, new RootView{service.store, pages}};
    ScreenDriver screen;
};

}

TEST_F(Window, ClosesWithoutAQuestionWhenNothingIsUnconfirmed)
{
    EXPECT_TRUE(window.close());
}

TEST_F(Window, AsksWhileACommandIsNotAnsweredAndNotForAReading)
{
    service.signIn(books());
    screen.waitFor("newEntry");
    service.server.replace(post, ServerReply::parked());
    screen.keys("Ctrl+N");
    screen.fill("entryAmount", "12.5");
    screen.keys("Tab Space");
    screen.keys("Ctrl+Return");
    waitUntil([this] { return service.server.parkedCount() == 1; });
    EXPECT_FALSE(window.close());
    EXPECT_TRUE(screen.says("Still waiting for the service"));
    screen.keys("Return");
    service.server.replace("GET v1/snapshot", ServerReply::parked());
    service.server.release(ServerReply::json(R"({"id":"e1"})"));
    waitUntil([this] { return service.server.parkedCount() == 1 && service.store.isBusy(); });
    EXPECT_FALSE(service.store.awaitsChange());
    service.server.release(ServerReply::json(books().json()));
    screen.waitUntilGone("transactionForm");
    screen.keys("F5");
    waitUntil([this] { return service.server.parkedCount() == 1; });
    EXPECT_TRUE(window.close());
}

TEST_F(Window, AsksBeforeItTakesUnsavedChangesAlong)
{
    service.signIn(books());
    screen.press("page-company");
    while (!screen.shows("contributionsSwitch"))
        screen.keys("Ctrl+Tab");
    screen.press("contributionsSwitch");
    EXPECT_FALSE(window.close());
    screen.waitForText("What you entered will not be saved.");
    screen.press("questionCancel");
    EXPECT_TRUE(window.isVisible());
    screen.press("settingsRevert");
    EXPECT_TRUE(window.close()) << "nothing is unsaved any more";
}

TEST_F(Window, AsksBeforeAnEntryGoesThatWasTurnedAwayWithTheSession)
{
    service.signIn(books());
    turnAnEntryAway();
    EXPECT_TRUE(screen.says("What was not finished is kept in this window."));
    EXPECT_FALSE(window.close());
    screen.waitForText("What you entered will not be saved.");
    screen.press("questionCancel");

    service.signIn(books());
    screen.waitFor("transactionForm");
    service.server.replace(post, ServerReply::json(R"({"id":"e1"})"));
    screen.keys("Ctrl+Return");
    screen.waitUntilGone("transactionForm");
    EXPECT_TRUE(window.close()) << "nothing is left to be lost";
}

TEST_F(Window, AsksTheSameWhereTheServiceWasToKeepTheEntry)
{
    const auto tagged = [](std::string body) {
        return ServerReply{.body = std::move(body), .headers = {"ETag: \"1\""}};
    };
    service.server.replace("GET v1/me/drafts", ServerReply::json(R"({"drafts":[]})"));
    service.server.replace("POST v1/auth/login", tagged(books().signInJson()));
    service.server.replace("GET v1/snapshot", tagged(books().json()));
    ASSERT_TRUE(resultOf(service.store.login("m1@example.com", "secret")).has_value());
    turnAnEntryAway();
    EXPECT_FALSE(window.close());
    screen.waitForText("What you entered will not be saved.");
    screen.press("questionConfirm");
    EXPECT_FALSE(window.isVisible());
}

TEST_F(Window, AsksBeforeABegunEntryGoesThatOnlyThisProgramKeeps)
{
    const auto isAskedAndStays = [this] {
        EXPECT_FALSE(window.close());
        screen.waitForText("What you entered will not be saved.");
        screen.press("questionCancel");
        screen.waitUntilGone("questionDialog");
    };
    beginAnEntry();
    service.server.replace("GET v1/snapshot", ServerReply::error(401, "unauthorized"));
    EXPECT_FALSE(resultOf(service.store.refresh(false)));
    screen.press("messageClose");
    screen.waitFor("signInView");
    isAskedAndStays();

    beginAnEntry();
    screen.press("entryCancel");
    screen.press("questionConfirm");
    screen.waitUntilGone("transactionForm");
    isAskedAndStays(); // it is offered beside "New entry" still
}

TEST_F(Window, HasTheOpenFormAskFirst)
{
    beginAnEntry();
    EXPECT_FALSE(window.close());
    screen.waitFor("questionDialog");
    EXPECT_FALSE(window.close());
    screen.press("questionCancel");
    EXPECT_EQ(screen.read("entryAmount"), "12.50");
    EXPECT_FALSE(window.close());
    screen.press("questionConfirm");
    screen.waitUntilGone("transactionForm");
    EXPECT_TRUE(window.close()) << "what was discarded for it is not asked about again";
}

TEST_F(Window, HasEveryDialogOverTheFormAskFirst)
{
    service.signIn(books().permissions({"viewCompany", "manageCompany"}));
    screen.waitFor("newEntry");
    screen.keys("Ctrl+N");
    screen.waitForFocus("transactionForm");
    screen.press("entryAllCategories");
    screen.waitForFocus("entryCategoryPopover");
    screen.type("Parking");
    screen.press("entryCategoryNew");
    screen.waitForFocus("categoryDialog");
    EXPECT_FALSE(window.close());
    screen.waitForText("Discard changes?");
    screen.press("questionCancel");
    EXPECT_EQ(screen.read("categoryName.en-US"), "Parking");
    EXPECT_FALSE(window.close());
    screen.press("questionConfirm");
    screen.waitUntilGone("categoryDialog");
    screen.fill("entryAmount", "12.5");
    EXPECT_FALSE(window.close());
    EXPECT_TRUE(screen.shows("questionDialog"));
}

TEST_F(Window, HasTheFormBelowAnAlertAskAsWell)
{
    beginAnEntry();
    service.server.replace("GET v1/snapshot", ServerReply::error(500, "internal_error"));
    EXPECT_FALSE(resultOf(service.store.refresh(true)));
    screen.waitFor("alertDialog");
    EXPECT_FALSE(window.close());
    EXPECT_FALSE(screen.shows("alertDialog"));
    EXPECT_TRUE(screen.shows("questionDialog"));
}

TEST_F(Window, TakesAFormWithoutChangesAlong)
{
    service.signIn(books());
    screen.waitFor("newEntry");
    screen.keys("Ctrl+N");
    screen.waitFor("transactionForm");
    EXPECT_TRUE(window.close());
}

TEST_F(Window, AsksBeforeItTakesAnUnconfirmedEntryAlong)
{
    leaveAnEntryUnconfirmed();
    endTheSession();
    EXPECT_FALSE(window.close());
    EXPECT_FALSE(window.close());
    EXPECT_EQ(screen.read("messageText"), "The entry may already have been saved. Close and refresh the ledger to "
                                          "check before entering the same transaction again.");
    EXPECT_TRUE(screen.says("Close before the result is known?"));
    EXPECT_EQ(screen.focus(), "questionCancel");
    EXPECT_EQ(screen.read("questionCancel"), "Keep open");
    EXPECT_EQ(screen.read("questionConfirm"), "Close");
    screen.keys("Return");
    EXPECT_TRUE(window.isVisible());
    EXPECT_FALSE(window.close());
    screen.press("questionConfirm");
    EXPECT_FALSE(window.isVisible());
}

TEST_F(Window, BringsTheEntryBackWithItsKeyAfterTheSameMemberSignedInAgain)
{
    leaveAnEntryUnconfirmed();
    endTheSession();
    EXPECT_EQ(screen.focus(), "password");
    service.signIn(books());
    screen.waitFor("transactionForm");
    EXPECT_TRUE(screen.says("The save result is unconfirmed. Content is locked."));
    service.server.replace(post, ServerReply::json(R"({"id":"e1"})"));
    screen.keys("Ctrl+Return");
    screen.waitUntilGone("transactionForm");
    const auto sent = service.server.requests(post);
    ASSERT_EQ(sent.size(), 3U);
    EXPECT_EQ(sent[1].body, sent[0].body);
    EXPECT_EQ(sent[2].body, sent[0].body);
    EXPECT_TRUE(window.close());
}

TEST_F(Window, ComesForwardWithTheLeaveOfTheDesktop)
{
    constexpr auto token = "XDG_ACTIVATION_TOKEN";
    qunsetenv(token);
    window.showMinimized();
    window.raiseToFront("leave-8");
    EXPECT_EQ(qgetenv(token), "leave-8");
    EXPECT_FALSE(window.isMinimized());
    qunsetenv(token);
}

TEST_F(Window, IsNeverLargerThanTheScreenAllows)
{
    EXPECT_EQ(MainWindow::smallestFor({1920, 1040}), QSize(900, 640));
    EXPECT_EQ(MainWindow::smallestFor({683, 360}), QSize(683, 360)); // 1366 x 768 at 200 %
    EXPECT_EQ(MainWindow::usualFor({960, 500}), QSize(960, 500));
    window.resize(600, 300);
    EXPECT_LE(window.minimumWidth(), window.screen()->availableSize().width());
    screen.press("signIn"); // by scrolling
    EXPECT_EQ(screen.focus(), "email");
}

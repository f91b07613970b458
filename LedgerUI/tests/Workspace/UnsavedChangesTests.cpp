#include "LedgerUI/Screens/Workspace/UnsavedChanges.h"

#include <QToolButton>
#include <gtest/gtest.h>

#include "LedgerUI/Screens/Company/CompanyView.h"
#include "LedgerUI/Screens/Ledger/LedgerView.h"
#include "LedgerUI/testing/CompanyBooks.h"
#include "LedgerUI/testing/WindowUnderTest.h"

namespace {

PageRegistry ledgerAndCompany()
{
    PageRegistry pages;
    pages.add<LedgerView>(WorkspacePage::ledger);
    pages.add<CompanyView>(WorkspacePage::company);
    return pages;
}

/// The owner has taken a right from a member and not saved that.
struct ChangesUnderTest : WindowUnderTest {
    ChangesUnderTest() : WindowUnderTest{ledgerAndCompany()}
    {
        server.replace("GET v1/invites", ServerReply::json(companyInvitations()));
        openDemonstration(companyBooks());
        screen.press("page-company");
        screen.pressRow("memberTable", "Hương");
        screen.press("permission.exportData");
        waitUntil([this] { return UnsavedChanges::count(window) == 1; });
    }
    void answer(const char* button)
    {
        screen.waitForText("Discard changes?");
        screen.press(button);
        screen.waitUntilGone("questionDialog");
        activate();
    }
    bool isChosen(const char* page) { return screen.find<QToolButton>(page).isChecked(); }
    bool mayExport() { return screen.find<QAbstractButton>("permission.exportData").isChecked(); }
};

}

TEST(UnsavedChanges, AreAskedAboutBeforeAnotherPageIsOpened)
{
    ChangesUnderTest under;
    under.screen.press("page-ledger");
    under.answer("questionCancel");
    EXPECT_TRUE(under.isChosen("page-company"));
    EXPECT_FALSE(under.mayExport()) << "the change is still there";
    under.screen.keys("Ctrl+1");
    under.answer("questionConfirm");
    under.screen.waitFor("ledgerView");
    EXPECT_TRUE(under.isChosen("page-ledger"));
    under.screen.press("page-company");
    EXPECT_TRUE(under.mayExport()) << "the change is gone";
    under.screen.press("page-ledger");
    under.screen.waitFor("ledgerView");
}

TEST(UnsavedChanges, AreAskedAboutBeforeAnotherCompanyIsOpened)
{
    ChangesUnderTest under;
    constexpr auto switching = "POST v1/me/companies/switch";
    under.server.replace("GET v1/me/companies", ServerReply::json(R"({"companies":[{"id":"c1","name":"Own"},)"
                                                                  R"({"id":"c2","name":"Samudra Kopi"}],)"
                                                                  R"("ownedCompanyCount":1})"));
    auto other = AuthResponse{.token = "token-2", .snapshot = companyBooks().companyName("Samudra Kopi").build()};
    other.snapshot.company.id = "c2";
    under.server.replace(switching, ServerReply::json(Json::encode(other)));
    const auto choose = [&] {
        under.screen.keys("Ctrl+Shift+O");
        under.screen.waitForText("Samudra Kopi");
        under.screen.waitUntil("the companies are there", [&] { return !under.store.isBusy(); });
        under.screen.keys("Down Down Return"); // past the company that is open
    };
    choose();
    under.answer("questionCancel");
    EXPECT_TRUE(under.server.requests(switching).empty());
    under.server.replace(switching, ServerReply::error(403, "inactive_member"));
    choose();
    under.screen.press("questionConfirm");
    under.screen.waitFor("alertDialog");
    under.screen.press("messageClose");
    under.screen.waitUntilGone("alertDialog");
    under.activate();
    EXPECT_FALSE(under.mayExport()) << "nobody went anywhere";
    under.server.replace(switching, ServerReply::json(Json::encode(other)));
    choose();
    under.answer("questionConfirm");
    under.screen.waitUntil("the other company is open", [&] { return under.store.snapshot()->company.id == "c2"; });
}

TEST(UnsavedChanges, AreAskedAboutWhenACompanyIsJoinedNotWhenItIsLookedAt)
{
    ChangesUnderTest under;
    constexpr auto joining = "POST v1/invites/accept";
    under.server.replace("GET v1/me/companies", ServerReply::json(R"({"companies":[],"ownedCompanyCount":1})"));
    under.server.replace("POST v1/me/invitation",
                         ServerReply::json(R"({"companyName":"Samudra Kopi","email":"m1@example.com"})"));
    under.screen.keys("Ctrl+Shift+O");
    under.screen.waitFor("companyMenu");
    under.screen.waitUntil("the companies are there", [&] { return !under.store.isBusy(); });
    under.screen.keys("Up Up Return");
    under.screen.waitForFocus("joinCode");
    under.screen.type("ABCDEFGH");
    under.screen.keys("Return");
    under.screen.waitFor("joinPreview");
    under.screen.keys("Ctrl+Return");
    under.screen.waitForText("Discard changes?");
    under.screen.press("questionCancel");
    under.screen.waitUntilGone("questionDialog");
    EXPECT_TRUE(under.server.requests(joining).empty());
    under.server.replace(joining, ServerReply::error(400, "invalid_invitation"));
    under.screen.press("formConfirm");
    under.screen.press("questionConfirm");
    under.screen.waitForText("The activation code is invalid, expired, or does not match your email.");
    EXPECT_EQ(UnsavedChanges::count(under.window), 1U) << "nobody went anywhere";
}

TEST(UnsavedChanges, AreAskedAboutBeforeSigningOut)
{
    ChangesUnderTest under;
    under.screen.choose("memberButton", "signOut");
    under.answer("questionCancel");
    EXPECT_TRUE(under.store.snapshot());
    under.screen.keys("Ctrl+,");
    under.screen.press("settings-session");
    under.screen.press("settingsSignOut");
    under.answer("questionConfirm");
    under.screen.waitFor("signInView");
}

TEST(UnsavedChanges, OfEveryTabCount)
{
    ChangesUnderTest under;
    under.screen.press("memberTable");
    while (!under.screen.shows("contributionsSwitch"))
        under.screen.keys("Ctrl+Tab");
    under.screen.press("contributionsSwitch");
    EXPECT_EQ(UnsavedChanges::count(under.window), 2U);
    while (!under.screen.shows("profileRevert"))
        under.screen.keys("Ctrl+Tab");
    under.screen.fill("companyName", "Another name");
    EXPECT_EQ(UnsavedChanges::count(under.window), 3U);
    under.screen.keys("Ctrl+1");
    under.answer("questionConfirm");
    EXPECT_EQ(UnsavedChanges::count(under.window), 0U);
}

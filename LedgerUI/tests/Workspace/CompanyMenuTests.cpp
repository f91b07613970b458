#include <QCoro/QCoroTask>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <gtest/gtest.h>

#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"
#include "LedgerUI/testing/LedgerPage.h"
#include "LedgerUI/testing/WindowUnderTest.h"

// Going from one company to another, and to new ones, from the menu of the company button; and the settings.

namespace {

constexpr auto companies = "GET v1/me/companies";
constexpr auto switching = "POST v1/me/companies/switch";
constexpr auto applying = "POST v1/me/companies";
constexpr auto twoCompanies = R"({"companies":[{"id":"c1","name":"Company"},{"id":"c2","name":"Samudra Kopi"}],)"
                              R"("ownedCompanyCount":1})";

SnapshotBuilder firstBooks()
{
    auto books = SnapshotBuilder{}.account("bank", {"USD"}).grantAll().category("rent", "expense", "Rent");
    books.expense("e1", "2026-11-19", "bank", "USD", 1200, "rent");
    return books;
}

/// The sign-in to another company as the service tells of it.
std::string otherCompany()
{
    auto opened = AuthResponse{.token = "token-2", .snapshot = firstBooks().companyName("Samudra Kopi").build()};
    opened.snapshot.company.id = "c2";
    return Json::encode(opened);
}

class CompanyMenu : public testing::Test {
protected:
    CompanyMenu()
    {
        under.signIn(firstBooks());
        screen.waitFor("workspaceView");
        under.server.answer(companies, ServerReply::json(twoCompanies));
    }
    void openMenu()
    {
        screen.keys("Ctrl+Shift+O");
        screen.waitForText("Samudra Kopi");
    }
    std::string bodyOf(const char* route)
    {
        const auto sent = under.server.requests(route);
        return sent.empty() ? "nothing sent" : sent.back().body;
    }

    WindowUnderTest under{ledgerPage()};
    ScreenDriver& screen = under.screen;
};

}

TEST_F(CompanyMenu, OpensAnotherCompanyInAWorkspaceOfItsOwn)
{
    screen.fill("ledgerSearch", "rent");
    auto* before = &screen.find("workspaceView");
    const QPointer<QWidget> first{before};
    under.server.answer(switching, ServerReply::json(otherCompany()));
    openMenu();
    screen.keys("Down Down Return");
    waitUntil([&] { return first.isNull(); });
    screen.waitFor("workspaceView");
    EXPECT_EQ(bodyOf(switching), R"({"companyID":"c2"})");
    EXPECT_EQ(screen.spoken("companyButton"), "Samudra Kopi. Open the menu of companies");
    EXPECT_EQ(screen.find<QLineEdit>("ledgerSearch").text(), QString{}) << "nothing of one company is seen in another";
    EXPECT_EQ(under.credentials.sessions.begin()->second.token, "token-2");
}

TEST_F(CompanyMenu, SaysThatItLoadsAndStaysUsableWhenThatFails)
{
    under.server.replace(companies, ServerReply::parked());
    screen.press("companyButton");
    waitUntil([&] { return under.server.parkedCount() == 1; });
    EXPECT_TRUE(screen.says("Loading the companies…"));
    under.server.release(ServerReply::error(500, "internal_error"));
    screen.waitFor("alertDialog");
    screen.keys("Return");
    EXPECT_FALSE(screen.shows("companyMenu"));
    EXPECT_TRUE(screen.shows("workspaceView"));
}

TEST_F(CompanyMenu, LoadsOnceTheStoreIsFreeAndStaysWhereTheKeysAre)
{
    under.server.replace("GET v1/snapshot", ServerReply::parked());
    QCoro::connect(under.store.refresh(true), &under.window, [](const Result<void>&) {});
    waitUntil([&] { return under.server.parkedCount() == 1; });
    screen.keys("Ctrl+Shift+O");
    screen.waitFor("companyMenu");
    EXPECT_TRUE(screen.says("Loading the companies…"));
    screen.keys("Up");
    under.server.release(ServerReply::json(firstBooks().json()));
    screen.waitForText("Samudra Kopi");
    waitUntil([&] { return !under.store.isBusy(); });
    const auto* active = screen.find<QMenu>("companyMenu").activeAction();
    ASSERT_NE(active, nullptr);
    EXPECT_EQ(active->objectName(), QStringLiteral("applyForCompany"));
    screen.keys("Esc");
}

TEST_F(CompanyMenu, EndsTheSessionInTheMiddle)
{
    under.server.replace(companies, ServerReply::error(401, "unauthorized"));
    screen.press("companyButton");
    screen.waitFor("alertDialog");
    screen.keys("Return");
    EXPECT_TRUE(screen.shows("signInView"));
    EXPECT_TRUE(under.credentials.sessions.empty());
}

TEST_F(CompanyMenu, ShowsWhatACodeOpensBeforeItGoesThere)
{
    under.server.answer("POST v1/me/invitation", ServerReply::error(400, "invalid_invitation"));
    openMenu();
    screen.keys("Up Up Return");
    screen.waitForFocus("joinCode");
    screen.type("WRONG");
    screen.keys("Return");
    screen.waitForText("The activation code is invalid, expired, or does not match your email.");
    EXPECT_FALSE(screen.shows("alertDialog"));

    under.server.replace("POST v1/me/invitation",
                         ServerReply::json(R"({"companyName":"Samudra Kopi","email":"m1@example.com"})"));
    screen.fill("joinCode", "ABCD EFGH");
    screen.keys("Return");
    screen.waitFor("joinPreview");
    EXPECT_EQ(screen.read("joinPreview"), "Samudra Kopi invites m1@example.com.");
    EXPECT_EQ(bodyOf("POST v1/me/invitation"), R"({"code":"ABCDEFGH"})");
    under.server.answer("POST v1/invites/accept", ServerReply::json(otherCompany()));
    screen.keys("Ctrl+Return");
    screen.waitUntilGone("joinCompanyDialog");
    EXPECT_EQ(bodyOf("POST v1/invites/accept"), R"({"code":"ABCDEFGH","locale":"en-US"})");
    screen.waitForText("Samudra Kopi");
}

TEST_F(CompanyMenu, SendsOneApplicationHoweverOftenItIsSent)
{
    under.server.answer(applying, ServerReply::dropped());
    openMenu();
    screen.keys("Up Return");
    screen.waitForFocus("applicationName");
    screen.keys("Ctrl+Return");
    EXPECT_EQ(screen.spoken("applicationName"), "Company name: Enter the company's name.");
    screen.type("Teh Melati");
    screen.keys("Ctrl+Return");
    screen.waitForText("the same application is not taken twice");
    const auto first = bodyOf(applying);
    EXPECT_FALSE(screen.offers("applicationName"));
    under.server.replace(applying, ServerReply::error(429, "rate_limited"));
    screen.keys("Ctrl+Return");
    screen.waitUntil("that judges nothing",
                     [&] { return under.server.requests(applying).size() == 2 && screen.offers("formConfirm"); });
    EXPECT_EQ(screen.read("formConfirm"), "Retry original request");
    EXPECT_FALSE(screen.offers("applicationName"));
    screen.keys("Esc");
    screen.waitForText("Close before the result is known?");
    screen.press("questionCancel");
    screen.waitUntilGone("questionDialog");

    under.server.replace(applying, ServerReply::json(R"({"status":"pending","applicationID":"a1",)"
                                                     R"("companyName":"Teh Melati","email":"m1@example.com"})"));
    screen.press("formConfirm");
    screen.waitFor("alertDialog");
    EXPECT_EQ(bodyOf(applying), first);
    screen.keys("Return");
    screen.waitUntilGone("companyApplicationDialog");
    openMenu();
    EXPECT_TRUE(screen.says("Teh Melati (awaits review)"));
    screen.keys("Esc");
}

TEST_F(CompanyMenu, SaysThatACompanyIsOpenWhereNobodyReviewsIt)
{
    under.server.replace(applying, ServerReply::json(R"({"status":"approved","applicationID":"c3",)"
                                                     R"("companyName":"Teh Melati","email":"m1@example.com"})"));
    openMenu();
    screen.keys("Up Return");
    screen.waitForFocus("applicationName");
    screen.type("Teh Melati");
    screen.keys("Ctrl+Return");
    screen.waitUntilGone("companyApplicationDialog");
    EXPECT_EQ(screen.read("statusSaid"), "Teh Melati is open. You find it in the menu of companies.");
    EXPECT_FALSE(screen.shows("alertDialog")) << "nothing awaits a review";
    openMenu();
    EXPECT_FALSE(screen.says("Teh Melati (awaits review)"));
    screen.keys("Esc");
}

TEST_F(CompanyMenu, OpensTheSettingsFromTheMembersMenu)
{
    screen.choose("memberButton", "openSettings");
    screen.waitFor("settingsDialog");
    screen.press("interfaceLanguage-id-ID");
    settle();
    EXPECT_TRUE(screen.says("Bahasa antarmuka"));
    EXPECT_EQ(under.language.chosenLanguage(), "id-ID");
    screen.press("interfaceLanguage-system");
    EXPECT_EQ(under.language.chosenLanguage(), std::nullopt);
    screen.press("interfaceLanguage-en-US");
    screen.press("settings-session");
    EXPECT_EQ(screen.read("sessionAddress"), under.store.serverURL());
    under.server.answer("POST v1/auth/logout", ServerReply::json(R"({"ok":true})"));
    screen.press("settingsSignOut");
    screen.waitFor("signInView");
    EXPECT_FALSE(screen.shows("settingsDialog"));
}

TEST_F(CompanyMenu, ListsTheSectionsOfTheSettingsAsTheSideBarListsPages)
{
    screen.keys("Ctrl+,");
    screen.waitFor("settingsDialog");
    auto& dialog = screen.find("settingsDialog");
    EXPECT_EQ(screen.find("settingsSections").mapTo(&dialog, QPoint{}).y(), 0);
    const auto picture = dialog.grab().toImage();
    const auto ground = [&](const char* section) {
        const auto& row = screen.find(section);
        const auto place = row.mapTo(&dialog, QPoint{row.width() - Space::step2, Space::step2});
        return picture.pixelColor(place * picture.devicePixelRatio());
    };
    EXPECT_EQ(ground("settings-language"), Theme::current().color(Token::accentSoft));
    EXPECT_EQ(ground("settings-session"), Theme::current().color(Token::window));
}

TEST_F(CompanyMenu, ChangesTheOwnNameAndPasswordInTheSettings)
{
    screen.keys("Ctrl+,");
    screen.press("settings-profile");
    auto renamed = firstBooks();
    renamed.currentMember(SnapshotBuilder::person("m1", "Dewi Baru"));
    under.server.answer("PATCH v1/me/profile", ServerReply::json(renamed.json()));
    screen.fill("ownName", "Dewi Baru");
    screen.keys("Return");
    screen.waitForText("The name is saved.");
    EXPECT_EQ(bodyOf("PATCH v1/me/profile"), R"({"name":"Dewi Baru"})");

    under.server.answer("POST v1/me/password", ServerReply::error(400, "invalid_verification"));
    screen.fill("currentPassword", "not it");
    screen.fill("newPassword", "a new secret");
    screen.keys("Return");
    screen.waitForText("The current password is wrong.");
    EXPECT_FALSE(screen.shows("alertDialog"));
    EXPECT_EQ(screen.focus(), "currentPassword");
    under.server.replace("POST v1/me/password", ServerReply::json(R"({"ok":true})"));
    screen.fill("currentPassword", "the old one");
    screen.press("savePassword");
    screen.waitForText("The password is changed.");
    EXPECT_EQ(bodyOf("POST v1/me/password"), R"({"currentPassword":"the old one","newPassword":"a new secret"})");
    EXPECT_EQ(screen.find<QLineEdit>("newPassword").text(), QString{});
}

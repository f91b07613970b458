#include <utility>

#include <QAbstractButton>
#include <QLineEdit>
#include <gtest/gtest.h>

#include "LedgerUI/Components/Dialogs/CommandForm.h"
#include "LedgerUI/Screens/Accounts/AccountsView.h"
#include "LedgerUI/Screens/Company/CompanyView.h"
#include "LedgerUI/Screens/Ledger/LedgerView.h"
#include "LedgerUI/testing/CompanyBooks.h"
#include "LedgerUI/tests/CapitalUnderTest.h"

// What a person was doing when the session ended under it: it waits in the window, unseen, for that person alone.

namespace {

PageRegistry manyPages()
{
    auto pages = capitalPages();
    pages.add<LedgerView>(WorkspacePage::ledger);
    pages.add<AccountsView>(WorkspacePage::accounts);
    pages.add<CompanyView>(WorkspacePage::company);
    return pages;
}

class EndOfSession : public WindowUnderTest {
public:
    explicit EndOfSession(std::string books = companyBooks().json())
        : WindowUnderTest{manyPages()}, m_books{std::move(books)}
    {
        server.replace("GET v1/invites", ServerReply::json(companyInvitations()));
        enter(m_books);
    }

    void enter(const std::string& books)
    {
        server.replace("POST v1/auth/login", ServerReply::json(R"({"token":"token","snapshot":)" + books + "}"));
        server.replace("GET v1/snapshot", ServerReply::json(books));
        require(resultOf(store.login("m1@example.com", "secret")).has_value(), "the member signs in");
        settle();
    }
    void comeBack()
    {
        server.replace("POST v1/auth/logout", ServerReply::json(R"({"ok":true})"));
        if (std::exchange(m_isOtherIn, false))
            require(resultOf(store.logout()).has_value(), "the other one signs out");
        enter(m_books);
    }
    /// Somebody else signs in at the same window, and out again.
    void letSomebodyElseIn()
    {
        auto other = companyBooks().build();
        other.currentMember = SnapshotBuilder::person("m2", "Dewi Anggraini", "owner");
        enter(Json::encode(other));
        m_isOtherIn = true;
    }
    /// The service forgets the session; the books are asked for without the person's doing.
    void end()
    {
        server.replace("GET v1/snapshot", ServerReply::error(401, "unauthorized"));
        require(!resultOf(store.refresh(false)).has_value(), "the session is over");
        leaveAlert();
    }
    void openOwnProfile()
    {
        screen.keys("Ctrl+,");
        screen.press("settings-profile");
        screen.waitFor("ownName");
    }
    void typePasswords()
    {
        screen.fill("currentPassword", "the old one");
        screen.fill("newPassword", "a new secret");
    }
    std::string password(const char* field) { return screen.find<QLineEdit>(field).text().toStdString(); }
    void openCompanyTab(const char* contents)
    {
        screen.press("page-company");
        screen.turnTo(contents);
    }
    void leaveAlert()
    {
        screen.waitFor("alertDialog");
        screen.press("messageClose");
        screen.waitUntilGone("alertDialog");
        screen.waitFor("signInView");
        activate();
    }

private:
    std::string m_books;
    bool m_isOtherIn = false;
};

struct Begun {
    const char* name;
    void (*open)(EndOfSession&);
    const char* form;
    const char* field;
    const char* typed;
    const char* confirm;
    const char* route; // where it is sent
};

const Begun forms[] = {
    {"Account",
     [](EndOfSession& under) {
         under.screen.press("page-accounts");
         under.screen.press("newAccountButton");
     },
     "accountForm", "accountFormName", "Second float", "accountSave", "POST v1/accounts"},
    {"Invitation",
     [](EndOfSession& under) {
         under.screen.press("page-company");
         under.screen.press("companyPrimary");
         under.screen.fill("inviteEmail", "rini@example.com");
     },
     "inviteDialog", "inviteName", "Rini", "inviteConfirm", "POST v1/invites"},
    {"CategoryOfAnEntry",
     [](EndOfSession& under) {
         under.screen.press("page-ledger");
         under.screen.choose("newEntryKinds", "newEntry.expense");
         under.screen.waitForFocus("transactionForm");
         under.screen.press("entryAllCategories");
         under.screen.waitForFocus("entryCategoryPopover");
         under.screen.press("entryCategoryNew");
     },
     "categoryDialog", "categoryName.en-US", "Parking", "formConfirm", "POST v1/categories"},
};

/// Whether the sign-in screen says that something waits.
bool isTold(EndOfSession& under)
{
    return under.screen.says("What was not finished is kept in this window.");
}

class FormAtTheEndOfTheSession : public testing::TestWithParam<Begun> {};

}

TEST_P(FormAtTheEndOfTheSession, WaitsForItsMemberAndLosesNothing)
{
    const auto& begun = GetParam();
    EndOfSession under;
    begun.open(under);
    under.screen.waitFor(begun.form);
    under.screen.fill(begun.field, begun.typed);
    under.end();
    EXPECT_FALSE(under.screen.shows(begun.form));
    EXPECT_TRUE(isTold(under));
    under.comeBack();
    under.screen.waitFor(begun.form);
    EXPECT_EQ(under.screen.read(begun.field), begun.typed);

    under.server.replace(begun.route, ServerReply::error(401, "unauthorized"));
    under.screen.press(begun.confirm);
    under.leaveAlert();
    under.comeBack();
    under.screen.waitFor(begun.form);
    EXPECT_EQ(under.screen.read(begun.field), begun.typed);
    EXPECT_TRUE(under.screen.offers(begun.field)) << "it was not carried out, so that it can still be changed";
    EXPECT_TRUE(under.screen.offers(begun.confirm));
    EXPECT_FALSE(under.screen.says("Your session has expired")) << "that is over";
}

INSTANTIATE_TEST_SUITE_P(Of, FormAtTheEndOfTheSession, testing::ValuesIn(forms),
                         [](const auto& each) { return std::string{each.param.name}; });

TEST(AtTheEndOfTheSession, TheCodeOfAnInvitationStaysUntilItIsTakenDown)
{
    EndOfSession under;
    forms[1].open(under);
    under.screen.fill(forms[1].field, forms[1].typed);
    under.server.replace(forms[1].route, ServerReply::json(R"({"code":"K7QF-2M9D-XR4T"})"));
    under.screen.press(forms[1].confirm);
    under.screen.waitFor("invitationCodeDialog");
    under.server.replace("GET v1/snapshot", ServerReply::error(401, "unauthorized"));
    EXPECT_FALSE(resultOf(under.store.refresh(false)).has_value());
    under.screen.waitFor("alertDialog");
    under.screen.press("messageClose");
    under.screen.waitUntilGone("alertDialog");
    EXPECT_EQ(under.screen.read("invitationCode"), "K7QF-2M9D-XR4T");
    under.screen.press("invitationDone");
    under.screen.waitUntilGone("invitationCodeDialog");
    EXPECT_TRUE(under.screen.shows("signInView"));
}

TEST(AtTheEndOfTheSession, ACapitalFormWaitsForNobodyElse)
{
    EndOfSession under{capitalSample().json()};
    under.screen.press("page-dividends");
    under.screen.waitFor("capitalTabs");
    under.screen.press("contributeButton");
    under.screen.waitForFocus("recordForm");
    under.screen.pick("recordPerson", "Budi");
    under.screen.pick("recordAccount", "Operating bank");
    under.screen.fill("recordAmount", "250000");
    under.screen.fill("recordNote", "Fifth round");
    under.end();
    under.letSomebodyElseIn();
    EXPECT_FALSE(under.screen.shows("recordForm"));
    EXPECT_EQ(CommandForm::countWaiting(under.window), 1U);

    under.comeBack();
    under.screen.waitForFocus("recordForm");
    EXPECT_EQ(CommandForm::countWaiting(under.window), 0U);
    EXPECT_EQ(under.screen.read("recordNote"), "Fifth round");
    EXPECT_EQ(under.screen.read("recordAmount"), "250,000");
    under.server.replace("POST v1/capital/commands", ServerReply::json("{}"));
    under.screen.keys("Ctrl+Return");
    under.screen.waitUntilGone("recordForm");
    const auto sent = under.server.requests("POST v1/capital/commands");
    ASSERT_EQ(sent.size(), 1U);
    const auto command = Json::decode<CapitalCommand>(sent.front().body);
    ASSERT_TRUE(command.has_value());
    EXPECT_EQ(command->amountMinor, 25'000'000);
    EXPECT_EQ(command->note, "Fifth round");
}

TEST(AtTheEndOfTheSession, AnEntryThatWasBegunIsToldOfToItsMemberAlone)
{
    EndOfSession under;
    under.screen.press("page-ledger");
    under.screen.choose("newEntryKinds", "newEntry.expense");
    under.screen.waitForFocus("transactionForm");
    under.screen.fill("entryNote", "Stamps");
    under.end();
    EXPECT_TRUE(isTold(under));
    EXPECT_TRUE(under.screen.says("Sign in again with m1@example.com to go on with it."));
    EXPECT_FALSE(under.screen.says("PT Lentera Niaga Nusantara")) << "others may read it here";
    under.letSomebodyElseIn();
    under.end();
    EXPECT_FALSE(isTold(under));
    under.comeBack();
    EXPECT_TRUE(resultOf(under.store.logout()).has_value());
    under.screen.waitUntil("it is told also after signing out by oneself", [&] { return isTold(under); });
}

TEST(AtTheEndOfTheSession, NobodyElseIsToldThatSomethingWaits)
{
    EndOfSession under;
    forms[0].open(under);
    under.screen.waitFor(forms[0].form);
    under.screen.fill(forms[0].field, forms[0].typed);
    TransactionInput untried;
    untried.idempotencyKey = "untried";
    under.store.keepEntry(untried, false);
    under.end();
    EXPECT_TRUE(isTold(under));
    under.letSomebodyElseIn();
    under.end();
    EXPECT_FALSE(isTold(under));
}

TEST(AtTheEndOfTheSession, ChangesOfAPageWaitUntilSomebodyElseSignsIn)
{
    const auto takeARight = [](EndOfSession& under) {
        under.screen.press("page-company");
        under.screen.pressRow("memberTable", "Hương");
        under.screen.press("permission.exportData");
        under.screen.waitFor("memberSave");
    };
    const auto mayExport = [](EndOfSession& under) {
        under.screen.press("page-company");
        under.screen.pressRow("memberTable", "Hương");
        return under.screen.find<QAbstractButton>("permission.exportData").isChecked();
    };
    EndOfSession under;
    takeARight(under);
    under.end();
    under.comeBack();
    EXPECT_FALSE(under.screen.find<QAbstractButton>("permission.exportData").isChecked());
    EXPECT_TRUE(under.screen.offers("memberSave"));

    under.end();
    under.letSomebodyElseIn();
    EXPECT_TRUE(mayExport(under)) << "nobody finds the changes of somebody else";
}

TEST(AtTheEndOfTheSession, SwitchesThatWereSentAreStillThereToBeSaved)
{
    EndOfSession under;
    under.openCompanyTab("contributionsSwitch");
    const auto isOn = [&] { return under.screen.find<QAbstractButton>("contributionsSwitch").isChecked(); };
    const bool before = isOn();
    under.screen.press("contributionsSwitch");
    under.server.replace("POST v1/financial-settings/commands", ServerReply::error(401, "unauthorized"));
    under.screen.press("settingsSave");
    under.leaveAlert();
    under.comeBack();
    under.screen.waitFor("contributionsSwitch");
    EXPECT_NE(isOn(), before);
    EXPECT_TRUE(under.screen.offers("contributionsSwitch"));
    EXPECT_TRUE(under.screen.offers("settingsSave"));
    EXPECT_FALSE(under.screen.says("Your session has expired"));
}

TEST(AtTheEndOfTheSession, PresetsStayTicked)
{
    EndOfSession under;
    under.openCompanyTab("categoryEditor");
    under.screen.press("categoryCatalogButton");
    under.screen.waitForFocus("presetDialog");
    under.screen.find("presetList").setFocus();
    under.screen.keys("Home Space Down Space");
    under.end();
    under.comeBack();
    under.screen.waitFor("presetDialog");
    EXPECT_EQ(under.screen.read("presetAdd"), "Add 2");
    EXPECT_TRUE(under.screen.offers("presetAdd"));
}

TEST(AtTheEndOfTheSession, TheOwnNameWaitsInTheSettingsAndPasswordsDoNot)
{
    constexpr auto notChanged = "The password was not changed. The old one still holds.";
    EndOfSession under;
    under.openOwnProfile();
    under.screen.fill("ownName", "Budi Baru");
    under.typePasswords();
    under.server.replace("POST v1/me/password", ServerReply::error(401, "unauthorized"));
    under.screen.press("savePassword");
    under.screen.waitForText(notChanged); // with it the person signs in again
    under.leaveAlert();
    EXPECT_FALSE(under.screen.shows("settingsDialog"));
    EXPECT_TRUE(isTold(under));
    under.letSomebodyElseIn();
    EXPECT_FALSE(under.screen.shows("settingsDialog"));
    under.openOwnProfile();
    EXPECT_EQ(under.screen.read("ownName"), "Dewi Anggraini");
    EXPECT_FALSE(under.screen.says(notChanged));
    under.screen.keys("Esc");
    under.screen.waitUntilGone("settingsDialog");

    under.comeBack();
    under.screen.waitFor("ownName");
    EXPECT_TRUE(under.screen.says(notChanged));
    EXPECT_EQ(under.screen.read("ownName"), "Budi Baru");
    EXPECT_EQ(under.password("currentPassword") + under.password("newPassword"), "");
    under.screen.press("Show the new password");
    under.screen.press("newPassword");
    under.screen.keys("Ctrl+Z");
    EXPECT_EQ(under.password("newPassword"), "") << "it is kept nowhere";

    under.server.replace("PATCH v1/me/profile", ServerReply::error(401, "unauthorized"));
    under.screen.press("saveName");
    under.leaveAlert();
    under.comeBack();
    under.screen.waitFor("ownName");
    EXPECT_EQ(under.screen.read("ownName"), "Budi Baru");
    EXPECT_FALSE(under.screen.says(notChanged)) << "that is over";
    under.screen.keys("Esc");
    under.screen.press("questionCancel");
    EXPECT_TRUE(under.screen.shows("ownName")) << "nor does Esc take it away unasked";
}

TEST(AtTheEndOfTheSession, PasswordsThatWereOnlyTypedAreDroppedAndThatIsSaid)
{
    EndOfSession under;
    under.openOwnProfile();
    under.typePasswords();
    under.end();
    EXPECT_FALSE(isTold(under)) << "nothing is";
    EXPECT_EQ(CommandForm::countWaiting(under.window), 0U) << "nor does closing ask about it";
    under.comeBack();
    under.screen.waitForFocus("currentPassword");
    EXPECT_TRUE(under.screen.says("The password was not changed. The old one still holds."));
    EXPECT_EQ(under.password("currentPassword") + under.password("newPassword"), "");

    under.typePasswords();
    under.server.replace("POST v1/me/password", ServerReply::dropped());
    under.screen.press("savePassword");
    under.screen.waitUntil("the answer is lost", [&] { return !under.store.isBusy(); });
    under.end();
    under.comeBack();
    under.screen.waitForFocus("currentPassword");
    EXPECT_FALSE(under.screen.says("The password was not changed.")) << "that is not known";
}

TEST(AtTheEndOfTheSession, NothingWaitsWhereNothingWasTyped)
{
    EndOfSession under;
    under.screen.press("page-accounts");
    under.screen.press("newAccountButton");
    under.screen.waitFor("accountForm");
    under.end();
    EXPECT_FALSE(isTold(under));
    EXPECT_EQ(CommandForm::countWaiting(under.window), 0U);
    under.comeBack();
    settle();
    EXPECT_FALSE(under.screen.shows("accountForm"));
}

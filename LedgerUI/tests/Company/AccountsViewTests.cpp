#include <QAction>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "LedgerUI/Components/Print/PrintDialog.h"
#include "LedgerUI/Presentation/tests/LedgerSample.h"
#include "LedgerUI/Screens/Accounts/AccountsView.h"
#include "LedgerUI/Screens/Ledger/LedgerTable.h"
#include "LedgerUI/Screens/Ledger/LedgerView.h"
#include "LedgerUI/testing/WindowUnderTest.h"

namespace {

PageRegistry builtPages()
{
    PageRegistry pages;
    pages.add<LedgerView>(WorkspacePage::ledger);
    pages.add<AccountsView>(WorkspacePage::accounts);
    return pages;
}

/// The page of accounts of the sample books.
struct OpenedAccounts : WindowUnderTest {
    explicit OpenedAccounts(const SnapshotBuilder& books = sampleLedger(), QSize size = {1160, 760})
        : WindowUnderTest{builtPages(), size}
    {
        openDemonstration(books);
        screen.press("page-accounts");
        screen.waitFor("accountsView");
    }

    /// Brings in other books, as a refresh does.
    void refresh(const SnapshotBuilder& books)
    {
        server.replace("GET v1/snapshot", ServerReply::json(books.json()));
        require(resultOf(store.refresh(true)).has_value(), "the scripted refresh succeeds");
        settle();
    }
};

}

TEST(AccountsView, GoesByKeysFromTheSearchToAnAccountAndItsEntries)
{
    OpenedAccounts under;
    under.screen.keys("Ctrl+F");
    under.screen.type("rizky");
    under.screen.keys("Down");
    EXPECT_EQ(under.screen.focus(), "accountTable");
    EXPECT_EQ(under.screen.read("accountName"), "Rizky float");
    under.screen.keys("Return");
    EXPECT_EQ(under.screen.focus(), "accountDetailClose");
    under.screen.press("accountInLedger");
    under.screen.waitFor("ledgerTable");
    EXPECT_TRUE(under.screen.says("Funding")) << "the only entry of the account";
    EXPECT_FALSE(under.screen.says("INV-048"));
}

/// What is chosen is an account, not a place; heads are passed over.
TEST(AccountsView, KeepsTheChosenAccountThroughSortingAndRefreshes)
{
    OpenedAccounts under;
    under.screen.find("accountTable").setFocus();
    under.screen.keys("End");
    EXPECT_EQ(under.screen.read("accountName"), "Rizky float");
    under.screen.keys("Up");
    EXPECT_EQ(under.screen.read("accountName"), "Singapore") << "over the head between them";
    auto more = sampleLedger();
    more.account("Agency", {"USD"}).grantAll();
    under.refresh(more);
    EXPECT_EQ(under.screen.read("accountName"), "Singapore");
    under.screen.keys("Home");
    EXPECT_EQ(under.screen.read("accountName"), "Agency");
    auto without = sampleLedger();
    without.permissions({}).grantAll();
    under.refresh(without);
    EXPECT_NE(under.screen.read("accountName"), "Agency") << "an account that is gone is shown no longer";
}

TEST(AccountsView, OpensTheDetailOverTheListInASmallWindow)
{
    OpenedAccounts under{sampleLedger(), {900, 640}};
    EXPECT_FALSE(under.screen.shows("accountDetail"));
    under.screen.find("accountTable").setFocus();
    under.screen.keys("Home Return");
    EXPECT_TRUE(under.screen.shows("accountDetail"));
    under.screen.keys("Esc");
    EXPECT_FALSE(under.screen.shows("accountDetail"));
    EXPECT_EQ(under.screen.focus(), "accountTable");
}

TEST(AccountsView, LeadsFromALatestMovementToItsEntry)
{
    OpenedAccounts under;
    under.screen.pressRow("accountTable", "Rizky float");
    under.screen.press("accountMovement");
    under.screen.waitFor("ledgerTable");
    EXPECT_EQ(under.screen.find<LedgerTable>("ledgerTable").selectedIDs(), std::vector<std::string>{"t1"});
}

/// It is worked out of the books as they stand when it is asked for, and given out only while they stand so.
TEST(AccountsView, PrintsTheStatementOfAnAccount)
{
    OpenedAccounts under;
    const QTemporaryDir folder;
    const auto path = folder.filePath(QStringLiteral("statement.pdf"));
    const auto ask = [&](const char* statement) {
        under.screen.pressRow("accountTable", "Operating bank");
        under.screen.choose("accountMore", statement);
        under.screen.waitForFocus("printDialog");
        under.screen.waitUntil("the pages are there", [&] { return under.screen.offers("printSave"); });
        return &under.screen.find<PrintDialog>("printDialog");
    };
    ask("Statement of October 2026…")->saveTo(path.toStdString());
    under.screen.waitUntilGone("printDialog");
    QProcess process;
    process.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), path, QStringLiteral("-")});
    process.waitForFinished();
    const auto text = process.readAllStandardOutput().toStdString();
    for (const auto* words :
         {"Account statement", "Operating bank", "October 2026", "INV-048", "2,500.00", "12,500.00"})
        EXPECT_NE(text.find(words), std::string::npos) << words << " in\n" << text;
    EXPECT_EQ(text.find("438.50"), std::string::npos) << "that is of November";

    under.activate();
    auto* dialog = ask("Statement of 2026…");
    auto changed = sampleLedger();
    changed.income("late", "2026-11-19", "Operating bank", "USD", 1, "sales");
    under.server.replace("GET v1/snapshot", ServerReply::json(changed.json()));
    dialog->saveTo(folder.filePath(QStringLiteral("changed.pdf")).toStdString());
    under.screen.waitForText("The records have changed");
    EXPECT_FALSE(QFile::exists(folder.filePath(QStringLiteral("changed.pdf"))));
}

TEST(AccountsView, OffersStatementsOnlyToWhoMayExport)
{
    OpenedAccounts under{sampleLedger().permissions({"viewCompany"})};
    under.screen.pressRow("accountTable", "Operating bank");
    EXPECT_THROW(under.screen.choose("accountMore", "Statement of 2026…"), ScreenFailure);
}

TEST(AccountForm, KeepsEverythingTypedUntilTheServiceHasTakenIt)
{
    OpenedAccounts under;
    under.screen.keys("Ctrl+N");
    under.screen.waitForFocus("accountFormName");
    under.screen.keys("Ctrl+Return");
    EXPECT_TRUE(under.screen.says("Enter a name of 1 to 120 characters."));
    EXPECT_EQ(under.screen.focus(), "accountFormName");
    under.screen.type("Warehouse float");
    EXPECT_FALSE(under.screen.says("Enter a name of 1 to 120 characters."));
    under.screen.press("accountPurpose-employee");
    under.screen.keys("Ctrl+Return");
    EXPECT_TRUE(under.screen.says("Choose who answers for this account."));
    under.screen.pick("accountResponsible", "Nguyễn Thị Hương");
    under.screen.press("funder-m2");
    under.server.answer("POST v1/accounts", ServerReply::error(409, "conflict"));
    under.screen.keys("Ctrl+Return");
    under.screen.waitUntil("the refusal is there", [&] { return under.screen.offers("accountFormName"); });
    EXPECT_EQ(under.screen.read("accountFormName"), "Warehouse float");
    EXPECT_FALSE(under.screen.shows("alertDialog")) << "the form says it already";
    auto after = sampleLedger();
    auto made = after.build().accounts.back();
    made.id = "made";
    made.name = "Warehouse float";
    auto books = after.account(made).grantAll().build();
    books.members.back().accountGrants = std::vector<AccountGrant>{{"made", {"view", "transferIn"}}};
    under.server.replace("POST v1/accounts", ServerReply::json(Json::encode(books)));
    under.screen.press("accountSave");
    under.screen.waitUntilGone("accountForm");
    EXPECT_EQ(under.server.requests("POST v1/accounts").back().body,
              R"({"name":"Warehouse float","currencies":["USD"],"operatorMemberID":"m2","purpose":"employee",)"
              R"("fundingMemberIDs":["m2"]})");
    EXPECT_EQ(under.screen.read("accountName"), "Warehouse float");
    EXPECT_TRUE(under.screen.says("The account is created."));
}

/// Nobody knows whether the account was made: the form can only send the very same again.
TEST(AccountForm, LocksOnAnUnknownOutcomeAndSendsTheSameAgain)
{
    OpenedAccounts under;
    under.screen.press("newAccountButton");
    under.screen.waitForFocus("accountFormName");
    under.screen.type("Till");
    under.server.answer("POST v1/accounts", ServerReply::dropped());
    under.screen.keys("Ctrl+Return");
    under.screen.waitForText("Retry original request");
    under.screen.waitUntil("the retry is offered", [&] { return under.screen.offers("accountSave"); });
    EXPECT_FALSE(under.screen.offers("accountFormName"));
    EXPECT_TRUE(under.screen.says("so that nothing is done twice"));
    under.screen.keys("Esc");
    under.screen.waitFor("questionDialog");
    EXPECT_TRUE(under.screen.says("The change may already have been made.")) << "an account is no entry";
    under.screen.press("questionCancel");
    under.screen.waitUntilGone("questionDialog");
    auto after = sampleLedger();
    after.account("Till", {"USD"}).grantAll();
    under.server.replace("POST v1/accounts", ServerReply::json(after.json()));
    under.screen.press("accountSave");
    under.screen.waitUntilGone("accountForm");
    const auto sent = under.server.requests("POST v1/accounts");
    ASSERT_EQ(sent.size(), 2U);
    EXPECT_EQ(sent.front().body, sent.back().body);
}

TEST(AccountForm, SendsOnlyChangesAndOnlyWithTheAgreementThatTheyNeed)
{
    OpenedAccounts under;
    under.screen.pressRow("accountTable", "Rizky float");
    under.screen.keys("F2");
    under.screen.waitForFocus("accountFormName");
    under.screen.pick("accountResponsible", "Mira Owner");
    EXPECT_TRUE(under.screen.says("Mira Owner will see everything ever recorded on this account."));
    under.screen.keys("Ctrl+Return");
    EXPECT_EQ(under.screen.focus(), "accountHistory");
    EXPECT_TRUE(under.server.requests("PATCH v1/accounts/Rizky float").empty());
    under.screen.keys("Space");
    under.server.answer("PATCH v1/accounts/Rizky%20float", ServerReply::error(401, "unauthorized"));
    under.screen.keys("Ctrl+Return");
    under.screen.waitFor("alertDialog");
    EXPECT_TRUE(under.screen.says("Sign in"));
    EXPECT_FALSE(under.screen.shows("accountForm")) << "with the session the form closes";
}

TEST(AccountsView, RecordsAnOpeningBalanceWhereThePolicyLetsIt)
{
    OpenedAccounts under;
    under.screen.pressRow("accountTable", "Operating bank");
    EXPECT_FALSE(under.screen.shows("accountOpening")) << "there is one in this currency";
    under.screen.pressRow("accountTable", "Singapore");
    under.screen.press("accountOpening");
    under.screen.waitForFocus("entryAmount");
    under.screen.type("12");
    under.server.answer("POST v1/transactions", ServerReply::json(R"({"id":"o9"})"));
    under.screen.keys("Ctrl+Return");
    under.screen.waitUntilGone("transactionForm");
    const auto sent = under.server.requests("POST v1/transactions");
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_NE(sent.front().body.find(R"("kind":"opening")"), std::string::npos);
    EXPECT_NE(sent.front().body.find(R"("Singapore")"), std::string::npos);
}

#include <algorithm>
#include <tuple>

#include <QAbstractItemView>

#include "Tests/EndToEnd/Stage/Applicant.h"
#include "Tests/EndToEnd/Stage/Colleague.h"
#include "Tests/EndToEnd/Stage/Desk.h"
#include "Tests/EndToEnd/Stage/LossyLine.h"
#include "Tests/EndToEnd/Story.h"

// Whatever is created: when the reply is lost after the service has done it, sending it again makes it once.

namespace {

constexpr auto company = "PT Jalur Putus";
constexpr auto owner = "tari@jalur.example";
constexpr auto password = "a secret of Tari";
constexpr Applicant applicant{"Hùng Phát Trading", "Trần Văn Hùng", "hung@jalur.example", "a secret of Hung"};
constexpr auto till = "Till at the harbour";
constexpr auto category = "Harbour fees";
constexpr auto note = "Mooring for one night";
constexpr auto safe = "Safe in the office";
constexpr auto moved = "Into the safe for the night";
constexpr auto further = "CV Jalur Baru";
constexpr auto inviting = "CV Samudra Kopi";

/// A second application is refused by itself.
void applyForACompany(Stage& stage, LossyLine& line)
{
    auto& screen = stage.screen;
    applicant.applyInVain(stage, line);
    stage.teller.step(QStringLiteral("Sent again, it is known already"), [&] {
        screen.press("register");
        screen.waitForText("This email is already registered. Please sign in.");
    });
    expect(stage.service.companiesNamed(QString::fromUtf8(applicant.company)) == 1,
           QStringLiteral("one application waits"));
    applicant.signIn(screen);
    stage.readAlert(QStringLiteral("The application waits for review"),
                    "Your company application is awaiting platform review.");
}

void applyForAnother(Stage& stage, LossyLine& line)
{
    auto& screen = stage.screen;
    openCompanies(screen);
    screen.keys("Up Return");
    screen.waitForFocus("applicationName");
    screen.type(further);
    stage.teller.step(QStringLiteral("The reply is lost: a further company"), [&] {
        line.loseReplyTo("v1/me/companies");
        screen.keys("Ctrl+Return");
        screen.waitForText("the same application is not taken twice");
        expect(line.hasLost(), QStringLiteral("the service had answered"));
    });
    screen.keys("Ctrl+Return");
    stage.readAlert(QStringLiteral("Applied for once"), "Your company application is awaiting platform review.");
    screen.waitUntilGone("companyApplicationDialog");
    expect(stage.service.companiesNamed(QString::fromUtf8(further)) == 1, QStringLiteral("one application waits"));
}

void waitForCompany(const ScreenDriver& screen, const char* name)
{
    screen.waitUntil(std::string{name} + " is open",
                     [&] { return screen.read("companyButton").find(name) != std::string::npos; });
}

/// Whoever loses the reply stays signed in where they were, and the code opens the company all the same.
void joinAnother(Stage& stage, LossyLine& line)
{
    auto& screen = stage.screen;
    stage.service.foundCompany(QString::fromUtf8(inviting), QStringLiteral("bima@samudra.example"),
                               QStringLiteral("a secret of Bima"));
    Colleague bima{stage.service.address().toStdString(), screen};
    bima.signIn("bima@samudra.example", "a secret of Bima");
    const auto code = bima.invite("Tari", owner, "finance");
    openCompanies(screen);
    screen.keys("Up Up Return");
    screen.waitForFocus("joinCode");
    screen.type(code);
    screen.keys("Return");
    screen.waitFor("joinPreview");
    stage.teller.step(QStringLiteral("The reply is lost: joining a company"), [&] {
        line.loseReplyTo("v1/invites/accept");
        screen.keys("Ctrl+Return");
        screen.waitUntilGone("joinPreview");
        expect(line.hasLost(), QStringLiteral("the service had answered"));
    });
    stage.teller.step(QStringLiteral("The same code opens it"), [&] {
        screen.keys("Ctrl+Return");
        screen.waitFor("joinPreview");
        screen.keys("Ctrl+Return");
        screen.waitUntilGone("joinCompanyDialog");
        waitForCompany(screen, inviting);
    });
}

void switchBack(Stage& stage, LossyLine& line)
{
    auto& screen = stage.screen;
    openCompanies(screen);
    line.loseReplyTo("v1/me/companies/switch");
    screen.keys("Down Return");
    stage.teller.step(QStringLiteral("The reply is lost: going over to a company"), [&] {
        hearOfTheLoss(stage, line);
        waitForCompany(screen, inviting);
    });
    openCompanies(screen);
    screen.keys("Down Return");
    waitForCompany(screen, company);
}

void openAnAccount(Stage& stage, LossyLine& line)
{
    auto& screen = stage.screen;
    screen.press("page-accounts");
    screen.press("newAccountButton");
    screen.waitForFocus("accountFormName");
    screen.type(till);
    screen.choose("accountAddCurrency", "add-IDR");
    loseOn(stage, line, "v1/accounts", "accountFormName", QStringLiteral("a new account"));
    screen.keys("Ctrl+Return");
    screen.waitUntilGone("accountForm");
    screen.waitForText(till);
}

void makeACategory(Stage& stage, LossyLine& line)
{
    auto& screen = stage.screen;
    screen.press("page-company");
    screen.turnTo("categoryEditor");
    screen.press("companyPrimary");
    screen.waitForFocus("categoryName.en-US");
    screen.type(category);
    loseOn(stage, line, "v1/categories", "categoryName.en-US", QStringLiteral("a new category"), "Return");
    screen.press("categorySave");
    screen.waitForText("Category “Harbour fees” saved");
}

void confirmTheStart(Stage& stage, LossyLine& line)
{
    auto& screen = stage.screen;
    screen.turnTo("bookkeepingTab");
    screen.press("setUpBooks");
    screen.waitForFocus("bookkeepingSetup");
    screen.press("setupWithOpenings");
    screen.press("setupAgreed");
    loseOn(stage, line, "v1/financial-settings/commands", "setupDay", QStringLiteral("the start of the books"));
    screen.keys("Ctrl+Return");
    screen.waitUntilGone("bookkeepingSetup");
    screen.waitUntil("the day is shown", [&] { return !screen.shows("setUpBooks"); });
}

void recordAnOpening(Stage& stage, LossyLine& line)
{
    auto& screen = stage.screen;
    screen.press("page-ledger");
    screen.press("noticeOpening");
    screen.waitForFocus("transactionForm");
    screen.fill("entryAmount", "500000");
    loseOn(stage, line, "v1/transactions", "entryAmount", QStringLiteral("an opening balance"));
    screen.keys("Ctrl+Return");
    screen.waitUntilGone("transactionForm");
    screen.waitUntil("it is listed", [&] { return stage.entriesShown() == 1; });
}

/// The receipt and the entry are two requests, and either can be lost.
void recordWithAReceipt(Stage& stage, LossyLine& line)
{
    auto& screen = stage.screen;
    screen.keys("Ctrl+N");
    screen.waitForFocus("transactionForm");
    screen.fill("entryAmount", "15000");
    screen.press("entryCategory0");
    screen.fill("entryNote", note);
    stage.teller.step(QStringLiteral("The reply is lost: a receipt"), [&] {
        line.loseReplyTo("v1/attachments");
        pastePhoto(screen);
        screen.waitForText("Failed");
        expect(line.hasLost(), QStringLiteral("the service had answered"));
    });
    screen.press("receiptRetry");
    screen.waitForText(" KB");
    loseOn(stage, line, "v1/transactions", "entryAmount", QStringLiteral("an entry with its receipt"));
    screen.keys("Ctrl+Return");
    screen.waitUntilGone("transactionForm");
    screen.waitUntil("it is listed once", [&] { return stage.entriesShown() == 2; });
    expect(stage.books.entriesNoted(QString::fromUtf8(note)) == 1, QStringLiteral("the entry is recorded once"));
    expect(stage.books.receiptsOn(QString::fromUtf8(note)) == 1, QStringLiteral("it carries its receipt once"));
}

/// A receipt that comes later: it is uploaded, and then put on the entry.
void addAReceipt(Stage& stage, LossyLine& line)
{
    auto& screen = stage.screen;
    screen.pressRow("ledgerTable", category);
    screen.press("addReceiptsButton");
    screen.waitFor("addReceipts");
    pastePhoto(screen, Qt::darkGray);
    screen.waitForText(" KB");
    stage.teller.step(QStringLiteral("The reply is lost: a receipt for an entry that stands"), [&] {
        line.loseReplyTo("v1/transactions/");
        screen.keys("Ctrl+Return");
        screen.waitForText("Retry original request");
        expect(line.hasLost(), QStringLiteral("the service had answered"));
    });
    screen.keys("Ctrl+Return");
    screen.waitUntilGone("addReceipts");
    expect(stage.books.receiptsOn(QString::fromUtf8(note)) == 2, QStringLiteral("it carries both receipts once"));
}

void keepATemplate(Stage& stage, LossyLine& line)
{
    auto& screen = stage.screen;
    screen.keys("Ctrl+N");
    screen.waitForFocus("transactionForm");
    screen.fill("entryAmount", "7000");
    screen.press("entryCategory0");
    screen.press("entryKeepTemplate");
    screen.waitForFocus("templateForm");
    screen.fill("templateName", "Mooring");
    loseOn(stage, line, "v1/templates", "templateName", QStringLiteral("a template"));
    screen.keys("Ctrl+Return");
    screen.waitUntilGone("templateForm");
    screen.press("entryCancel");
    screen.press("questionConfirm");
    screen.waitUntilGone("transactionForm");
    stage.teller.step(QStringLiteral("Sent again, there is one template"), [&] {
        screen.choose("newEntryKinds", "newEntry.templates");
        screen.waitFor("templatesDialog");
        screen.waitUntil("one template is listed",
                         [&] { return screen.find<QAbstractItemView>("templateTable").model()->rowCount() == 1; });
    });
    screen.keys("Esc");
    screen.waitUntilGone("templatesDialog");
}

/// Between two accounts of the company.
void moveMoney(Stage& stage, LossyLine& line)
{
    auto& screen = stage.screen;
    screen.press("page-accounts");
    screen.press("newAccountButton");
    screen.waitForFocus("accountFormName");
    screen.type(safe);
    screen.keys("Ctrl+Return");
    screen.waitUntilGone("accountForm");
    screen.press("page-ledger");
    screen.keys("Ctrl+Shift+T");
    screen.waitForFocus("transactionForm");
    screen.pick("entryAccount", till);
    screen.pick("entryDestination", safe);
    screen.fill("entryAmount", "1000");
    screen.fill("entryNote", moved);
    loseOn(stage, line, "v1/transactions", "entryAmount", QStringLiteral("a transfer"));
    screen.keys("Ctrl+Return");
    screen.waitUntilGone("transactionForm");
    screen.waitForText(moved);
    expect(stage.books.entriesNoted(QString::fromUtf8(moved)) == 1, QStringLiteral("the transfer is recorded once"));
}

void undoIt(Stage& stage, LossyLine& line)
{
    auto& screen = stage.screen;
    screen.pressRow("ledgerTable", category);
    screen.press("reverseButton");
    screen.waitForFocus("reversalDialog");
    screen.type("It was another ship");
    const auto entry = "v1/transactions/";
    loseOn(stage, line, entry, "reversalReason", QStringLiteral("a reversal"));
    screen.keys("Ctrl+Return");
    screen.waitUntil("it is listed once", [&] { return stage.entriesShown() == 3; });
    screen.press("reversalCancel");
    screen.waitUntilGone("reversalDialog");
    expect(stage.books.entriesNoted(QStringLiteral("It was another ship")) == 1,
           QStringLiteral("the reversal is recorded once"));
}

void inviteSomebody(Stage& stage, LossyLine& line)
{
    auto& screen = stage.screen;
    screen.turnTo("invitationsTab");
    screen.press("companyPrimary");
    screen.waitForFocus("inviteName");
    screen.type("Lê Thị Nhung");
    screen.keys("Tab");
    screen.type("nhung@jalur.example");
    loseOn(stage, line, "v1/invites", "inviteName", QStringLiteral("an invitation"));
    stage.teller.step(QStringLiteral("Sent again, there is one invitation, and its code is shown"), [&] {
        screen.keys("Ctrl+Return");
        screen.waitFor("invitationCodeDialog");
        screen.press("invitationDone");
        screen.waitUntilGone("invitationCodeDialog");
        screen.waitUntil("one invitation is listed",
                         [&] { return screen.find<QAbstractItemView>("invitationTable").model()->rowCount() == 1; });
    });
}

}

void tellOfLostReplies(Stage& stage)
{
    auto& screen = stage.screen;
    stage.service.foundCompany(QString::fromUtf8(company), QString::fromUtf8(owner), QString::fromUtf8(password));
    LossyLine line{stage.service.address()};
    stage.findTheServiceAt(line.address());
    applyForACompany(stage, line);
    screen.fill("email", owner);
    screen.fill("password", password);
    screen.keys("Return");
    screen.waitFor("workspaceView");
    openAnAccount(stage, line);
    makeACategory(stage, line);
    confirmTheStart(stage, line);
    inviteSomebody(stage, line);
    recordAnOpening(stage, line);
    recordWithAReceipt(stage, line);
    addAReceipt(stage, line);
    undoIt(stage, line);
    keepATemplate(stage, line);
    moveMoney(stage, line);
    applyForAnother(stage, line);
    joinAnother(stage, line);
    switchBack(stage, line);
    stage.signOut();
    Colleague tari{stage.service.address().toStdString(), screen};
    tari.signIn(owner, password);
    const auto& books = *tari.store().snapshot();
    expect(books.accounts.size() == 2, QStringLiteral("each account was opened once"));
    const auto made = std::ranges::count_if(books.categories, [](const Category& each) {
        const auto name = each.names.find("en-US");
        return name != each.names.end() && name->second == category;
    });
    expect(made == 1, QStringLiteral("one category was made"));
    expect(stage.books.brokenBalances() == 0, QStringLiteral("every balance equals its legs"));
    std::ignore = stage.service.ask({QStringLiteral("verify")}); // stops the story where an invariant is broken
}

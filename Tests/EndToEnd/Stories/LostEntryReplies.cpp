#include <algorithm>
#include <filesystem>
#include <fstream>
#include <tuple>

#include <QAbstractItemView>
#include <QLineEdit>
#include <QTemporaryDir>

#include "LedgerCore/Domain/Imports/LedgerImportCSV.h"
#include "LedgerUI/Screens/Imports/ImportDialog.h"
#include "Tests/EndToEnd/Stage/CapitalCompany.h"
#include "Tests/EndToEnd/Stage/Colleague.h"
#include "Tests/EndToEnd/Stage/Desk.h"
#include "Tests/EndToEnd/Stage/Hands.h"
#include "Tests/EndToEnd/Stage/LossyLine.h"
#include "Tests/EndToEnd/Story.h"

// Lost replies where money comes in, changes its currency and is paid back, where an entry is due, where many rows are
// recorded and taken back at once, and at the last step of an activation.

namespace {

constexpr CapitalCompany company{"PT Ombak Tenang", "lina@ombak.example", "a secret of Lina"};
constexpr auto guest = "yusuf@ombak.example";
constexpr auto guestsPassword = "a secret of Yusuf";
constexpr auto bank = "Operating bank";
constexpr auto fares = "Fares";
constexpr auto sold = "Tickets of Saturday";
constexpr auto changed = "Dollars for the engine";
constexpr auto paidBack = "The ferry did not sail";
constexpr auto due = "Ice for the hold";
constexpr auto imported = "From the old book";
constexpr auto takenBack = "It was another book";

std::string makeCategory(Colleague& lina, const char* kind, const char* name)
{
    return lina.done(lina.store().createCategory(
                         {.kind = kind, .names = {{"en-US", name}}, .symbol = "tag", .parentID = {}, .presetID = {}}),
                     "a category is made");
}

/// The account is there, whoever hears of it: the password that was chosen is the one that opens the company.
void activate(Stage& stage, LossyLine& line, Colleague& lina)
{
    auto& screen = stage.screen;
    const auto code = lina.invite("Yusuf", guest, "finance");
    screen.press("mode-join");
    screen.fill("email", guest);
    screen.fill("invitationCode", code);
    screen.keys("Return");
    screen.waitForFocus("verificationCode");
    screen.waitUntil("a letter with a code comes", [&] { return !stage.mail.latestCode(guest).empty(); });
    screen.type(stage.mail.latestCode(guest));
    screen.keys("Return");
    screen.waitForFocus("personName");
    screen.type("Yusuf Hidayat");
    screen.fill("password", guestsPassword);
    line.loseReplyTo("v1/auth/access/complete");
    screen.keys("Return");
    hearOfTheLoss(stage, line);
    stage.teller.step(QStringLiteral("The reply is lost: an activation, which is used up"), [&] {
        screen.press("confirmAccess");
        screen.waitForText("Try to sign in with your password");
    });
    stage.teller.step(QStringLiteral("The password opens the company"), [&] {
        screen.press("mode-login");
        screen.fill("password", guestsPassword);
        screen.keys("Return");
        screen.waitFor("workspaceView");
    });
    stage.signOut();
}

/// What was not confirmed stays ticked and locked, under the category that it was sent for.
void addAPreset(Stage& stage, LossyLine& line)
{
    auto& screen = stage.screen;
    screen.press("page-company");
    screen.turnTo("categoryEditor");
    screen.press("categoryCatalogButton");
    screen.waitForFocus("presetDialog");
    screen.find("presetList").setFocus();
    screen.keys("Home Space");
    loseOn(stage, line, "v1/categories", "presetUnder", QStringLiteral("a category of the catalogue"));
    screen.keys("Ctrl+Return");
    screen.waitUntilGone("presetDialog");
}

void sendTwice(Stage& stage, LossyLine& line, const QString& what, const char* note)
{
    auto& screen = stage.screen;
    loseOn(stage, line, "v1/transactions", "entryAmount", what);
    screen.keys("Ctrl+Return");
    screen.waitUntilGone("transactionForm");
    screen.waitForText(note);
    expect(stage.books.entriesNoted(QString::fromUtf8(note)) == 1, what + QStringLiteral(" is recorded once"));
}

void sell(Stage& stage, LossyLine& line)
{
    auto& screen = stage.screen;
    screen.press("page-ledger");
    screen.keys("Ctrl+Shift+I");
    screen.waitForFocus("transactionForm");
    screen.pick("entryAccount", bank);
    screen.fill("entryAmount", "9000000");
    screen.press("entryCategory0");
    screen.fill("entryNote", sold);
    sendTwice(stage, line, QStringLiteral("an income"), sold);
}

void changeMoney(Stage& stage, LossyLine& line)
{
    auto& screen = stage.screen;
    screen.keys("Ctrl+Shift+X");
    screen.waitForFocus("transactionForm");
    screen.pick("entryAccount", bank);
    screen.fill("entryAmount", "1600000");
    screen.pick("entryDestination", bank);
    screen.pick("entryTargetCurrency", "USD");
    screen.fill("entryTargetAmount", "100");
    screen.fill("entryNote", changed);
    sendTwice(stage, line, QStringLiteral("an exchange"), changed);
}

void payBack(Stage& stage, LossyLine& line)
{
    auto& screen = stage.screen;
    screen.pressRow("ledgerTable", fares);
    screen.keys("Shift+F10");
    Hands{screen, Hand::keys}.chooseInMenu("refund");
    screen.waitForFocus("transactionForm");
    screen.fill("entryAmount", "250000");
    screen.fill("entryNote", paidBack);
    sendTwice(stage, line, QStringLiteral("a refund"), paidBack);
}

/// Today's entry of a template: the day is settled by it once, whoever sends it however often.
void recordWhatIsDue(Stage& stage, LossyLine& line, Colleague& lina, const std::string& category)
{
    auto& screen = stage.screen;
    const auto& accounts = lina.store().snapshot()->accounts;
    const auto account = std::ranges::find(accounts, bank, &Account::name);
    expect(account != accounts.end(), QStringLiteral("there is an account to pay from"));
    TemplateCreate daily{
        .name = "Ice", .shared = false, .entry = {}, .recurrence = {}, .idempotencyKey = lina.store().newIdentifier()};
    daily.entry.kind = "expense";
    daily.entry.note = due;
    daily.entry.categoryID = category;
    daily.entry.sourceAccountID = account->id;
    daily.entry.currency = "IDR";
    daily.entry.amountMinor = 45000;
    daily.recurrence = {.unit = "day", .every = 1, .firstDay = lina.store().today(), .lastDay = {}};
    lina.done(lina.store().createTemplate(daily, false), "an entry comes back every day");
    screen.keys("F5");
    screen.waitFor("templatesDue");
    screen.press("templatesDueShow");
    screen.waitFor("templatesDialog");
    screen.waitForText("Due ");
    screen.press("templateRecord");
    screen.waitForFocus("transactionForm");
    sendTwice(stage, line, QStringLiteral("an entry that is due"), due);
    screen.waitUntilGone("templatesDue");
}

/// A row may be in the books without anybody knowing: the same file is taken again, and records each row once.
void importRows(Stage& stage, LossyLine& line, const std::string& day)
{
    auto& screen = stage.screen;
    const QTemporaryDir folder;
    const std::filesystem::path file{folder.filePath(QStringLiteral("old book.csv")).toStdString()};
    std::string rows;
    for (const auto* amount : {"1000", "2000", "3000"})
        rows += day + ",Expense,Operating bank,IDR," + amount + ",Fuel," + imported + ",,,\r\n";
    std::ofstream{file, std::ios::binary} << LedgerImportCSV::templateText() << rows;
    screen.press("importLedgerButton");
    screen.waitForFocus("importDialog");
    const auto start = [&] {
        screen.find<ImportDialog>("importDialog").chooseFile(file);
        screen.waitForText("3 records are ready to import");
        screen.press("importStart");
        screen.press("questionConfirm");
    };
    stage.teller.step(QStringLiteral("The reply is lost: the first row of an import"), [&] {
        line.loseReplyTo("v1/transactions");
        start();
        screen.waitForText("Import stopped");
        expect(line.hasLost(), QStringLiteral("the service had answered"));
    });
    expect(stage.books.entriesNoted(QString::fromUtf8(imported)) == 1, QStringLiteral("the first row is recorded"));
    stage.teller.step(QStringLiteral("The same file again"), [&] {
        start();
        screen.waitForText("3 records imported successfully.");
    });
    screen.keys("Esc");
    screen.waitUntilGone("importDialog");
    expect(stage.books.entriesNoted(QString::fromUtf8(imported)) == 3, QStringLiteral("each row is recorded once"));
}

/// The reversal stops at the one of which nobody knows, and goes on with that one as it was sent.
void takeTheRowsBack(Stage& stage, LossyLine& line)
{
    auto& screen = stage.screen;
    screen.keys("Ctrl+F");
    screen.type(imported);
    screen.waitUntil("the rows alone are listed", [&] { return stage.entriesShown() == 3; });
    screen.find("ledgerTable").setFocus();
    screen.keys("Ctrl+A");
    screen.press("reverseSeveralButton");
    screen.waitForFocus("batchReversalDialog");
    screen.type(takenBack);
    stage.teller.step(QStringLiteral("The reply is lost: one of several reversals"), [&] {
        line.loseReplyTo("v1/transactions/");
        screen.keys("Ctrl+Return");
        screen.waitForText("Stopped: 0 reversed, 3 left.");
        expect(line.hasLost(), QStringLiteral("the service had answered"));
        expect(screen.find<QLineEdit>("batchReason").isReadOnly(), QStringLiteral("the reason stays as it was sent"));
    });
    expect(stage.books.entriesNoted(QString::fromUtf8(takenBack)) == 1, QStringLiteral("the first one is reversed"));
    stage.teller.step(QStringLiteral("It goes on with that one"), [&] {
        screen.keys("Ctrl+Return");
        screen.waitForText("3 entries reversed.");
    });
    screen.keys("Esc");
    screen.waitUntilGone("batchReversalDialog");
    expect(stage.books.entriesNoted(QString::fromUtf8(takenBack)) == 3, QStringLiteral("each is reversed once"));
}

}

void tellOfLostEntryReplies(Stage& stage)
{
    auto& screen = stage.screen;
    LossyLine line{stage.service.address()};
    Colleague lina{stage.service.address().toStdString(), screen};
    company.found(stage, lina);
    std::ignore = makeCategory(lina, "income", fares);
    const auto fuel = makeCategory(lina, "expense", "Fuel");
    stage.findTheServiceAt(line.address());
    activate(stage, line, lina);
    screen.fill("email", company.owner);
    screen.fill("password", company.password);
    screen.keys("Return");
    screen.waitFor("workspaceView");
    addAPreset(stage, line);
    sell(stage, line);
    changeMoney(stage, line);
    payBack(stage, line);
    recordWhatIsDue(stage, line, lina, fuel);
    importRows(stage, line, lina.store().today());
    takeTheRowsBack(stage, line);
    lina.done(lina.store().refresh(false), "the colleague looks at the books");
    const auto& books = *lina.store().snapshot();
    expect(books.categories.size() == 3, QStringLiteral("the catalogue's category was made once"));
    expect(books.members.size() == 2, QStringLiteral("the guest is a member once"));
    expect(stage.books.brokenBalances() == 0, QStringLiteral("every balance equals its legs"));
    std::ignore = stage.service.ask({QStringLiteral("verify")}); // stops the story where an invariant is broken
}

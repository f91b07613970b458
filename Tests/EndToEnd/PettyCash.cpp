#include <algorithm>

#include <QApplication>
#include <QClipboard>
#include <QImage>
#include <QMenu>

#include "LedgerCore/Domain/Records/EntryPlaces.h"
#include "Tallyfold/MainWindow.h"
#include "Tests/EndToEnd/Colleague.h"
#include "Tests/EndToEnd/Desk.h"
#include "Tests/EndToEnd/Story.h"

// An owner and an employee at two clients: petty cash is handed over and spent, corrected, and a right is taken away.

namespace {

constexpr auto company = "CV Kopi Samudra";
constexpr auto owner = "bima@kopi.example";
constexpr auto ownersPassword = "a secret of Bima";
constexpr auto employee = "rizky@kopi.example";
constexpr auto employeesPassword = "a secret of Rizky";
constexpr auto note = "Parking at the harbour, two hours";

const Account& accountNamed(const LedgerStore& store, std::string_view name)
{
    const auto& accounts = store.snapshot()->accounts;
    const auto found = std::ranges::find(accounts, name, &Account::name);
    expect(found != accounts.end(), QStringLiteral("the account is there"));
    return *found;
}

const Member& memberOf(const LedgerStore& store, std::string_view email)
{
    const auto& members = store.snapshot()->members;
    const auto found = std::ranges::find(members, email, &Member::email);
    expect(found != members.end(), QStringLiteral("the member is there"));
    return *found;
}

/// At the second client, by the mailed code.
void activate(Stage& stage, const std::string& code)
{
    auto& screen = stage.screen;
    const int before = stage.mail.lettersTo(employee);
    stage.teller.step(QStringLiteral("The employee activates the account by keyboard"), [&] {
        screen.press("mode-join");
        screen.fill("email", employee);
        screen.keys("Tab");
        screen.type(code);
        screen.keys("Return");
        screen.waitForFocus("verificationCode");
        screen.waitUntil("a letter with a code comes", [&] {
            return stage.mail.lettersTo(employee) > before && !stage.mail.latestCode(employee).empty();
        });
        screen.type(stage.mail.latestCode(employee));
        screen.keys("Return");
        screen.waitForFocus("personName");
        screen.type("Rizky Pratama");
        screen.keys("Tab");
        screen.type(employeesPassword);
        screen.keys("Return");
        screen.waitFor("workspaceView");
    });
    expect(!screen.offers("newEntryButton"), QStringLiteral("without an account nothing can be recorded"));
}

TransactionInput input(Colleague& bima, std::string_view kind, std::int64_t minor)
{
    TransactionInput entry;
    entry.kind = kind;
    entry.date = bima.store().today();
    entry.currency = "IDR";
    entry.amountMinor = minor;
    entry.idempotencyKey = bima.store().newIdentifier();
    return entry;
}

/// The company's money, and a float of it for the employee.
void handOver(Colleague& bima)
{
    auto& store = bima.store();
    const auto category = [&](const char* kind, const char* name) {
        return bima.done(store.createCategory({.kind = kind,
                                               .names = {{"en-US", name}, {"id-ID", name}},
                                               .symbol = "tag",
                                               .parentID = {},
                                               .presetID = {}}),
                         "a category is made");
    };
    const auto sales = category("income", "Sales");
    category("expense", "Parking");
    AccountCreate bank;
    bank.name = "Operating bank";
    bank.currencies = {"IDR"};
    bima.done(store.createAccount(std::move(bank)), "the bank account is opened");
    AccountCreate petty;
    petty.name = "Petty cash of Rizky";
    petty.currencies = {"IDR"};
    petty.purpose = std::string{AccountPurpose::employee};
    petty.operatorMemberID = memberOf(store, employee).id;
    petty.returnAccountID = accountNamed(store, "Operating bank").id;
    petty.fundingMemberIDs = {memberOf(store, owner).id};
    bima.done(store.createAccount(std::move(petty)), "the float is opened");
    auto sale = input(bima, EntryKind::income, 500'000'00);
    sale.categoryID = sales;
    sale.targetAccountID = accountNamed(store, "Operating bank").id;
    bima.done(store.postTransaction(std::move(sale), false), "the bank account receives money");
    auto funding = input(bima, EntryKind::transfer, 200'000'00);
    funding.sourceAccountID = accountNamed(store, "Operating bank").id;
    funding.targetAccountID = accountNamed(store, "Petty cash of Rizky").id;
    funding.transferPurpose = std::string{TransferPurpose::funding};
    bima.done(store.postTransaction(std::move(funding), false), "petty cash is handed over");
}

void spend(Stage& stage)
{
    auto& screen = stage.screen;
    stage.teller.step(QStringLiteral("Back in the window, there is petty cash"), [&] {
        comeBack();
        screen.press("page-ledger");
        screen.waitUntil("an entry can be recorded", [&] { return screen.offers("newEntryButton"); });
        screen.waitForText("200,000");
    });
    stage.teller.step(QStringLiteral("It is spent, with the photo of the receipt"), [&] {
        screen.keys("Ctrl+N");
        screen.waitForFocus("transactionForm");
        screen.fill("entryAmount", "15000");
        screen.press("entryCategory0");
        screen.fill("entryNote", note);
        QImage photo{900, 1200, QImage::Format_RGB32};
        photo.fill(Qt::lightGray);
        QApplication::clipboard()->setImage(photo);
        screen.keys("Ctrl+V");
        screen.waitForText(" KB");
        screen.keys("Ctrl+Return");
        screen.waitUntilGone("transactionForm");
        screen.waitForText(note);
    });
    expect(stage.books.receiptsOn(QString::fromUtf8(note)) == 1, QStringLiteral("the entry carries its receipt"));
}

/// The owner sees the entry and undoes it; the employee sees that, and records the right one.
void correct(Stage& stage, Colleague& bima)
{
    auto& screen = stage.screen;
    auto& store = bima.store();
    bima.done(store.refresh(false), "the owner looks at the books");
    const auto& entries = store.snapshot()->transactions;
    const auto found = std::ranges::find(entries, std::string{note}, &LedgerTransaction::note);
    expect(found != entries.end(), QStringLiteral("the owner sees the entry"));
    expect(found->attachmentIDs.size() == 1, QStringLiteral("and its receipt"));
    const auto id = found->id;
    bima.done(store.reverseTransaction(id, "It was three hours"), "the owner undoes the entry");
    stage.teller.step(QStringLiteral("The owner has undone it"), [&] {
        comeBack();
        screen.waitForText("Reversed");
    });
    stage.teller.step(QStringLiteral("The employee records the right one as a copy of it"), [&] {
        screen.pressRow("ledgerTable", "Parking");
        screen.keys("Shift+F10");
        auto& menu = screen.find<QMenu>("entryMenu");
        const auto offered = menu.actions();
        menu.setActiveAction(*std::ranges::find(offered, QStringLiteral("duplicate"), &QAction::objectName));
        screen.keys("Return");
        screen.waitForFocus("transactionForm");
        screen.fill("entryAmount", "22500");
        screen.keys("Ctrl+Return");
        screen.waitUntilGone("transactionForm");
        screen.waitForText("177,500");
    });
}

void takeTheRightAway(Stage& stage, Colleague& bima)
{
    auto& screen = stage.screen;
    auto& store = bima.store();
    expect(screen.offers("newEntryButton"), QStringLiteral("the employee may still record"));
    MemberUpdate update;
    update.accountGrants = {{accountNamed(store, "Petty cash of Rizky").id, {"view"}}};
    bima.done(store.updateMember(memberOf(store, employee).id, std::move(update), false), "a right is taken away");
    expect(screen.offers("newEntryButton"), QStringLiteral("nobody has told the window yet"));
    stage.teller.step(QStringLiteral("Back in the window, nothing can be recorded any more"), [&] {
        comeBack();
        screen.waitUntil("recording is not offered", [&] { return !screen.offers("newEntryButton"); });
        expect(screen.says(note), QStringLiteral("what may still be seen is shown"));
    });
}

}

void tellOfPettyCash(Stage& stage)
{
    stage.service.foundCompany(QString::fromUtf8(company), QString::fromUtf8(owner), QString::fromUtf8(ownersPassword));
    const auto address = stage.service.address().toStdString();
    stage.window.hide();
    Colleague bima{address, stage.screen};
    bima.signIn(owner, ownersPassword);
    Desk desk{address, stage.screen};
    desk.open();
    activate(stage, bima.invite("Rizky Pratama", employee, "employee"));
    bima.done(bima.store().refresh(false), "the owner sees the new member");
    handOver(bima);
    spend(stage);
    correct(stage, bima);
    takeTheRightAway(stage, bima);
    stage.teller.step(QStringLiteral("Closed and opened again: still signed in"), [&] {
        desk.close();
        desk.open();
        stage.screen.waitFor("workspaceView");
        expect(stage.screen.read("memberButton").find("Rizky Pratama") != std::string::npos,
               QStringLiteral("the employee is signed in"));
        stage.screen.press("page-ledger");
        stage.screen.pressRow("ledgerTable", "22,500");
        stage.screen.waitForText(note);
        expect(!stage.screen.offers("newEntryButton"), QStringLiteral("the right is still gone"));
    });
    expect(stage.books.brokenBalances() == 0, QStringLiteral("every balance equals its legs"));
    desk.close();
}

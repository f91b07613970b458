#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>

#include "LedgerCore/Domain/Text/Country.h"
#include "LedgerCore/Domain/Text/WordTable.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Presentation/Workspace/RoleText.h"
#include "Tallyfold/MainWindow.h"
#include "Tests/EndToEnd/Stage/Desk.h"
#include "Tests/EndToEnd/Stage/LossyLine.h"
#include "Tests/EndToEnd/Story.h"

// A company from nothing, at three computers: founded, set up, shared with a bookkeeper and an employee, whose petty
// cash is handed over, spent, corrected and in the end only looked at.

namespace {

constexpr auto bank = "Operating bank";
constexpr auto note = "Parking at the harbour, two hours";
constexpr auto reason = "It was three hours";

/// Somebody of the company, at a computer of their own that reaches the service by a line of its own.
struct Person {
    std::string name;
    std::string email;
    std::string password;
    LossyLine line;
    Desk desk;

    Person(const Stage& stage, const std::string& name, const std::string& language)
        : name{name}, email{qString(name).section(QLatin1Char(' '), 0, 0).toLower().toStdString() + "@" +
                            language.substr(0, 2) + ".example"},
          password{"a secret of " + name}, line{stage.service.address()},
          desk{line.address().toStdString(),
               stage.screen,
               {.language = language, .hasKeyring = stage.keyring != nullptr}}
    {
    }
};

/// The place of a page among those that the person has.
std::size_t numberOf(std::string_view page)
{
    std::size_t number = 0;
    std::string at;
    for (const auto* each : visibleWindows().front()->findChildren<QAbstractButton*>()) {
        if (at == page || !each->objectName().startsWith(QStringLiteral("page-")) || !each->isVisible())
            continue;
        at = each->objectName().toStdString();
        ++number;
    }
    expect(at == page, QStringLiteral("the page is one of this person's"));
    return number;
}

/// All who tell the story: one language, one way of working.
struct Team {
    Stage& stage;
    std::string language;
    Hands by;
    std::string company = "CV Kopi " + language;
    Person owner{stage, "Bima Wijaya", language};
    Person bookkeeper{stage, "Dewi Lestari", language};
    Person employee{stage, "Rizky Pratama", language};

    [[nodiscard]] std::string word(const WordTable& table, std::string_view key) const
    {
        return wordIn(language, table, key).toStdString();
    }
    [[nodiscard]] std::string petty() const { return "Petty cash of " + employee.name; }
    /// Thousands as the language groups them.
    [[nodiscard]] std::string thousand(const char* of) const
    {
        return std::string{of} + (language == "zh-CN" || language == "en-US" ? "," : ".");
    }
    /// The amount that was recorded wrongly, as a row says it.
    [[nodiscard]] std::string spent() const { return "\u2212" + thousand("15") + "000"; }
    /// One step in the window that somebody has before them.
    void step(const char* what, const std::function<void()>& act) const
    {
        try {
            stage.teller.step(QString::fromLatin1(what) + QStringLiteral(", in ") + qString(language), act);
        } catch (const ScreenFailure&) {
            stage.teller.pictureOfFailure(); // before the windows of these computers are gone
            throw;
        }
    }
    void turnTo(const char* page, const char* shows) const
    {
        if (by.usesKeys())
            stage.screen.keys("Ctrl+" + std::to_string(numberOf(page)));
        else
            by.press(page);
        stage.screen.waitFor(shows);
    }
    void closeAlert() const
    {
        stage.screen.waitFor("alertDialog");
        by.press("messageClose");
        stage.screen.waitUntilGone("alertDialog");
    }
};

void apply(const Team& team)
{
    auto& screen = team.stage.screen;
    const auto& by = team.by;
    const auto& owner = team.owner;
    team.step("An application for a company", [&] {
        by.press("mode-register");
        by.fill("companyName", team.company);
        by.press("countries");
        screen.waitForFocus("countriesPopover");
        screen.type(Country::name("ID", team.language));
        screen.keys("Return Esc");
        by.fill("personName", owner.name);
        by.fill("email", owner.email);
        by.fill("password", owner.password);
    });
    by.send("register", "Return");
    team.closeAlert();
    team.stage.service.decideOn(QString::fromStdString(team.company), QStringLiteral("approve"));
    team.step("Approved, and signed in", [&] {
        by.press("mode-login");
        by.fill("email", owner.email);
        by.fill("password", owner.password);
        by.send("signIn", "Return");
        screen.waitFor("workspaceView");
    });
}

/// What a new company asks for, by the buttons of its own list.
void setUp(const Team& team)
{
    auto& screen = team.stage.screen;
    const auto& by = team.by;
    team.step("What is to be done first", [&] {
        by.press("noticeSetUp");
        screen.waitFor("accountNotice");
        expect(!screen.offers("setupStep4"), QStringLiteral("an opening needs an account first"));
    });
    team.step("The day on which the books start", [&] {
        by.press("setupStep1");
        by.press("setUpBooks");
        screen.waitForFocus("bookkeepingSetup");
        by.press("setupWithOpenings");
        by.press("setupAgreed");
        by.send("setupConfirm");
        screen.waitUntilGone("bookkeepingSetup");
    });
    team.step("A category from the catalogue", [&] {
        team.turnTo("page-accounts", "accountNotice");
        by.press("setupStep3");
        by.press("categoryCatalogButton");
        screen.waitFor("presetDialog");
        const auto& presets = screen.find<QAbstractItemView>("presetList");
        by.row("presetList", presets.model()->index(0, 0).data().toString().toStdString());
        screen.keys("Space");
        by.press("presetAdd");
        screen.waitUntilGone("presetDialog");
    });
    team.step("The first account", [&] {
        team.turnTo("page-accounts", "accountNotice");
        by.press("setupStep2");
        screen.waitForFocus("accountForm");
        by.fill("accountFormName", bank);
        by.choose("accountAddCurrency", "add-IDR");
        by.send("accountSave");
        screen.waitUntilGone("accountForm");
        screen.waitForText(bank);
    });
    team.step("Its opening balance", [&] {
        team.turnTo("page-ledger", "noticeOpening");
        by.press("noticeOpening");
        screen.waitForFocus("transactionForm");
        by.fill("entryAmount", "500000");
        by.send("entrySave");
        screen.waitUntilGone("transactionForm");
        screen.waitForText(team.thousand("500") + "000");
    });
}

/// The code as the window shows it, taken to the clipboard by its button.
std::string invite(const Team& team, const Person& guest, const char* role)
{
    auto& screen = team.stage.screen;
    const auto& by = team.by;
    std::string code;
    team.step("Somebody is invited", [&] {
        team.turnTo("page-company", "companyPrimary");
        screen.turnTo("memberTable");
        by.press("companyPrimary");
        screen.waitForFocus("inviteName");
        by.fill("inviteName", guest.name);
        by.fill("inviteEmail", guest.email);
        by.pick("inviteRole", roleText(role, team.language).toStdString());
        by.send("inviteConfirm");
        screen.waitFor("invitationCodeDialog");
        by.press("invitationCopy");
        code = screen.read("invitationCode");
    });
    expect(QApplication::clipboard()->text().toStdString() == code, QStringLiteral("what is shown is what is copied"));
    by.press("invitationDone");
    screen.waitUntilGone("invitationCodeDialog");
    return code;
}

/// At the computer of the guest, by the code and the letter.
void activate(const Team& team, Person& guest, const std::string& code)
{
    auto& screen = team.stage.screen;
    const auto& by = team.by;
    const auto& mail = team.stage.mail;
    team.step("The code is brought to the guest's own window", [&] {
        guest.desk.open();
        by.press("mode-join");
        by.fill("email", guest.email);
        by.paste("invitationCode", code);
        by.send("sendCode", "Return");
        screen.waitForFocus("verificationCode");
    });
    team.step("The account is active", [&] {
        screen.waitUntil("a letter with a code comes", [&] { return !mail.latestCode(guest.email).empty(); });
        by.paste("verificationCode", mail.latestCode(guest.email));
        by.send("verifyCode", "Return");
        screen.waitForFocus("personName");
        by.fill("personName", guest.name);
        by.fill("password", guest.password);
        by.send("confirmAccess", "Return");
        screen.waitFor("workspaceView");
    });
}

/// A float of the company's money for the employee, who could not record anything before.
void handOver(const Team& team)
{
    auto& screen = team.stage.screen;
    const auto& by = team.by;
    team.step("Petty cash for the employee", [&] {
        team.turnTo("page-accounts", "newAccountButton");
        by.press("newAccountButton");
        screen.waitForFocus("accountForm");
        by.fill("accountFormName", team.petty());
        by.press("accountPurpose-employee");
        by.pick("accountResponsible", team.employee.name);
        by.pick("accountReturn", bank);
        by.send("accountSave");
        screen.waitUntilGone("accountForm");
        screen.waitForText(team.petty());
    });
    team.step("Money goes into it", [&] {
        team.turnTo("page-ledger", "ledgerTable");
        if (by.usesKeys())
            screen.keys("Ctrl+Shift+T");
        else
            by.choose("newEntryKinds", "newEntry.transfer");
        screen.waitForFocus("transactionForm");
        by.pick("entryAccount", bank);
        by.pick("entryDestination", team.petty());
        by.fill("entryAmount", "200000");
        by.send("entrySave");
        screen.waitUntilGone("transactionForm");
        screen.waitForText(team.thousand("300") + "000");
    });
}

void openEntryForm(const Team& team)
{
    auto& screen = team.stage.screen;
    screen.waitUntil("an entry can be recorded", [&] { return screen.offers("newEntryButton"); });
    team.by.send("newEntryButton", "Ctrl+N");
    screen.waitForFocus("transactionForm");
}

void spend(const Team& team)
{
    auto& screen = team.stage.screen;
    const auto& by = team.by;
    team.step("Back in the window, there is petty cash", [&] {
        team.turnTo("page-ledger", "ledgerTable");
        screen.waitForText(team.thousand("200") + "000");
    });
    team.step("It is spent, with the photo of the receipt", [&] {
        openEntryForm(team);
        by.fill("entryAmount", "15000");
        by.press("entryCategory0");
        by.fill("entryNote", note);
        pastePhoto(screen);
        screen.waitForText(" KB");
        by.send("entrySave");
        screen.waitUntilGone("transactionForm");
        screen.waitForText(note);
    });
    expect(team.stage.books.receiptsOn(QString::fromUtf8(note)) > 0, QStringLiteral("the entry carries its receipt"));
}

/// The owner sees the entry with its receipt and undoes it.
void undo(const Team& team)
{
    auto& screen = team.stage.screen;
    const auto& by = team.by;
    team.step("The owner finds the entry and its receipt", [&] {
        by.row("ledgerTable", team.spent());
        screen.waitFor("detailReceipt");
        expect(screen.says(note), QStringLiteral("the note tells what it was for"));
    });
    team.step("The owner undoes it", [&] {
        by.press("reverseButton");
        screen.waitForFocus("reversalDialog");
        by.fill("reversalReason", reason);
        by.send("reversalConfirm");
        screen.waitForText(team.word(entryFormWords(), "reverse.done"));
        by.press("reversalCancel");
        screen.waitUntilGone("reversalDialog");
    });
}

/// The employee sees that, and records the right one.
void recordAgain(const Team& team)
{
    auto& screen = team.stage.screen;
    const auto& by = team.by;
    team.step("The employee sees that it is undone", [&] { screen.waitFor("entryLink"); });
    team.step("The employee records the right one as a copy of it", [&] {
        by.row("ledgerTable", team.spent());
        screen.keys("Shift+F10");
        by.chooseInMenu("duplicate");
        screen.waitForFocus("transactionForm");
        by.fill("entryAmount", "22500");
        by.send("entrySave");
        screen.waitUntilGone("transactionForm");
        screen.waitForText(team.thousand("177") + "500");
    });
}

/// Everything but the sight of the account.
void takeTheRightAway(const Team& team)
{
    auto& screen = team.stage.screen;
    const auto& by = team.by;
    team.step("The owner takes rights away, one by one", [&] {
        team.turnTo("page-company", "memberTable");
        by.row("memberTable", team.employee.name);
        const auto& rights = *screen.find<QAbstractItemView>("grantMatrix").model();
        int row = 0;
        while (row < rights.rowCount() && rights.headerData(row, Qt::Vertical).toString() != qString(team.petty()))
            ++row;
        expect(row < rights.rowCount(), QStringLiteral("the petty cash has a row of rights"));
        int taken = 0;
        for (int column = rights.columnCount() - 1; column > 0; --column) {
            if (rights.index(row, column).data(Qt::CheckStateRole).toInt() != Qt::Checked)
                continue;
            by.tick("grantMatrix", row, column);
            ++taken;
        }
        expect(taken > 0, QStringLiteral("there was a right to record"));
        by.press("memberSave");
        screen.waitUntil("it is saved", [&] { return !screen.offers("memberSave"); });
    });
}

void openAgain(const Team& team, Person& person)
{
    auto& screen = team.stage.screen;
    team.step("Closed and opened again: still signed in", [&] {
        person.desk.open();
        screen.waitFor("workspaceView");
        expect(screen.read("memberButton").find(person.name) != std::string::npos, QStringLiteral("as before"));
    });
}

}

void tellOfTheFirstDay(Stage& stage, const std::string& language, Hand hand)
{
    auto& screen = stage.screen;
    stage.window.hide();
    Team team{.stage = stage, .language = language, .by = Hands{screen, hand}};
    auto& owner = team.owner.desk;
    auto& bookkeeper = team.bookkeeper.desk;
    auto& employee = team.employee.desk;
    owner.open();
    apply(team);
    setUp(team);
    const auto bookkeepersCode = invite(team, team.bookkeeper, "finance");
    const auto employeesCode = invite(team, team.employee, "employee");
    owner.rest();
    activate(team, team.bookkeeper, bookkeepersCode);
    bookkeeper.rest();
    activate(team, team.employee, employeesCode);
    team.turnTo("page-ledger", "ledgerNotice");
    expect(!screen.offers("newEntryButton"), QStringLiteral("without an account nothing can be recorded"));
    employee.rest();
    owner.goOn();
    handOver(team);
    owner.rest();
    employee.goOn();
    spend(team);
    employee.rest();
    owner.goOn();
    undo(team);
    owner.rest();
    employee.goOn();
    recordAgain(team);
    expect(screen.offers("newEntryButton"), QStringLiteral("the employee may still record"));
    employee.rest();
    owner.goOn();
    takeTheRightAway(team);
    owner.rest();
    employee.goOn();
    team.step("Back in the window, nothing can be recorded any more", [&] {
        screen.waitUntil("recording is not offered", [&] { return !screen.offers("newEntryButton"); });
        expect(screen.says(team.thousand("22") + "500"), QStringLiteral("what may still be seen is shown"));
    });
    employee.close();
    owner.close();
    bookkeeper.close();
    openAgain(team, team.employee);
    team.turnTo("page-ledger", "ledgerTable");
    team.by.row("ledgerTable", team.thousand("22") + "500");
    expect(!screen.offers("newEntryButton"), QStringLiteral("the right is still gone"));
    employee.close();
    openAgain(team, team.bookkeeper);
    bookkeeper.close();
    openAgain(team, team.owner);
    owner.close();
    expect(stage.books.brokenBalances() == 0, QStringLiteral("every balance equals its legs"));
}

#include "Tests/EndToEnd/MainJob.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>
#include <QUuid>

#include "LedgerCore/Domain/Records/DemoIdentity.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerUI/Theme/Theme.h"
#include "Tallyfold/MainWindow.h"
#include "Tests/EndToEnd/BooksOnDisk.h"
#include "Tests/EndToEnd/ServiceChild.h"
#include "Tests/EndToEnd/StoryTeller.h"

namespace {

constexpr auto network =
    "Unable to connect. Check the service address and your network. The current data has not been refreshed.";
constexpr auto wrongPassword = "Your session has expired or your sign-in details are incorrect. Please sign in again.";
constexpr auto address = "Enter an HTTPS service address. HTTP is allowed for local development.";

QString english(const char* text)
{
    return QString::fromUtf8(text);
}

}

MainJob::MainJob(StoryTeller& teller, ServiceChild& service, QString database, MainWindow& window)
    : m_teller(teller), m_service(service), m_database(std::move(database)), m_window(window),
      m_note(QStringLiteral("Courier to the customs office %1").arg(QUuid::createUuid().toString(QUuid::Id128).left(8)))
{
}

void MainJob::run()
{
    readTheSignInScreen();
    findTheService();
    meetAServiceThatIsNotThere();
    enterTheDemonstration();
    lookAround();
    makeMistakesInTheForm();
    recordAnExpense();
    reverseIt();
    seeItInEachLanguage();
    seeItSmallAndDark();
    comeBackWithThePassword();
}

void MainJob::readTheSignInScreen()
{
    for (const auto tag : AppLanguage::supportedLocales) {
        m_teller.step(QStringLiteral("Sign-in screen in ") + QString::fromStdString(std::string{tag}),
                      [&] { chooseLanguageAtSignIn(std::string{tag}); });
    }
    chooseLanguageAtSignIn("en-US");
}

void MainJob::findTheService()
{
    m_teller.step(QStringLiteral("A service address that is not allowed"), [&] {
        m_teller.click(QStringLiteral("addressFold"));
        m_teller.fill(QStringLiteral("serviceAddress"), QStringLiteral("http://192.168.1.10"));
        m_teller.fill(QStringLiteral("email"), QStringLiteral("somebody@example.com"));
        m_teller.fill(QStringLiteral("password"), QStringLiteral("a secret"));
        m_teller.press(Qt::Key_Return);
        waitForAlert(english(address));
    });
    m_teller.click(QStringLiteral("messageClose"));
    m_teller.step(QStringLiteral("The address of the service"),
                  [&] { m_teller.fill(QStringLiteral("serviceAddress"), m_service.address()); });
}

void MainJob::meetAServiceThatIsNotThere()
{
    m_teller.step(QStringLiteral("The service is not running"), [&] {
        expect(m_service.stop(), QStringLiteral("the ledger service ends cleanly"));
        m_teller.click(QStringLiteral("signIn"));
        waitForAlert(english(network));
    });
    m_teller.click(QStringLiteral("messageClose"));
    expect(m_teller.visible<QLineEdit>(QStringLiteral("email")).text() == QStringLiteral("somebody@example.com") &&
               m_teller.visible<QLineEdit>(QStringLiteral("password")).text() == QStringLiteral("a secret"),
           QStringLiteral("what was typed stays"));
    expect(m_service.start(), QStringLiteral("the ledger service starts again"));
}

void MainJob::enterTheDemonstration()
{
    m_teller.step(QStringLiteral("Enter the demonstration"), [&] {
        m_teller.chooseFrom(QStringLiteral("demonstration"), QStringLiteral("profile-finance"));
        m_teller.visible(QStringLiteral("ledgerTable"));
        m_teller.waitUntil(QStringLiteral("entries are listed"), [&] { return entriesShown() > 0; });
    });
}

void MainJob::lookAround()
{
    m_teller.step(QStringLiteral("Choose an entry"), [&] {
        auto& table = m_teller.visible<QAbstractItemView>(QStringLiteral("ledgerTable"));
        table.setFocus();
        m_teller.press(Qt::Key_Home, Qt::ControlModifier);
        m_teller.press(Qt::Key_Down);
        m_teller.visible(QStringLiteral("detailAmount"));
    });
    m_teller.step(QStringLiteral("Search"), [&] {
        const auto all = entriesShown();
        m_teller.press(Qt::Key_F, Qt::ControlModifier);
        m_teller.type(QStringLiteral("electricity"));
        m_teller.waitUntil(QStringLiteral("fewer entries are listed"), [&] { return entriesShown() < all; });
    });
    m_teller.press(Qt::Key_Escape);
}

void MainJob::makeMistakesInTheForm()
{
    m_teller.step(QStringLiteral("A new entry without an amount"), [&] {
        m_teller.press(Qt::Key_N, Qt::ControlModifier);
        m_teller.waitForFocusIn(QStringLiteral("transactionForm"));
        m_teller.press(Qt::Key_Return, Qt::ControlModifier);
        m_teller.waitForText(QStringLiteral("Enter an amount"));
    });
    m_teller.step(QStringLiteral("The other separators"), [&] {
        m_teller.fill(QStringLiteral("entryAmount"), QStringLiteral("1.234,56"));
        m_teller.press(Qt::Key_Return, Qt::ControlModifier);
        m_teller.waitForText(QStringLiteral("Invalid amount format"));
    });
    m_teller.step(QStringLiteral("Beyond the limit"), [&] {
        m_teller.fill(QStringLiteral("entryAmount"), QStringLiteral("90000000000.01"));
        m_teller.press(Qt::Key_Return, Qt::ControlModifier);
        m_teller.waitForText(QStringLiteral("The amount exceeds the supported range."));
    });
    const BooksOnDisk books{m_database};
    expect(books.entriesNoted(m_note) == 0, QStringLiteral("a refused draft leaves the books alone"));
}

void MainJob::recordAnExpense()
{
    const auto before = entriesShown();
    m_teller.step(QStringLiteral("An expense by keyboard alone"), [&] {
        m_teller.fill(QStringLiteral("entryAmount"), QStringLiteral("185000"));
        m_teller.press(Qt::Key_Tab);
        m_teller.press(Qt::Key_Space);
        m_teller.waitForText(QStringLiteral("›"));
        while (QApplication::focusWidget()->objectName() != QStringLiteral("entryNote"))
            m_teller.press(Qt::Key_Tab);
        m_teller.type(m_note);
    });
    m_teller.step(QStringLiteral("Recorded"), [&] {
        m_teller.press(Qt::Key_Return, Qt::ControlModifier);
        m_teller.waitUntilGone(QStringLiteral("transactionForm"));
        m_teller.waitUntil(QStringLiteral("the entry is listed"), [&] { return entriesShown() == before + 1; });
        m_teller.waitForText(m_note);
    });
    const BooksOnDisk books{m_database};
    expect(books.entriesNoted(m_note) == 1, QStringLiteral("the entry is in the books once"));
    expect(books.brokenBalances() == 0, QStringLiteral("every balance equals its legs"));
}

void MainJob::reverseIt()
{
    const auto before = entriesShown();
    m_teller.step(QStringLiteral("Reverse it"), [&] {
        m_teller.click(QStringLiteral("reverseButton"));
        m_teller.waitForFocusIn(QStringLiteral("reversalDialog"));
        m_teller.type(QStringLiteral("Recorded on the wrong account"));
    });
    m_teller.step(QStringLiteral("The linked pair"), [&] {
        m_teller.press(Qt::Key_Return, Qt::ControlModifier);
        m_teller.waitUntil(QStringLiteral("the reversal is listed"), [&] { return entriesShown() == before + 1; });
        m_teller.click(QStringLiteral("reversalCancel"));
        m_teller.waitUntilGone(QStringLiteral("reversalDialog"));
        m_teller.visible(QStringLiteral("entryLink"));
    });
    const BooksOnDisk books{m_database};
    expect(books.entriesNoted(QStringLiteral("Recorded on the wrong account")) >= 1,
           QStringLiteral("the reversal is in the books"));
    expect(books.brokenBalances() == 0, QStringLiteral("every balance equals its legs"));
}

void MainJob::seeItInEachLanguage()
{
    for (const auto* tag : {"zh-CN", "id-ID", "vi-VN", "en-US"}) {
        m_teller.step(QStringLiteral("The ledger in ") + QString::fromUtf8(tag), [&] {
            m_teller.chooseFrom(QStringLiteral("memberButton"), QStringLiteral("language-") + QString::fromUtf8(tag));
        });
    }
}

void MainJob::seeItSmallAndDark()
{
    m_teller.step(QStringLiteral("The smallest window"), [&] { m_window.resize(m_window.minimumSize()); });
    m_teller.step(QStringLiteral("The smallest window in the dark"),
                  [&] { Theme::current().install(ColorScheme::dark); });
    m_window.resize(1160, 760);
    m_teller.step(QStringLiteral("The ledger in the dark"), [&] { QTest::qWait(0); });
    Theme::current().install(ColorScheme::light);
}

void MainJob::comeBackWithThePassword()
{
    m_teller.step(QStringLiteral("Sign out"), [&] {
        m_teller.chooseFrom(QStringLiteral("memberButton"), QStringLiteral("signOut"));
        m_teller.visible(QStringLiteral("signInView"));
    });
    m_teller.step(QStringLiteral("A wrong password"), [&] {
        m_teller.fill(QStringLiteral("email"), QStringLiteral("dewi.anggraini@en.demo.tallyfold.example"));
        m_teller.fill(QStringLiteral("password"), QStringLiteral("not this one"));
        m_teller.press(Qt::Key_Return);
        waitForAlert(english(wrongPassword));
    });
    m_teller.click(QStringLiteral("messageClose"));
    m_teller.step(QStringLiteral("Sign in again with the demonstration's e-mail and password"), [&] {
        m_teller.fill(QStringLiteral("password"), QString::fromStdString(std::string{DemoIdentity::password}));
        m_teller.press(Qt::Key_Return);
        m_teller.visible(QStringLiteral("ledgerTable"));
    });
    m_teller.step(QStringLiteral("The entry is still there"), [&] {
        m_teller.press(Qt::Key_F, Qt::ControlModifier);
        m_teller.type(m_note);
        m_teller.waitUntil(QStringLiteral("only the entry is listed"), [&] { return entriesShown() == 1; });
    });
}

void MainJob::chooseLanguageAtSignIn(const std::string& tag)
{
    auto& choice = m_teller.visible<QComboBox>(QStringLiteral("languageChoice"));
    choice.setFocus();
    m_teller.press(Qt::Key_Home);
    for (const auto each : AppLanguage::supportedLocales) {
        if (each == tag)
            return;
        m_teller.press(Qt::Key_Down);
    }
}

void MainJob::waitForAlert(const QString& text)
{
    m_teller.visible(QStringLiteral("alertDialog"));
    m_teller.waitForText(text);
}

int MainJob::entriesShown() const
{
    const auto* const table = m_window.findChild<QAbstractItemView*>(QStringLiteral("ledgerTable"));
    return table && table->model() ? table->model()->rowCount() : 0;
}

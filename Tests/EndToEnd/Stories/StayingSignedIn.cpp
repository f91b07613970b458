#include "LedgerCore/Client/testing/PrivateKeyring.h"
#include "Tallyfold/MainWindow.h"
#include "Tests/EndToEnd/Stage/Desk.h"
#include "Tests/EndToEnd/Story.h"

// One person at one computer whose keyring is open, is locked, is opened again, and is gone in the end.

namespace {

constexpr auto company = "UD Kunci Rumah";
constexpr auto owner = "ayu@kunci.example";
constexpr auto password = "a secret of Ayu";
constexpr auto unread = "The saved session on this device could not be read.";
constexpr auto unkept = "The system keychain is unavailable. This sign-in is stored only in memory";
constexpr auto unremoved = "the saved session on this device could not be removed.";
constexpr auto expired = "Your session has expired";

struct Home {
    Stage& stage;
    PrivateKeyring& keyring;
    Desk desk;
    int before = 0; // sessions of others

    [[nodiscard]] int kept() const { return keyring.itemCount(stage.service.address()); }
    /// What the service still takes for sessions of this person.
    void expectSessions(int count, const char* why) const
    {
        stage.screen.waitUntil(why, [&] { return stage.books.openSessions() - before == count; });
    }
    void signIn() const
    {
        stage.screen.fill("email", owner);
        stage.screen.fill("password", password);
        stage.screen.keys("Return");
    }
    void openAgain(const char* what)
    {
        stage.teller.step(QString::fromUtf8(what), [&] {
            desk.open();
            stage.screen.waitFor("workspaceView");
            expect(stage.screen.says(company), QStringLiteral("the company is open"));
        });
    }
    /// Opens the window, which says that nothing could be read, and works without a keyring until it is closed.
    void workWithoutKeyring(const QString& what)
    {
        desk.open();
        stage.readAlert(what + QStringLiteral(": the window says so"), unread);
        signIn();
        stage.readAlert(what + QStringLiteral(": signed in until it is closed"), unkept);
        stage.screen.waitFor("workspaceView");
    }
};

void workWithAnOpenKeyring(Home& home)
{
    home.desk.open();
    home.stage.teller.step(QStringLiteral("Signed in, with a keyring that is open"), [&] {
        home.signIn();
        home.stage.screen.waitFor("workspaceView");
        home.stage.screen.waitUntil("the keyring has the session", [&] { return home.kept() == 1; });
    });
    home.desk.close();
    home.openAgain("Closed and opened again: still signed in");
    home.desk.close();
    home.expectSessions(1, "one session is kept for the next start");
}

void workWithALockedKeyring(Home& home)
{
    home.keyring.lock();
    home.workWithoutKeyring(QStringLiteral("The keyring is locked"));
    home.expectSessions(2, "the one in the keyring and the one of the window");
    home.desk.close();
    home.expectSessions(1, "what could not be kept ends with the window");
    home.keyring.unlock();
    home.openAgain("The keyring is open again: signed in as before it was locked");
}

/// Signed out at the service in any case; what is left in the keyring opens nothing any more and goes at the next
/// start.
void signOutBeforeALockedKeyring(Home& home)
{
    home.keyring.lock();
    home.stage.screen.choose("memberButton", "signOut");
    home.stage.readAlert(QStringLiteral("Signed out while the keyring is locked"), unremoved);
    home.desk.close();
    home.expectSessions(0, "the service has ended the session");
    home.keyring.unlock();
    expect(home.kept() == 1, QStringLiteral("the keyring still has it"));
    home.desk.open();
    home.stage.readAlert(QStringLiteral("What was left behind opens nothing"), expired);
    home.stage.screen.waitUntil("the keyring is cleared", [&] { return home.kept() == 0; });
    home.desk.close();
}

}

void tellOfStayingSignedIn(Stage& stage)
{
    stage.service.foundCompany(QString::fromUtf8(company), QString::fromUtf8(owner), QString::fromUtf8(password));
    stage.window.hide();
    Home home{.stage = stage,
              .keyring = *stage.keyring,
              .desk = Desk{stage.service.address().toStdString(), stage.screen, {.hasKeyring = true}},
              .before = stage.books.openSessions()};
    workWithAnOpenKeyring(home);
    workWithALockedKeyring(home);
    home.stage.screen.waitFor("workspaceView");
    signOutBeforeALockedKeyring(home);
    home.keyring.remove();
    home.workWithoutKeyring(QStringLiteral("There is no keyring"));
    home.desk.close();
    home.expectSessions(0, "what could not be kept ends with the window");
    expect(home.keyring.prompts() == 0, QStringLiteral("nobody was asked to open a keyring"));
}

#include "LedgerCore/Domain/Records/DemoIdentity.h"
#include "Tests/EndToEnd/Story.h"

namespace {

constexpr auto wrongPassword = "Your session has expired or your sign-in details are incorrect. Please sign in again.";

}

void tellOfComingBack(Stage& stage)
{
    auto& screen = stage.screen;
    stage.enterDemonstration("finance");
    const auto entries = stage.entriesShown();
    // As it stands in the side bar, with the invisible places where it may break.
    const auto credentials = screen.read("demonstrationCredentials");
    const auto email = credentials.substr(0, credentials.find('\n'));
    stage.teller.step(QStringLiteral("Sign out"), [&] { stage.signOut(); });
    stage.teller.step(QStringLiteral("A wrong password"), [&] {
        screen.fill("email", email);
        screen.fill("password", "not this one");
        screen.keys("Return");
    });
    stage.readAlert(QStringLiteral("It is refused"), wrongPassword);
    stage.teller.step(QStringLiteral("Sign in again with the demonstration's e-mail and password"), [&] {
        screen.fill("password", DemoIdentity::password);
        screen.keys("Return");
        screen.waitFor("ledgerTable");
        screen.waitUntil("the same entries are listed", [&] { return stage.entriesShown() == entries; });
    });
}

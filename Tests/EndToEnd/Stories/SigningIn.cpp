#include <QComboBox>
#include <QLineEdit>

#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "Tests/EndToEnd/Story.h"

namespace {

constexpr auto notAllowed = "Enter an HTTPS service address. HTTP is allowed for local development.";
constexpr auto notThere = "Unable to connect. Check the service address and your network. The current data has not "
                          "been refreshed.";

void readItInEachLanguage(Stage& stage)
{
    for (const auto tag : AppLanguage::supportedLocales) {
        const auto name = InterfaceLanguage::nativeName(tag).toStdString();
        stage.teller.step(QStringLiteral("Sign-in screen in ") + qString(tag),
                          [&] { stage.screen.pick("languageChoice", name); });
    }
    stage.screen.pick("languageChoice", "English");
}

void mistypeTheAddress(Stage& stage)
{
    auto& screen = stage.screen;
    stage.teller.step(QStringLiteral("A service address that is not allowed"), [&] {
        screen.press("addressFold");
        screen.fill("serviceAddress", "http://192.168.1.10");
        screen.fill("email", "somebody@example.com");
        screen.fill("password", "a secret");
        screen.keys("Return");
    });
    stage.readAlert(QStringLiteral("What is wrong with it"), notAllowed);
    stage.teller.step(QStringLiteral("The address of the service"), [&] { stage.findTheService(); });
}

void meetAServiceThatIsNotThere(Stage& stage)
{
    auto& screen = stage.screen;
    stage.teller.step(QStringLiteral("The service is not running"), [&] {
        expect(stage.service.stop(), QStringLiteral("the ledger service ends cleanly"));
        screen.press("signIn");
    });
    stage.readAlert(QStringLiteral("No answer"), notThere);
    expect(screen.read("email") == "somebody@example.com" &&
               screen.find<QLineEdit>("password").text() == QStringLiteral("a secret"),
           QStringLiteral("what was typed stays"));
    expect(stage.service.start(), QStringLiteral("the ledger service starts again"));
}

}

void tellOfSigningIn(Stage& stage)
{
    readItInEachLanguage(stage);
    mistypeTheAddress(stage);
    meetAServiceThatIsNotThere(stage);
    stage.teller.step(QStringLiteral("Enter the demonstration"), [&] { stage.enterDemonstration("finance"); });
}

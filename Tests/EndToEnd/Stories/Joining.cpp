#include <QClipboard>
#include <QGuiApplication>

#include "Tests/EndToEnd/Stage/Colleague.h"
#include "Tests/EndToEnd/Story.h"

namespace {

constexpr auto owner = "dewi@lentera.example";
constexpr auto ownersPassword = "a secret of Dewi";
constexpr auto company = "PT Lentera Niaga";
constexpr auto rizky = "rizky@lentera.example";
constexpr auto firstPassword = "a secret of Rizky";
constexpr auto secondPassword = "another of Rizky's";
constexpr auto thirdPassword = "the third of Rizky";

/// Waits for a letter newer than the `before` that had come, and gives its code.
std::string mailedCode(Stage& stage, int before)
{
    stage.screen.waitUntil("a letter with a code comes", [&] { return stage.mail.codesTo(rizky) > before; });
    return stage.mail.latestCode(rizky);
}

void paste(Stage& stage, const std::string& text)
{
    QGuiApplication::clipboard()->setText(QString::fromStdString(text));
    stage.screen.keys("Ctrl+V");
}

void activate(Stage& stage, const std::string& code)
{
    auto& screen = stage.screen;
    const int before = stage.mail.codesTo(rizky);
    stage.teller.step(QStringLiteral("A wrong activation code"), [&] {
        screen.press("mode-join");
        screen.fill("email", rizky);
        screen.fill("invitationCode", "WRONG-CODE");
        screen.keys("Return");
        screen.waitForText("The activation code is invalid, expired, or does not match your email.");
    });
    stage.teller.step(QStringLiteral("The code that the owner handed over"), [&] {
        screen.press("invitationCode");
        screen.keys("Ctrl+A");
        paste(stage, code + "\n");
        screen.keys("Return");
        screen.waitForFocus("verificationCode");
    });
    const auto mailed = mailedCode(stage, before);
    stage.teller.step(QStringLiteral("A mistyped code from the mail"), [&] {
        screen.type(mailed == "000000" ? "000001" : "000000");
        screen.keys("Return");
        screen.waitForText("The code is wrong or has expired.");
    });
    stage.teller.step(QStringLiteral("The code from the mail, pasted in one go"), [&] {
        screen.keys("Ctrl+A");
        paste(stage, " " + mailed + " ");
        screen.keys("Return");
        screen.waitForFocus("personName");
    });
    stage.teller.step(QStringLiteral("Name and password, and in"), [&] {
        screen.type("Rizky Pratama");
        screen.keys("Tab");
        screen.type(firstPassword);
        screen.keys("Return");
        screen.waitFor("workspaceView");
        expect(screen.says(company), QStringLiteral("the company of the invitation is open"));
    });
}

void forgetThePassword(Stage& stage)
{
    auto& screen = stage.screen;
    const int before = stage.mail.codesTo(rizky);
    stage.teller.step(QStringLiteral("Forgot the password"), [&] {
        screen.press("forgotPassword");
        screen.keys("Return");
        screen.waitForFocus("verificationCode");
    });
    const auto mailed = mailedCode(stage, before);
    stage.teller.step(QStringLiteral("A new password"), [&] {
        screen.type(mailed);
        screen.keys("Return");
        screen.waitForFocus("password");
        screen.type(secondPassword);
        screen.keys("Return");
        screen.waitFor("workspaceView");
    });
}

/// Somebody who has a password joins a further company without a mail.
void joinASecondCompany(Stage& stage)
{
    auto& screen = stage.screen;
    Colleague other{stage.service.address().toStdString(), screen};
    stage.service.foundCompany(QStringLiteral("CV Samudra Kopi"), QStringLiteral("bima@samudra.example"),
                               QStringLiteral("a secret of Bima"));
    other.signIn("bima@samudra.example", "a secret of Bima");
    const auto code = other.invite("Rizky Pratama", rizky, "finance");
    stage.teller.step(QStringLiteral("Join a further company with the password"), [&] {
        screen.press("mode-join");
        screen.press("hasPassword");
        screen.fill("invitationCode", code);
        screen.fill("password", secondPassword);
        screen.keys("Return");
        screen.waitFor("workspaceView");
        expect(screen.says("CV Samudra Kopi"), QStringLiteral("the further company is open"));
    });
}

/// From one company to the other by the menu, and a change of the password that is used at the next sign-in.
void goBackAndChangeThePassword(Stage& stage)
{
    auto& screen = stage.screen;
    stage.teller.step(QStringLiteral("The menu of both companies"), [&] {
        screen.keys("Ctrl+Shift+O");
        screen.waitForText(company);
    });
    stage.teller.step(QStringLiteral("Back in the first company"), [&] {
        screen.keys("Down Return");
        screen.waitUntil("the first company is open",
                         [&] { return screen.read("companyButton").find(company) != std::string::npos; });
    });
    stage.teller.step(QStringLiteral("A new password in the settings"), [&] {
        screen.keys("Ctrl+,");
        screen.press("settings-profile");
        screen.fill("currentPassword", secondPassword);
        screen.fill("newPassword", thirdPassword);
        screen.keys("Return");
        screen.waitForText("The password is changed.");
    });
    screen.press("settings-session");
    stage.teller.picture(QStringLiteral("The session"));
    screen.press("settingsSignOut");
    screen.waitFor("signInView");
    stage.teller.step(QStringLiteral("Signed in with the new password"), [&] {
        screen.fill("password", thirdPassword);
        screen.keys("Return");
        screen.waitFor("workspaceView");
    });
}

}

void tellOfJoining(Stage& stage)
{
    stage.service.foundCompany(QString::fromUtf8(company), QString::fromUtf8(owner), QString::fromUtf8(ownersPassword));
    stage.findTheService();
    Colleague dewi{stage.service.address().toStdString(), stage.screen};
    dewi.signIn(owner, ownersPassword);
    activate(stage, dewi.invite("Rizky Pratama", rizky, "finance"));
    stage.signOut();
    forgetThePassword(stage);
    stage.signOut();
    joinASecondCompany(stage);
    goBackAndChangeThePassword(stage);
    stage.signOut();
}

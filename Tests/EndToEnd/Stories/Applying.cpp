#include <QLineEdit>

#include "Tests/EndToEnd/Story.h"

namespace {

constexpr auto email = "huong@halongxanh.example";
constexpr auto password = "a secret of Huong";
constexpr auto pending =
    "Your company application is awaiting platform review. Sign in with this email once it is approved.";
constexpr auto rejected = "Your company application was not approved. Contact the platform for assistance.";
constexpr auto company = "Hạ Long Xanh Trading";

void fillInTheApplication(Stage& stage)
{
    auto& screen = stage.screen;
    screen.press("mode-register");
    screen.keys("Ctrl+A");
    screen.type(company);
    screen.keys("Tab Space");
    screen.waitForFocus("countriesPopover");
    screen.type("viet");
    screen.keys("Return Esc Tab");
    screen.type("Nguyễn Thị Thanh Hương");
    screen.keys("Tab");
    screen.type(email);
    screen.keys("Tab");
    screen.type(password);
}

void signInAsTheApplicant(Stage& stage)
{
    stage.screen.fill("email", email);
    stage.screen.fill("password", password);
    stage.screen.keys("Return");
}

}

void tellOfApplying(Stage& stage)
{
    auto& screen = stage.screen;
    stage.findTheService();
    stage.teller.step(QStringLiteral("Fill in an application for a company"), [&] { fillInTheApplication(stage); });
    screen.keys("Return");
    stage.readAlert(QStringLiteral("It awaits review"), pending);
    stage.teller.step(QStringLiteral("The notice stays above the form"), [&] {
        expect(screen.says("awaits the platform's review"), QStringLiteral("the application is not forgotten"));
        expect(screen.find<QLineEdit>("companyName").text() == QString::fromUtf8(company),
               QStringLiteral("what was typed stays"));
    });
    stage.teller.step(QStringLiteral("Send it a second time"), [&] {
        screen.press("register");
        screen.waitForText("This email is already registered. Please sign in.");
    });
    screen.press("mode-login");
    signInAsTheApplicant(stage);
    stage.readAlert(QStringLiteral("Too early to sign in"), pending);
    stage.service.decideOn(QString::fromUtf8(company), QStringLiteral("reject"));
    screen.keys("Return");
    stage.readAlert(QStringLiteral("Rejected"), rejected);
    stage.service.decideOn(QString::fromUtf8(company), QStringLiteral("approve"));
    stage.teller.step(QStringLiteral("Approved by the operator, and signed in"), [&] {
        signInAsTheApplicant(stage);
        screen.waitFor("workspaceView");
        expect(screen.says(company), QStringLiteral("the company of the application is open"));
    });
    stage.signOut();
}

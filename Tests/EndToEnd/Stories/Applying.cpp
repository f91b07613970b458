#include <QLineEdit>

#include "Tests/EndToEnd/Stage/Applicant.h"
#include "Tests/EndToEnd/Story.h"

namespace {

constexpr Applicant huong{"Hạ Long Xanh Trading", "Nguyễn Thị Thanh Hương", "huong@halongxanh.example",
                          "a secret of Huong"};
constexpr auto pending =
    "Your company application is awaiting platform review. Sign in with this email once it is approved.";
constexpr auto rejected = "Your company application was not approved. Contact the platform for assistance.";

}

void tellOfApplying(Stage& stage)
{
    auto& screen = stage.screen;
    stage.findTheService();
    stage.teller.step(QStringLiteral("Fill in an application for a company"), [&] { huong.fillIn(screen); });
    screen.keys("Return");
    stage.readAlert(QStringLiteral("It awaits review"), pending);
    stage.teller.step(QStringLiteral("The notice stays above the form"), [&] {
        expect(screen.says("awaits the platform's review"), QStringLiteral("the application is not forgotten"));
        expect(screen.find<QLineEdit>("companyName").text() == QString::fromUtf8(huong.company),
               QStringLiteral("what was typed stays"));
    });
    stage.teller.step(QStringLiteral("Send it a second time"), [&] {
        screen.press("register");
        screen.waitForText("This email is already registered. Please sign in.");
    });
    huong.signIn(screen);
    stage.readAlert(QStringLiteral("Too early to sign in"), pending);
    stage.service.decideOn(QString::fromUtf8(huong.company), QStringLiteral("reject"));
    screen.keys("Return");
    stage.readAlert(QStringLiteral("Rejected"), rejected);
    stage.service.decideOn(QString::fromUtf8(huong.company), QStringLiteral("approve"));
    stage.teller.step(QStringLiteral("Approved by the operator, and signed in"), [&] {
        huong.signIn(screen);
        screen.waitFor("workspaceView");
        expect(screen.says(huong.company), QStringLiteral("the company of the application is open"));
    });
    stage.signOut();
}

#include <QLineEdit>
#include <QRegularExpression>

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

QString applicationID(Stage& stage)
{
    const auto listed = stage.service.ask({QStringLiteral("companies"), QStringLiteral("list")});
    for (const auto& line : listed.split(QLatin1Char('\n'))) {
        if (line.contains(QString::fromUtf8(company)))
            return line.section(QLatin1Char('\t'), 0, 0);
    }
    return {};
}

void decide(Stage& stage, const char* decision)
{
    std::ignore = stage.service.ask({QStringLiteral("companies"), QString::fromLatin1(decision)},
                                    {QStringLiteral("--id"), applicationID(stage)});
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
    decide(stage, "reject");
    screen.keys("Return");
    stage.readAlert(QStringLiteral("Rejected"), rejected);
    decide(stage, "approve");
    stage.teller.step(QStringLiteral("Approved by the operator, and signed in"), [&] {
        signInAsTheApplicant(stage);
        screen.waitFor("workspaceView");
        expect(screen.says(company), QStringLiteral("the company of the application is open"));
    });
    stage.signOut();
}

#include "Tallyfold/MainWindow.h"
#include "Tests/EndToEnd/Stage/Desk.h"
#include "Tests/EndToEnd/Story.h"

// An owner applies for a second company, opens it, switches between both and stays signed in.

namespace {

constexpr auto first = "PT Lentera Timur";
constexpr auto second = "CV Teh Melati";
constexpr auto owner = "sari@lentera-timur.example";
constexpr auto password = "a secret of Sari";

void waitForCompany(const ScreenDriver& screen, const char* company)
{
    screen.waitUntil(std::string{company} + " is open", [&] {
        return screen.shows("companyButton") && screen.read("companyButton").find(company) != std::string::npos;
    });
}

void apply(Stage& stage)
{
    auto& screen = stage.screen;
    stage.teller.step(QStringLiteral("An application for a second company"), [&] {
        openCompanies(screen);
        screen.keys("Up Return");
        screen.waitForFocus("applicationName");
        screen.type(second);
        screen.keys("Ctrl+Return");
    });
    stage.readAlert(QStringLiteral("It awaits review, and the first company stays open"),
                    "Your company application is awaiting platform review.");
    waitForCompany(screen, first);
    stage.teller.step(QStringLiteral("The menu says that it waits"), [&] {
        openCompanies(screen);
        expect(screen.says("CV Teh Melati (awaits review)"), QStringLiteral("the application is not forgotten"));
        screen.keys("Esc");
    });
}

void switchTo(Stage& stage, const char* company, const char* keys)
{
    auto& screen = stage.screen;
    stage.teller.step(QStringLiteral("Over to ") + QString::fromUtf8(company), [&] {
        openCompanies(screen);
        screen.keys(keys);
        waitForCompany(screen, company);
    });
}

void openAgain(Stage& stage, Desk& desk, const char* company)
{
    stage.teller.step(QStringLiteral("Closed and opened again, still in ") + QString::fromUtf8(company), [&] {
        desk.close();
        desk.open();
        waitForCompany(stage.screen, company);
    });
}

}

void tellOfASecondCompany(Stage& stage)
{
    auto& screen = stage.screen;
    stage.service.foundCompany(QString::fromUtf8(first), QString::fromUtf8(owner), QString::fromUtf8(password));
    stage.window.hide();
    Desk desk{stage.service.address().toStdString(), screen};
    desk.open();
    screen.fill("email", owner);
    screen.fill("password", password);
    screen.keys("Return");
    waitForCompany(screen, first);
    stage.teller.step(QStringLiteral("A new company's first window leads to its setup by one key"), [&] {
        screen.waitForFocus("noticeSetUp");
        screen.keys("Return");
        screen.waitFor("accountNotice");
        screen.waitForText("Confirm the day on which the books start");
    });
    apply(stage);
    stage.service.decideOn(QString::fromUtf8(second), QStringLiteral("approve"));
    switchTo(stage, second, "Down Down Return");
    openAgain(stage, desk, second);
    switchTo(stage, first, "Down Return");
    openAgain(stage, desk, first);
    stage.teller.step(QStringLiteral("Signed out, and so it stays"), [&] {
        stage.signOut();
        desk.close();
        desk.open();
        screen.waitFor("signInView");
    });
    desk.close();
}

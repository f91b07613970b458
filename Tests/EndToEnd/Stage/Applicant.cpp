#include "Tests/EndToEnd/Stage/Applicant.h"

#include "Tests/EndToEnd/Stage/LossyLine.h"
#include "Tests/EndToEnd/Story.h"

void Applicant::fillIn(ScreenDriver& screen) const
{
    screen.press("mode-register");
    screen.fill("companyName", company);
    screen.keys("Tab Space");
    screen.waitForFocus("countriesPopover");
    screen.type("viet");
    screen.keys("Return Esc Tab");
    screen.type(name);
    screen.keys("Tab");
    screen.type(email);
    screen.keys("Tab");
    screen.type(password);
}

void Applicant::applyInVain(Stage& stage, LossyLine& line) const
{
    auto& screen = stage.screen;
    fillIn(screen);
    stage.teller.step(QStringLiteral("The reply to an application is lost"), [&] {
        line.loseReplyTo("v1/auth/register");
        screen.keys("Return");
        hearOfTheLoss(stage, line);
        expect(screen.read("companyName").find(company) != std::string::npos, QStringLiteral("what was typed stays"));
    });
}

void Applicant::signIn(ScreenDriver& screen) const
{
    screen.press("mode-login");
    screen.fill("email", email);
    screen.fill("password", password);
    screen.keys("Return");
}

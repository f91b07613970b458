#include <tuple>

#include "Tests/EndToEnd/Stage/Applicant.h"
#include "Tests/EndToEnd/Stage/LossyLine.h"
#include "Tests/EndToEnd/Story.h"

// Replies that are lost where a company opens without a review, and at the door of the demonstration: whoever was let
// in without hearing of it comes in by the next try.

namespace {

constexpr Applicant applicant{"Cà Phê Bờ Sông", "Phạm Thị Lan", "lan@bosong.example", "a secret of Lan"};

void restart(Stage& stage, const QString& registration)
{
    expect(stage.service.stop() && stage.service.start(registration), QStringLiteral("the service is back"));
}

/// To apply again would be refused, and takes one of the few tries that the service grants: the password is enough.
void foundOpenly(Stage& stage, LossyLine& line)
{
    auto& screen = stage.screen;
    restart(stage, QStringLiteral("open"));
    applicant.applyInVain(stage, line);
    stage.teller.step(QStringLiteral("The company is there, once, and opens"), [&] {
        applicant.signIn(screen);
        screen.waitFor("workspaceView");
        expect(screen.says(applicant.company), QStringLiteral("the company of the application is open"));
    });
    expect(stage.service.companiesNamed(QString::fromUtf8(applicant.company)) == 1,
           QStringLiteral("one company was founded"));
    stage.signOut();
    restart(stage, QStringLiteral("review"));
}

void enterTheDemonstration(Stage& stage, LossyLine& line)
{
    auto& screen = stage.screen;
    stage.findTheServiceAt(line.address());
    stage.teller.step(QStringLiteral("The reply is lost: entering the demonstration"), [&] {
        line.loseReplyTo("v1/demo");
        screen.choose("demonstration", "profile-finance");
        hearOfTheLoss(stage, line);
        expect(screen.shows("signInView"), QStringLiteral("nobody is signed in"));
    });
    stage.teller.step(QStringLiteral("Asked for again, it opens"), [&] {
        screen.choose("demonstration", "profile-finance");
        screen.waitFor("ledgerTable");
        screen.waitUntil("entries are listed", [&] { return stage.entriesShown() > 0; });
    });
    stage.signOut();
}

}

void tellOfLostWaysIn(Stage& stage)
{
    LossyLine line{stage.service.address()};
    stage.findTheServiceAt(line.address());
    foundOpenly(stage, line);
    enterTheDemonstration(stage, line);
    expect(stage.books.brokenBalances() == 0, QStringLiteral("every balance equals its legs"));
    std::ignore = stage.service.ask({QStringLiteral("verify")}); // stops the story where an invariant is broken
}

#include <tuple>

#include <QUuid>

#include "Tests/EndToEnd/Stage/LossyLine.h"
#include "Tests/EndToEnd/Stage/Typist.h"
#include "Tests/EndToEnd/Story.h"

// The program is killed while an entry is typed or sent. It is recorded once: not lost, not doubled.

namespace {

QString noteOf(const char* what)
{
    return QStringLiteral("%1 %2").arg(QString::fromUtf8(what), QUuid::createUuid().toString(QUuid::Id128).left(8));
}

void expectOnce(Stage& stage, const QString& note)
{
    expect(stage.books.entriesNoted(note) == 1, QStringLiteral("the entry is in the books once"));
    expect(stage.books.draftsNoted(note) == 0, QStringLiteral("nothing is left of its draft"));
}

void dieWhileTyping(Stage& stage)
{
    auto& screen = stage.screen;
    const auto note = noteOf("Parcels");
    Typist typist{stage.service.address(), {.note = note.toStdString()}};
    screen.waitUntil("the service keeps what is typed", [&] { return stage.books.draftsNoted(note) == 1; });
    typist.kill();
    stage.enterDemonstration("finance");
    stage.teller.step(QStringLiteral("Started again, the form offers what was begun"), [&] {
        screen.keys("Ctrl+N");
        screen.waitForFocus("transactionForm");
        screen.waitFor("entryBegun");
    });
    stage.teller.step(QStringLiteral("It goes on where it was"), [&] {
        screen.press("entryBegunContinue");
        screen.waitUntil("the note stands there", [&] { return screen.read("entryNote") == note.toStdString(); });
        screen.waitForText("61,000");
    });
    stage.teller.step(QStringLiteral("Recorded"), [&] {
        screen.keys("Ctrl+Return");
        screen.waitUntilGone("transactionForm");
    });
    expectOnce(stage, note);
    stage.signOut();
}

void dieBeforeItArrives(Stage& stage)
{
    auto& screen = stage.screen;
    const auto note = noteOf("Envelopes");
    LossyLine line{stage.service.address()};
    line.loseRequestTo("v1/transactions");
    Typist typist{line.address(), {.note = note.toStdString(), .isSent = true}};
    screen.waitUntil("the entry is lost on its way",
                     [&] { return line.hasLost() && stage.books.draftsSent(note) == 1; });
    typist.kill();
    expect(stage.books.entriesNoted(note) == 0, QStringLiteral("it did not arrive"));
    stage.teller.step(QStringLiteral("Started again, the entry comes back locked"), [&] {
        stage.enterDemonstration("finance");
        screen.waitFor("transactionForm");
        screen.waitForText("Retry original request");
        expect(!screen.offers("entryAmount"), QStringLiteral("the form is locked"));
    });
    stage.teller.step(QStringLiteral("Sent again, recorded"), [&] {
        screen.press("entrySave");
        screen.waitUntilGone("transactionForm");
    });
    expectOnce(stage, note);
    stage.signOut();
}

void dieBeforeTheReply(Stage& stage)
{
    auto& screen = stage.screen;
    const auto note = noteOf("Stamps");
    LossyLine line{stage.service.address()};
    line.loseReplyTo("v1/transactions");
    Typist typist{line.address(), {.note = note.toStdString(), .isSent = true}};
    screen.waitUntil("the entry is recorded and its reply lost",
                     [&] { return line.hasLost() && stage.books.entriesNoted(note) == 1; });
    typist.kill();
    stage.teller.step(QStringLiteral("Started again, it stands in the ledger and waits for nothing"), [&] {
        stage.enterDemonstration("finance");
        screen.keys("Ctrl+F");
        screen.type(note.toStdString());
        screen.waitUntil("the entry is listed", [&] { return stage.entriesShown() == 1; });
        screen.keys("Ctrl+N");
        screen.waitForFocus("transactionForm");
        settle();
        expect(!screen.shows("entryBegun"), QStringLiteral("nothing is left to go on with"));
    });
    screen.press("entryCancel");
    screen.waitUntilGone("transactionForm");
    expectOnce(stage, note);
}

}

void tellOfSuddenDeath(Stage& stage)
{
    dieWhileTyping(stage);
    dieBeforeItArrives(stage);
    dieBeforeTheReply(stage);
    expect(stage.books.brokenBalances() == 0, QStringLiteral("every balance equals its legs"));
    std::ignore = stage.service.ask({QStringLiteral("verify")}); // stops the story where an invariant is broken
}

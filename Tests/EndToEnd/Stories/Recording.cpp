#include <QUuid>

#include "Tests/EndToEnd/Story.h"

namespace {

void makeMistakes(Stage& stage, const QString& note)
{
    auto& screen = stage.screen;
    stage.teller.step(QStringLiteral("A new entry without an amount"), [&] {
        screen.keys("Ctrl+N");
        screen.waitForFocus("transactionForm");
        screen.keys("Ctrl+Return");
        screen.waitForText("Enter an amount");
    });
    stage.teller.step(QStringLiteral("The other separators"), [&] {
        screen.fill("entryAmount", "1.234,56");
        screen.keys("Ctrl+Return");
        screen.waitForText("Invalid amount format");
    });
    stage.teller.step(QStringLiteral("Beyond the limit"), [&] {
        screen.fill("entryAmount", "90000000000.01");
        screen.keys("Ctrl+Return");
        screen.waitForText("The amount exceeds the supported range.");
    });
    expect(stage.books.entriesNoted(note) == 0, QStringLiteral("a refused draft leaves the books alone"));
}

void recordByKeyboard(Stage& stage, const QString& note)
{
    auto& screen = stage.screen;
    const auto before = stage.entriesShown();
    stage.teller.step(QStringLiteral("An expense by keyboard alone"), [&] {
        screen.fill("entryAmount", "185000");
        screen.keys("Tab Space");
        screen.waitForText("›");
        while (screen.focus() != "entryNote")
            screen.keys("Tab");
        screen.type(note.toStdString());
    });
    stage.teller.step(QStringLiteral("Recorded"), [&] {
        screen.keys("Ctrl+Return");
        screen.waitUntilGone("transactionForm");
        screen.waitUntil("the entry is listed", [&] { return stage.entriesShown() == before + 1; });
        screen.waitForText(note.toStdString());
    });
    expect(stage.books.entriesNoted(note) == 1, QStringLiteral("the entry is in the books once"));
    expect(stage.books.brokenBalances() == 0, QStringLiteral("every balance equals its legs"));
}

}

void tellOfRecording(Stage& stage)
{
    stage.enterDemonstration("finance");
    const auto note =
        QStringLiteral("Courier to the customs office %1").arg(QUuid::createUuid().toString(QUuid::Id128).left(8));
    makeMistakes(stage, note);
    recordByKeyboard(stage, note);
}

#include <QUuid>

#include "Tests/EndToEnd/Story.h"

namespace {

void keepATemplate(Stage& stage, const QString& note)
{
    auto& screen = stage.screen;
    stage.teller.step(QStringLiteral("An expense that comes back every day"), [&] {
        screen.keys("Ctrl+N");
        screen.waitForFocus("transactionForm");
        screen.fill("entryAmount", "61000");
        screen.fill("entryNote", note.toStdString());
        screen.press("entryCategory0");
        screen.press("entryKeepTemplate");
        screen.waitForFocus("templateForm");
    });
    stage.teller.step(QStringLiteral("Due from today on"), [&] {
        screen.pick("templateUnit", "days");
        screen.press("templateFirstDay");
        screen.keys("Down");
        screen.keys("Ctrl+Return");
        screen.waitUntilGone("templateForm");
    });
    stage.teller.step(QStringLiteral("The form is given up"), [&] {
        screen.press("entryCancel");
        screen.press("questionConfirm");
        screen.waitUntilGone("transactionForm");
    });
    expect(stage.books.entriesNoted(note) == 0, QStringLiteral("a template records nothing"));
}

void recordWhatIsDue(Stage& stage, const QString& note)
{
    auto& screen = stage.screen;
    stage.teller.step(QStringLiteral("The ledger says that an entry is due"), [&] {
        screen.waitFor("templatesDue");
        screen.press("templatesDueShow");
        screen.waitFor("templatesDialog");
        screen.waitForText("Due ");
    });
    expect(stage.books.entriesNoted(note) == 0, QStringLiteral("what is due waits for a person"));
    stage.teller.step(QStringLiteral("The form is filled in"), [&] {
        screen.press("templateRecord");
        screen.waitForFocus("transactionForm");
        screen.waitForText("61,000");
    });
    stage.teller.step(QStringLiteral("Recorded, and due no more"), [&] {
        screen.keys("Ctrl+Return");
        screen.waitUntilGone("transactionForm");
        screen.waitUntilGone("templatesDue");
    });
    expect(stage.books.entriesNoted(note) == 1, QStringLiteral("the entry is in the books once"));
    expect(stage.books.brokenBalances() == 0, QStringLiteral("every balance equals its legs"));
}

}

void tellOfTemplates(Stage& stage)
{
    stage.enterDemonstration("finance");
    const auto note = QStringLiteral("Market stall fee %1").arg(QUuid::createUuid().toString(QUuid::Id128).left(8));
    keepATemplate(stage, note);
    recordWhatIsDue(stage, note);
}

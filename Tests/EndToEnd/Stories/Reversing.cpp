#include <QUuid>

#include "Tests/EndToEnd/Story.h"

void tellOfReversing(Stage& stage)
{
    auto& screen = stage.screen;
    stage.enterDemonstration("finance");
    const auto id = QUuid::createUuid().toString(QUuid::Id128).left(8);
    const auto note = QStringLiteral("Recorded twice %1").arg(id);
    const auto reason = QStringLiteral("Recorded on the wrong account %1").arg(id);
    screen.keys("Ctrl+N");
    screen.waitForFocus("transactionForm");
    screen.fill("entryAmount", "42000");
    screen.keys("Tab Space");
    screen.fill("entryNote", note.toStdString());
    screen.keys("Ctrl+Return");
    screen.waitUntilGone("transactionForm");
    screen.waitForText(note.toStdString());

    const auto before = stage.entriesShown();
    stage.teller.step(QStringLiteral("Reverse it"), [&] {
        screen.press("reverseButton");
        screen.waitForFocus("reversalDialog");
        screen.type(reason.toStdString());
    });
    stage.teller.step(QStringLiteral("The linked pair"), [&] {
        screen.keys("Ctrl+Return");
        screen.waitUntil("the reversal is listed", [&] { return stage.entriesShown() == before + 1; });
        screen.press("reversalCancel");
        screen.waitUntilGone("reversalDialog");
        screen.waitFor("entryLink");
    });
    expect(stage.books.entriesNoted(reason) == 1, QStringLiteral("the reversal is in the books once"));
    expect(stage.books.brokenBalances() == 0, QStringLiteral("every balance equals its legs"));
}

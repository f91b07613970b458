#include "Tests/EndToEnd/Story.h"

void tellOfTheLedger(Stage& stage)
{
    auto& screen = stage.screen;
    stage.enterDemonstration("finance");
    stage.teller.step(QStringLiteral("Choose an entry"), [&] {
        screen.find("ledgerTable").setFocus();
        screen.keys("Ctrl+Home Down");
        screen.waitFor("detailAmount");
    });
    const auto all = stage.entriesShown();
    stage.teller.step(QStringLiteral("Search"), [&] {
        screen.keys("Ctrl+F");
        screen.type("electricity");
        screen.waitUntil("fewer entries are listed",
                         [&] { return stage.entriesShown() > 0 && stage.entriesShown() < all; });
    });
    screen.keys("Esc");
    screen.waitUntil("all entries are listed again", [&] { return stage.entriesShown() == all; });
}

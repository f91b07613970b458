#include "LedgerUI/Theme/Theme.h"
#include "Tallyfold/MainWindow.h"
#include "Tests/EndToEnd/Story.h"

void tellOfAccounts(Stage& stage)
{
    auto& screen = stage.screen;
    stage.enterDemonstration("owner");
    stage.teller.step(QStringLiteral("All accounts"), [&] {
        screen.press("page-accounts");
        screen.waitFor("accountTrend");
    });
    stage.teller.step(QStringLiteral("One of them closely"), [&] {
        screen.pressRow("accountTable", "Petty cash");
        screen.waitFor("accountTrend");
    });
    stage.teller.step(QStringLiteral("Sought by its currency"), [&] { screen.fill("accountSearch", "sgd"); });
    const auto usual = stage.window.size();
    stage.teller.step(QStringLiteral("The smallest window"), [&] {
        screen.fill("accountSearch", "");
        stage.window.resize(900, 640);
    });
    stage.teller.step(QStringLiteral("One of them over the list"), [&] {
        screen.find("accountTable").setFocus();
        screen.keys("Home Return");
        screen.waitForFocus("accountDetail");
        Theme::current().install(ColorScheme::dark);
    });
    Theme::current().install(ColorScheme::light);
    stage.teller.step(QStringLiteral("Its entries in the ledger"), [&] {
        stage.window.resize(usual);
        screen.press("accountInLedger");
        screen.waitFor("ledgerTable");
        screen.waitUntil("only its entries are listed", [&] { return stage.entriesShown() > 0; });
    });
}

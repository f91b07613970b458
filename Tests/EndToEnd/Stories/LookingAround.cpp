#include "LedgerUI/Theme/Theme.h"
#include "Tallyfold/MainWindow.h"
#include "Tests/EndToEnd/Story.h"

namespace {

/// Opens a page and looks at each of its tabs.
void lookAt(Stage& stage, const char* page, int tabs)
{
    stage.teller.step(QString::fromLatin1(page), [&] {
        stage.screen.press(std::string{"page-"} + page);
        settle();
    });
    for (int tab = 1; tab < tabs; ++tab)
        stage.teller.step(QStringLiteral("%1, tab %2").arg(QString::fromLatin1(page)).arg(tab + 1), [&] {
            stage.screen.keys("Ctrl+Tab");
            settle();
        });
}

}

void tellOfLookingAround(Stage& stage)
{
    stage.enterDemonstration("owner");
    lookAt(stage, "reports", 4);
    lookAt(stage, "dividends", 3);
    lookAt(stage, "company", 6);
    const auto usual = stage.window.size();
    stage.window.resize(900, 640);
    Theme::current().install(ColorScheme::dark);
    lookAt(stage, "reports", 4);
    lookAt(stage, "dividends", 3);
    lookAt(stage, "company", 6);
    Theme::current().install(ColorScheme::light);
    stage.window.resize(usual);
    stage.signOut();
    stage.findTheService();
    stage.screen.choose("demonstration", "profile-employee");
    stage.screen.waitFor("page-summary");
    lookAt(stage, "summary", 1);
    lookAt(stage, "company", 2);
}

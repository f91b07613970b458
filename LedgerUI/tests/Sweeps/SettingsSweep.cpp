#include <array>

#include "LedgerUI/testing/LedgerPage.h"
#include "LedgerUI/testing/Sweep.h"

namespace {

void signIn(WindowUnderTest& under)
{
    under.openDemonstration(SnapshotBuilder{}.account("bank", {"USD"}).grantAll());
    under.screen.waitFor("workspaceView");
    under.server.replace("GET v1/me/companies", ServerReply::json(R"({"companies":[],"ownedCompanyCount":0})"));
}

void openSettings(WindowUnderTest& under, const char* section)
{
    signIn(under);
    under.screen.keys("Ctrl+,");
    under.screen.press(section);
    under.screen.find(section).setFocus();
}

/// With two companies, of which one has the longest name that the law of some countries asks for.
void openFromCompanyMenu(WindowUnderTest& under, const char* keys, const char* field)
{
    signIn(under);
    under.screen.keys("Ctrl+Shift+O");
    under.screen.waitUntil("the companies are there", [&] { return !under.store.isBusy(); });
    under.screen.keys(keys);
    under.screen.waitForFocus(field);
    under.screen.keys("Ctrl+Return"); // with every message
}

const std::array shown{
    SweptScreen{"Language", ledgerPage, [](auto& under) { openSettings(under, "settings-language"); }},
    SweptScreen{"Profile", ledgerPage,
                [](auto& under) {
                    openSettings(under, "settings-profile");
                    under.screen.press("savePassword"); // with every message
                }},
    SweptScreen{"Receipts", ledgerPage, [](auto& under) { openSettings(under, "settings-receipts"); }},
    SweptScreen{"Session", ledgerPage, [](auto& under) { openSettings(under, "settings-session"); }},
    SweptScreen{"JoinCompany", ledgerPage, [](auto& under) { openFromCompanyMenu(under, "Up Up Return", "joinCode"); }},
    SweptScreen{"ApplyForCompany", ledgerPage,
                [](auto& under) { openFromCompanyMenu(under, "Up Return", "applicationName"); }},
};

}

SWEEP(Settings, shown);

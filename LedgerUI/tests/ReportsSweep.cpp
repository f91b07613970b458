#include <array>

#include "LedgerUI/Screens/Ledger/LedgerView.h"
#include "LedgerUI/Screens/Reports/ReportsView.h"
#include "LedgerUI/testing/ReportSample.h"
#include "LedgerUI/testing/Sweep.h"

namespace {

PageRegistry builtPages()
{
    PageRegistry pages;
    pages.add<LedgerView>(WorkspacePage::ledger);
    pages.add<ReportsView>(WorkspacePage::reports);
    return pages;
}

/// The reports page at one of its tabs.
void openReports(WindowUnderTest& under, const char* tab, const SnapshotBuilder& books = reportSample())
{
    under.openDemonstration(books);
    under.screen.waitFor("ledgerView");
    under.screen.keys("Ctrl+2");
    under.screen.waitFor("reportTabs");
    for (int steps = 0; steps < 6 && !under.screen.shows(tab); ++steps)
        under.screen.keys("Ctrl+Tab");
    under.screen.waitFor(tab);
}

const std::array shown{
    SweptScreen{"ReportsOverview", builtPages, [](auto& under) { openReports(under, "overviewTab"); }},
    SweptScreen{"ReportsWithoutMovement", builtPages,
                [](auto& under) {
                    openReports(under, "overviewTab", SnapshotBuilder{}.account("Petty cash", {"IDR"}).grantAll());
                }},
    SweptScreen{"ReportAccounts", builtPages,
                [](auto& under) {
                    openReports(under, "overviewTab");
                    under.screen.press("reportAccounts");
                    under.screen.waitForFocus("reportAccountsPopover");
                }},
};

}

SWEEP(Reports, shown);

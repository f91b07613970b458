#include <array>

#include "LedgerUI/Screens/Ledger/LedgerView.h"
#include "LedgerUI/Screens/Reports/ReportsView.h"
#include "LedgerUI/Screens/Summary/SummaryView.h"
#include "LedgerUI/testing/ReportSample.h"
#include "LedgerUI/testing/Sweep.h"

namespace {

PageRegistry builtPages()
{
    PageRegistry pages;
    pages.add<SummaryView>(WorkspacePage::summary);
    pages.add<LedgerView>(WorkspacePage::ledger);
    pages.add<ReportsView>(WorkspacePage::reports);
    return pages;
}

/// An employee with a float sees a summary in the place of reports.
void openSummary(WindowUnderTest& under)
{
    auto person = SnapshotBuilder::person("m1", "Rizky Pratama");
    person.permissions.emplace();
    auto books = SnapshotBuilder{}.currentMember(person).employeeAccount("Kas kecil – Rizky", {"IDR"}, "m1").grantAll();
    books.category("meals", "expense", "Overtime meals");
    books.balance("Kas kecil – Rizky", "IDR", 218'750'000);
    books.expense("e1", "2026-11-18", "Kas kecil – Rizky", "IDR", 41'250'000, "meals").note("Makan lembur tim gudang");
    under.openDemonstration(books);
    under.screen.waitFor("ownAccountTable");
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

/// The list of requests that were not confirmed: entries, and a command that has no form.
void openUnconfirmed(WindowUnderTest& under)
{
    under.openDemonstration(reportSample());
    under.screen.waitFor("ledgerView");
    TransactionInput input;
    input.kind = EntryKind::expense;
    input.date = "2026-11-12";
    input.sourceAccountID = "Operating bank";
    input.currency = "IDR";
    input.amountMinor = 438'520'000;
    input.categoryID = "rent";
    input.note = "Sewa gudang November, dibayar lewat transfer antarbank";
    input.idempotencyKey = "first";
    under.store.keepEntry(input, true);
    input.idempotencyKey = "second";
    under.store.keepEntry(input, false);
    DividendCommand command;
    command.action = DividendAction::setVisibility;
    command.date = "2026-11-12";
    command.idempotencyKey = "visible";
    under.store.keepSectionCommand(command);
    under.screen.press("unconfirmedButton");
    under.screen.waitForFocus("unconfirmedDialog");
}

const std::array shown{
    SweptScreen{"UnconfirmedRequests", builtPages, openUnconfirmed},
    SweptScreen{"ReportsOverview", builtPages, [](auto& under) { openReports(under, "overviewTab"); }},
    SweptScreen{"Summary", builtPages, openSummary},
    SweptScreen{"ReportsIncome", builtPages, [](auto& under) { openReports(under, "incomeTab"); }},
    SweptScreen{"ReportsMatrix", builtPages, [](auto& under) { openReports(under, "matrixTab"); }},
    SweptScreen{"ReportsWithoutMovement", builtPages,
                [](auto& under) {
                    openReports(under, "overviewTab", SnapshotBuilder{}.account("Petty cash", {"IDR"}).grantAll());
                }},
    SweptScreen{"ReportsFunds", builtPages, [](auto& under) { openReports(under, "movementsTab"); }},
    SweptScreen{"ReportExport", builtPages,
                [](auto& under) {
                    openReports(under, "incomeTab");
                    under.screen.keys("Ctrl+E");
                    under.screen.waitForFocus("reportExportDialog");
                }},
    SweptScreen{"ReportPrint", builtPages,
                [](auto& under) {
                    openReports(under, "matrixTab");
                    under.screen.keys("Ctrl+P");
                    under.screen.waitForFocus("printDialog");
                    under.screen.waitUntil("the pages are there", [&] { return under.screen.offers("printSave"); });
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

#include <array>

#include "LedgerUI/testing/LedgerPage.h"
#include "LedgerUI/testing/Sweep.h"

namespace {

SnapshotBuilder books()
{
    SnapshotBuilder builder;
    builder.account("Operating bank", {"IDR", "USD"}).account("Singapore", {"USD", "SGD"}).grantAll();
    builder.category("power", "expense", "Electricity");
    return builder.expense("e1", "2026-11-19", "Operating bank", "IDR", 438'520'000, "power").note("November");
}

void openExport(WindowUnderTest& under)
{
    under.openDemonstration(books());
    under.screen.waitFor("ledgerTable");
    under.screen.keys("Ctrl+E");
    under.screen.waitForFocus("ledgerExportDialog");
}

const std::array shown{
    SweptScreen{"Export", ledgerPage,
                [](auto& under) {
                    openExport(under);
                    under.screen.fill("exportFirstDay", "x");
                }},
    SweptScreen{"ExportShown", ledgerPage,
                [](auto& under) {
                    under.openDemonstration(books());
                    under.screen.fill("ledgerSearch", "november");
                    under.screen.waitForText("Clear all");
                    under.screen.keys("Ctrl+E");
                    under.screen.waitForFocus("ledgerExportDialog");
                    under.screen.waitUntil("it is counted", [&] { return !under.screen.read("exportFacts").empty(); });
                }},
    SweptScreen{"ExportAccounts", ledgerPage,
                [](auto& under) {
                    openExport(under);
                    under.screen.press("exportAccounts");
                }},
};

}

SWEEP(Exports, shown);

#include <array>
#include <filesystem>
#include <fstream>

#include <QTemporaryDir>

#include "LedgerCore/Domain/Imports/LedgerImportCSV.h"
#include "LedgerUI/Screens/Imports/ImportDialog.h"
#include "LedgerUI/testing/LedgerPage.h"
#include "LedgerUI/testing/Sweep.h"

namespace {

void openImport(WindowUnderTest& under)
{
    SnapshotBuilder builder;
    builder.account("Bank operasional Jakarta", {"IDR", "USD"}).account("Savings", {"IDR"}).grantAll();
    builder.permissions({"viewCompany", "manageCompany"}).category("sales", "income", "Sales");
    under.openDemonstration(builder);
    under.screen.press("importLedgerButton");
    under.screen.waitForFocus("importDialog");
}

void choose(WindowUnderTest& under, const std::string& rows)
{
    openImport(under);
    const QTemporaryDir folder; // several sweeps may run at once
    const auto path = std::filesystem::path{folder.path().toStdString()} / "import-sweep.csv";
    std::ofstream{path, std::ios::binary} << LedgerImportCSV::templateText() << rows;
    under.screen.find<ImportDialog>("importDialog").chooseFile(path);
    under.screen.waitFor("importTable");
}

constexpr auto good = "2026-01-02,Income,Bank operasional Jakarta,IDR,250000,Sales,January,,,\r\n"
                      "2026-01-04,Transfer,Bank operasional Jakarta,IDR,100000,,,Savings,,\r\n";

const std::array shown{
    SweptScreen{"Import", ledgerPage, openImport},
    SweptScreen{"ImportIssues", ledgerPage,
                [](auto& under) {
                    std::string rows;
                    for (int row = 0; row < 10; ++row)
                        rows += "2026-02-30,Sale,Bank,SGD,1.250.000,Ongkir,,,,\r\n";
                    choose(under, rows);
                }},
    SweptScreen{"ImportPlan", ledgerPage, [](auto& under) { choose(under, good); }},
    SweptScreen{"ImportProgress", ledgerPage,
                [](auto& under) {
                    under.server.answer("POST v1/transactions", ServerReply::json(R"({"id":"t"})"));
                    under.server.answer("POST v1/transactions", ServerReply::parked());
                    choose(under, good);
                    under.screen.press("importStart");
                    under.screen.press("questionConfirm");
                    under.screen.waitFor("importProgress");
                }},
    SweptScreen{"ImportStopped", ledgerPage,
                [](auto& under) {
                    under.server.answer("POST v1/transactions", ServerReply::json(R"({"id":"t"})"));
                    under.server.answer("POST v1/transactions", ServerReply::dropped());
                    choose(under, good);
                    under.screen.press("importStart");
                    under.screen.press("questionConfirm");
                    under.screen.waitUntil("it has stopped", [&under] {
                        return !under.screen.shows("importTable") && !under.screen.shows("importProgress");
                    });
                }},
};

}

SWEEP(Imports, shown);

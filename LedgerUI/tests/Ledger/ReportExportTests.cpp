#include "LedgerUI/Screens/Reports/ReportExportDialog.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include <QAction>
#include <QClipboard>
#include <QCoro/QCoroTask>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "LedgerUI/Presentation/Reports/Grids/ReportGridModel.h"
#include "LedgerUI/Screens/Ledger/LedgerView.h"
#include "LedgerUI/Screens/Reports/ReportTable.h"
#include "LedgerUI/Screens/Reports/ReportsView.h"
#include "LedgerUI/testing/ReportSample.h"
#include "LedgerUI/testing/WindowUnderTest.h"

namespace {

PageRegistry builtPages()
{
    PageRegistry pages;
    pages.add<LedgerView>(WorkspacePage::ledger);
    pages.add<ReportsView>(WorkspacePage::reports);
    return pages;
}

struct ReportsUnderTest : WindowUnderTest {
    explicit ReportsUnderTest(const SnapshotBuilder& books = reportSample()) : WindowUnderTest{builtPages()}
    {
        openDemonstration(books);
        screen.waitFor("ledgerView");
        screen.keys("Ctrl+2");
        screen.waitFor("currencyTable");
    }
    void openExport()
    {
        screen.keys("Ctrl+E");
        screen.waitForFocus("reportExportDialog");
    }
    /// Chooses a file for what the dialog shows.
    void save(const std::filesystem::path& path) { screen.find<ReportExportDialog>("reportExportDialog").saveTo(path); }
    [[nodiscard]] std::filesystem::path path(const char* name = "report.csv") const
    {
        return std::filesystem::path{folder.path().toStdString()} / name;
    }
    [[nodiscard]] std::string saved() const
    {
        std::ostringstream text;
        text << std::ifstream{path(), std::ios::binary}.rdbuf();
        return text.str();
    }
    /// The texts of a table's rows, without drawings.
    std::vector<std::string> rows(const char* name)
    {
        std::vector<std::string> all;
        for (const auto& row : screen.find<ReportTable>(name).grid().grid().rows) {
            std::string texts;
            for (const auto& cell : row.cells) {
                texts += (&cell == row.cells.data() ? "" : " | ") + cell.text.toStdString();
                if (!cell.beside.isEmpty())
                    texts += " / " + QString{cell.beside}.replace(QChar::Nbsp, QLatin1Char(' ')).toStdString();
            }
            all.push_back(texts);
        }
        return all;
    }

    QTemporaryDir folder;
};

}

TEST(FundsTab, TellsWhatMovedWithTheRateAndWhatMayStillBeRefunded)
{
    ReportsUnderTest under;
    under.screen.turnTo("movementsTab");
    under.screen.press("USD");
    EXPECT_EQ(under.rows("fundSumTable"), (std::vector<std::string>{"Refunds | 0.00 | −1,500.00 | −1,500.00",
                                                                    "Exchanges | 0.00 | −12,000.00 | −12,000.00",
                                                                    "Total | 0.00 | −13,500.00 | −13,500.00"}));
    EXPECT_EQ(
        under.rows("fundTable"),
        (std::vector<std::string>{"13 Nov 2026 | Refund / of income on 9 Oct 2026, USD 10,570.00 still refundable | "
                                  "Singapore account |  | −1,500.00",
                                  "5 Nov 2026 | Exchange / 1 USD = SGD 1.340 | Singapore account |  | −12,000.00"}));
    under.screen.press("IDR");
    EXPECT_EQ(under.rows("fundTable").back(),
              "4 Nov 2026 | Transfer / → Kas kecil – Rizky | Operating bank |  | −5,000,000");
}

TEST(FundsTab, OpensTheEntriesBehindASumAndTheEntryOfARow)
{
    ReportsUnderTest under;
    under.screen.turnTo("movementsTab");
    under.screen.press("USD");
    auto& sums = under.screen.find<ReportTable>("fundSumTable");
    sums.setFocus();
    sums.setCurrentIndex(sums.model()->index(sums.grid().rowOf("total"), 3));
    under.screen.keys("Return");
    under.screen.waitFor("totalsStrip");
    EXPECT_NE(under.screen.read("totals").find("−13,500.00"), std::string::npos) << under.screen.read("totals");
    EXPECT_TRUE(under.screen.says("2 of"));
    under.screen.keys("Ctrl+2");
    under.screen.waitFor("fundTable");
    auto& list = under.screen.find<ReportTable>("fundTable");
    list.setFocus();
    list.setCurrentIndex(list.model()->index(1, 1));
    under.screen.keys("Return");
    under.screen.waitFor("ledgerTable");
    under.screen.waitForText("1 selected");
    EXPECT_TRUE(under.screen.says("USD −12,000.00") || under.screen.says("−12,000.00"));
}

TEST(FundsTab, OpensExactlyTheEntriesThatASumIsMadeOf)
{
    auto books = reportSample();
    LedgerTransaction wrong;
    wrong.id = "wrong";
    wrong.kind = EntryKind::expense;
    wrong.date = "2026-11-11";
    wrong.createdAt = "2026-11-11T03:00:00Z";
    wrong.memberID = "m1";
    wrong.categoryID = "rent";
    wrong.legs = {{"Operating bank", "IDR", -990'000}};
    wrong.reversedBy = "undo";
    auto undo = wrong;
    undo.id = "undo";
    undo.kind = EntryKind::reversal;
    undo.reversedBy.reset();
    undo.reversalOf = "wrong";
    undo.legs = {{"Operating bank", "IDR", 990'000}};
    auto sent = wrong;
    sent.id = "sent";
    sent.kind = EntryKind::transfer;
    sent.categoryID.reset();
    sent.legs = {{"Operating bank", "IDR", -70'000}, {"Kas kecil – Rizky", "IDR", 70'000}};
    sent.reversedBy = "sent back";
    auto back = undo;
    back.id = "sent back";
    back.categoryID.reset();
    back.reversalOf = "sent";
    back.legs = {{"Operating bank", "IDR", 70'000}, {"Kas kecil – Rizky", "IDR", -70'000}};
    books.entry(wrong).entry(undo).entry(sent).entry(back);
    ReportsUnderTest under{books};
    const auto opened = [&](const char* row, int column) {
        under.screen.turnTo("movementsTab");
        auto& sums = under.screen.find<ReportTable>("fundSumTable");
        sums.setFocus();
        sums.setCurrentIndex(sums.model()->index(sums.grid().rowOf(row), column));
        const auto figure = sums.currentIndex().data().toString().toStdString();
        under.screen.keys("Return");
        under.screen.waitFor("totalsStrip");
        const auto totals = under.screen.read("totals");
        EXPECT_TRUE(totals.ends_with('\n' + figure)) << row << ": " << figure << " in " << totals;
        under.screen.keys("Ctrl+2");
        under.screen.waitFor("fundSumTable");
    };
    opened("reversals", 3);
    for (const auto* row : {"transfer", "total"}) {
        opened(row, 1); // in
        opened(row, 2); // out
    }
}

/// What is copied is the table, not the part of it that the page has room for.
TEST(FundsTab, CopiesAllMovementsHoweverManyItShows)
{
    auto books = reportSample();
    for (int at = 0; at < 400; ++at)
        books.transfer("many" + std::to_string(at), "2026-11-06", "Operating bank", "Kas kecil – Rizky", "IDR", 100);
    ReportsUnderTest under{books};
    under.screen.turnTo("movementsTab");
    auto& list = under.screen.find<ReportTable>("fundTable");
    under.screen.waitUntil("the movements are there", [&] { return list.grid().rowCount() == 300; });
    list.setFocus();
    list.setCurrentIndex(list.model()->index(0, 1));
    QGuiApplication::clipboard()->clear();
    under.screen.keys("Shift+F10");
    under.screen.waitFor("figureMenu");
    under.window.findChild<QAction*>(QStringLiteral("menu.copyTable"))->trigger();
    under.screen.waitForText("Copied");
    // Both ends of each, those of November's own transfer among them, and the heads.
    EXPECT_EQ(QGuiApplication::clipboard()->text().count(QLatin1Char('\n')), 2 * 401 + 1);
}

TEST(FundsTab, HasARunningBalanceForOneAccountWhoseEntriesExplainIt)
{
    auto books = reportSample();
    ReportsUnderTest under{books};
    under.screen.turnTo("movementsTab");
    EXPECT_EQ(under.screen.find<ReportTable>("fundTable").grid().columnCount(), 5);
    under.screen.press("reportAccounts");
    under.screen.pressRow("choices", "Kas kecil");
    under.screen.keys("Esc");
    under.screen.waitUntil("the balance is there",
                           [&] { return under.screen.find<ReportTable>("fundTable").grid().columnCount() == 6; });
    EXPECT_EQ(under.rows("fundTable"),
              std::vector<std::string>{
                  "4 Nov 2026 | Transfer / ← Operating bank | Kas kecil – Rizky | +5,000,000 |  | 5,000,000"});
}

TEST(ReportExport, SavesTheTableInSight)
{
    ReportsUnderTest under;
    under.screen.turnTo("movementsTab");
    under.screen.press("USD");
    under.openExport();
    EXPECT_EQ(under.screen.read("reportExportFile"), "Brightbook-fundMovements-2026-11-01_2026-11-30.csv");
    EXPECT_NE(under.screen.read("reportExportScope").find("November 2026"), std::string::npos);
    under.save(under.path());
    under.screen.waitUntilGone("reportExportDialog");
    under.screen.waitForText("Saved report.csv");
    const auto file = under.saved();
    EXPECT_TRUE(
        file.starts_with("\xEF\xBB\xBF\"Date\",\"Movement\",\"Remarks\",\"Account\",\"Currency\",\"In\",\"Out\"\r\n"))
        << file;
    EXPECT_NE(file.find("\"2026-11-05\",\"Exchange\",\"1 USD = SGD"), std::string::npos) << file;
    EXPECT_NE(file.find("\"'-12,000.00\"\r\n"), std::string::npos) << file;
    under.activate();
    under.screen.turnTo("incomeTab");
    under.screen.press("IDR");
    under.openExport();
    under.screen.press("Income and expense by period");
    EXPECT_EQ(under.screen.read("reportExportFile"), "tallyfold-report-periods-2026-11-01_2026-11-30.csv");
    EXPECT_TRUE(under.screen.says("12 rows and the heads"));
}

TEST(ReportExport, BeginsWithTheTableWhoseMenuAskedForIt)
{
    const auto ask = [](ReportsUnderTest& under) {
        auto& table = under.screen.find<ReportTable>("currencyTable");
        under.screen.waitUntil("the figures are there", [&] { return table.model()->rowCount() > 0; });
        table.setFocus();
        under.screen.waitForFocus("currencyTable");
        table.setCurrentIndex(table.model()->index(0, 1));
        under.screen.keys("Shift+F10");
        under.screen.waitFor("figureMenu");
        return under.window.findChild<QAction*>(QStringLiteral("menu.saveTable"));
    };
    {
        ReportsUnderTest under;
        auto* save = ask(under);
        ASSERT_NE(save, nullptr);
        save->trigger();
        under.screen.waitForFocus("reportExportDialog");
        EXPECT_EQ(under.screen.read("reportExportFile"), "tallyfold-report-currencies-2026-11-01_2026-11-30.csv");
        under.save(under.path());
        under.screen.waitUntilGone("reportExportDialog");
        EXPECT_EQ(under.saved().substr(3, 11), "\"Currency\",") << under.saved();
    }
    auto books = reportSample();
    books.permissions({"viewCompany"});
    ReportsUnderTest other{books};
    EXPECT_EQ(ask(other), nullptr) << "who may not export is not offered it";
}

TEST(ReportExport, WritesNothingFromBooksThatHaveChangedAndShowsThemAnew)
{
    ReportsUnderTest under;
    under.screen.turnTo("incomeTab");
    under.openExport();
    auto changed = reportSample();
    changed.expense("e9", "2026-11-19", "Operating bank", "IDR", 7'700, "rent");
    under.server.replace("GET v1/snapshot", ServerReply::json(changed.json()));
    under.save(under.path());
    under.screen.waitForText("The records have changed");
    under.screen.waitForText("IDR: 1 entry added.");
    EXPECT_EQ(under.saved(), "");
    under.screen.waitUntil("it can be saved", [&] { return under.screen.offers("reportExportSave"); });
    under.save(under.path());
    under.screen.waitUntilGone("reportExportDialog");
    EXPECT_NE(under.saved().find("54,000,077"), std::string::npos) << under.saved();
}

TEST(ReportExport, WritesNothingForWhoMayNotExportAnyMore)
{
    ReportsUnderTest under;
    under.openExport();
    auto books = reportSample();
    under.server.replace("GET v1/snapshot", ServerReply::json(books.permissions({"viewCompany"}).json()));
    under.save(under.path());
    under.screen.waitForText("You do not have permission");
    EXPECT_EQ(under.saved(), "");
    under.server.replace("GET v1/snapshot", ServerReply::json(reportSample().json()));
    QCoro::connect(under.store.refresh(false), &under.store, [](const Result<void>&) {});
    under.screen.waitUntil("it is allowed again", [&] { return !under.screen.says("You do not have permission"); });
    under.save(under.path());
    under.screen.waitUntilGone("reportExportDialog");
    EXPECT_NE(under.saved(), "");
}

TEST(ReportExport, LoadsTheBooksOnceForAllItsCurrencies)
{
    ReportsUnderTest under;
    under.openExport(); // of the overview, which shows every currency
    const auto before = under.server.requests("GET v1/snapshot").size();
    under.save(under.path());
    under.screen.waitUntilGone("reportExportDialog");
    EXPECT_EQ(under.server.requests("GET v1/snapshot").size(), before + 1);
    EXPECT_NE(under.saved(), "");
}

TEST(ReportExport, StaysOpenWhereTheFileCannotBeWritten)
{
    ReportsUnderTest under;
    under.openExport();
    under.save(under.path("gone/report.csv"));
    under.screen.waitForText("The folder is no longer there.");
    under.server.replace("GET v1/snapshot", ServerReply::error(401, "unauthorized"));
    under.save(under.path());
    under.screen.waitUntilGone("reportExportDialog");
    EXPECT_EQ(under.saved(), "");
}

TEST(Attention, LeadsBackToAnEntryThatWasNotConfirmed)
{
    ReportsUnderTest under;
    const auto attention = [&] { return under.screen.read("attention"); };
    EXPECT_EQ(attention().find("was saved"), std::string::npos);
    TransactionInput input;
    input.kind = EntryKind::expense;
    input.date = "2026-11-12";
    input.sourceAccountID = "Operating bank";
    input.currency = "IDR";
    input.amountMinor = 438'520'00;
    input.categoryID = "rent";
    input.idempotencyKey = "key-1";
    under.store.keepEntry(input, true);
    under.screen.keys("Alt+Left Alt+Right"); // the page shows itself anew
    EXPECT_NE(attention().find("It is not known whether the entry of IDR"), std::string::npos) << attention();
    under.screen.press("attention0");
    under.screen.waitForText("Retry original request");
}

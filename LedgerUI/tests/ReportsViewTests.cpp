#include "LedgerUI/Screens/Reports/ReportsView.h"

#include <QApplication>
#include <QClipboard>
#include <gtest/gtest.h>

#include "LedgerUI/Components/Chart/ChartView.h"
#include "LedgerUI/Presentation/Reports/ReportGridModel.h"
#include "LedgerUI/Screens/Ledger/LedgerView.h"
#include "LedgerUI/Screens/Reports/ReportTable.h"
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

class Reports : public testing::Test {
protected:
    void open(const SnapshotBuilder& books = reportSample())
    {
        under.openDemonstration(books);
        screen.waitFor("ledgerView");
        screen.keys("Ctrl+2");
        screen.waitFor("currencyTable");
    }
    const ReportTable& table(const char* name) { return screen.find<ReportTable>(name); }
    /// The texts of a row, without drawings.
    std::string row(const char* name, const char* id)
    {
        const auto& model = table(name).grid();
        std::string texts;
        for (const auto& cell : model.row(model.rowOf(id)).cells) {
            if (!cell.text.isEmpty())
                texts += (texts.empty() ? "" : " | ") + cell.text.toStdString();
        }
        return texts;
    }
    /// Puts the keys on a figure.
    void goTo(const char* name, const char* id, int column)
    {
        auto& shown = screen.find<ReportTable>(name);
        shown.setFocus();
        shown.setCurrentIndex(shown.model()->index(table(name).grid().rowOf(id), column));
    }

    WindowUnderTest under{builtPages()};
    ScreenDriver& screen = under.screen;
};

}

TEST_F(Reports, ShowWhereEachCurrencyStandsInThePeriod)
{
    open();
    EXPECT_TRUE(screen.says("November 2026"));
    EXPECT_EQ(row("currencyTable", "USD"),
              "USD | 197,420.00 | +10,940.00 | 0.00 | +10,940.00 | −12,000.00 | 196,360.00");
    EXPECT_EQ(row("currencyTable", "SGD"), "SGD | 0.00 | 0.00 | 0.00 | 0.00 | +16,074.00 | 16,074.00");
    screen.keys("Alt+Left");
    EXPECT_TRUE(screen.says("October 2026"));
    EXPECT_EQ(row("currencyTable", "SGD"), "SGD | 0.00 | 0.00 | 0.00 | 0.00 | 0.00 | 0.00");
}

/// Every figure of the overview, opened by keys: the total under the ledger is the figure.
TEST_F(Reports, OpenTheEntriesWhoseTotalIsTheFigure)
{
    open();
    const auto rows = table("currencyTable").grid().grid().rows;
    int opened = 0;
    for (const auto& each : rows) {
        for (std::size_t column = 0; column < each.cells.size(); ++column) {
            const auto& cell = each.cells[column];
            if (!cell.backing || cell.copied.toStdString().find_first_of("123456789") == std::string::npos)
                continue;
            goTo("currencyTable", each.id.c_str(), static_cast<int>(column));
            screen.keys("Return");
            screen.waitFor("totalsStrip");
            auto digits = cell.text;
            digits.remove(QLatin1Char('+'));
            EXPECT_NE(screen.read("totals").find(digits.toStdString()), std::string::npos)
                << each.id << " column " << column << ": " << screen.read("totals");
            ++opened;
            screen.keys("Ctrl+2");
            screen.waitFor("currencyTable");
        }
    }
    EXPECT_EQ(opened, 12) << "five of rupiah and dollars each, two of Singapore dollars";
}

TEST_F(Reports, LetTheChosenCurrencyDriveChartAndList)
{
    open();
    goTo("currencyTable", "IDR", 0);
    EXPECT_EQ(screen.find<ChartView>("chart").data().currency, "IDR");
    EXPECT_EQ(row("expenseTable", "category payroll"), "Payroll | 112,640,000");
    goTo("currencyTable", "USD", 0);
    EXPECT_EQ(screen.find<ChartView>("chart").data().currency, "USD");
    EXPECT_TRUE(screen.says("Nothing was spent in this period."));
    // A month of the chart is the period from then on.
    screen.find("chart").setFocus();
    screen.keys("Left Return");
    EXPECT_TRUE(screen.says("October 2026"));
    EXPECT_EQ(screen.find<ReportTable>("currencyTable").selectedIDs(), std::vector<std::string>{"USD"});
}

TEST_F(Reports, NarrowEveryFigureToTheChosenAccounts)
{
    open();
    screen.press("reportAccounts");
    screen.waitForFocus("reportAccountsPopover");
    screen.pressRow("reportAccountsPopover", "Kas kecil");
    screen.keys("Esc");
    EXPECT_EQ(row("currencyTable", "IDR"), "IDR | 0 | 0 | −5,000,000 | −5,000,000 | +5,000,000 | 0");
    goTo("currencyTable", "IDR", 5);
    screen.keys("Return");
    screen.waitFor("totalsStrip");
    EXPECT_TRUE(screen.says("Figure: Other movements, IDR, Kas kecil – Rizky"));
    EXPECT_EQ(screen.read("entryCount"), "1 of 90 entries");
}

TEST_F(Reports, CopyAFigureAndATableForSpreadsheets)
{
    open();
    goTo("currencyTable", "USD", 5);
    screen.keys("Ctrl+C");
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), "-12,000.00");
    screen.keys("Shift+F10");
    screen.waitFor("figureMenu");
    screen.keys("Up Return");
    const auto table = QApplication::clipboard()->text();
    EXPECT_TRUE(
        table.startsWith(QStringLiteral("Currency\tOpening\tIncome\tExpense\tNet\tOther movements\tClosing\n")));
    EXPECT_EQ(table.count(QLatin1Char('\n')), 4);
}

TEST_F(Reports, LendAHandWhereItIsWanted)
{
    open();
    ASSERT_TRUE(screen.says("Kas kecil – Rizky has no IDR balance left"));
    screen.press("Fund, Kas kecil – Rizky has no IDR balance left");
    screen.waitForFocus("transactionForm");
    EXPECT_TRUE(screen.says("Kas kecil – Rizky"));
    screen.keys("Esc");
    screen.waitUntilGone("transactionForm");
}

#include "LedgerUI/Screens/Reports/ReportsView.h"

#include <QApplication>
#include <QClipboard>
#include <gtest/gtest.h>

#include "LedgerUI/Components/Chart/ChartView.h"
#include "LedgerUI/Presentation/Reports/ReportGridModel.h"
#include "LedgerUI/Screens/Ledger/LedgerView.h"
#include "LedgerUI/Screens/Reports/ReportTable.h"
#include "LedgerUI/Screens/Summary/SummaryView.h"
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

    /// Opens each figure of a table that is not zero and reads the total under the ledger.
    int openEveryFigure(const char* name)
    {
        const auto rows = table(name).grid().grid().rows;
        int opened = 0;
        for (const auto& each : rows) {
            for (std::size_t column = 0; column < each.cells.size(); ++column) {
                const auto& cell = each.cells[column];
                const auto copied = cell.copied.toStdString();
                if (!cell.backing || copied.find_first_of("123456789") == std::string::npos)
                    continue;
                goTo(name, each.id.c_str(), static_cast<int>(column));
                screen.keys("Return");
                screen.waitFor("totalsStrip");
                auto digits = cell.text;
                digits.remove(QLatin1Char('+'));
                EXPECT_NE(screen.read("totals").find(digits.toStdString()), std::string::npos)
                    << name << " " << each.id << " column " << column << ": " << screen.read("totals");
                ++opened;
                screen.keys("Ctrl+2");
                screen.waitFor(name);
            }
        }
        return opened;
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

/// The total under the ledger is the figure, whichever one is opened by keys.
TEST_F(Reports, OpenTheEntriesWhoseTotalIsTheFigure)
{
    open();
    EXPECT_EQ(openEveryFigure("currencyTable"), 12) << "five of rupiah and dollars each, two of Singapore dollars";
    goTo("currencyTable", "IDR", 0);
    EXPECT_EQ(openEveryFigure("expenseTable"), 4);
    goTo("currencyTable", "IDR", 0);
    screen.keys("Return");
    screen.waitFor("incomeTab");
    EXPECT_EQ(openEveryFigure("trendTable"), 48) << "income, expense, net and closing of twelve months";
    EXPECT_EQ(openEveryFigure("categoryTable"), 4) << "three categories and the total";
    screen.keys("Ctrl+Tab");
    screen.waitFor("matrixTab");
    EXPECT_EQ(openEveryFigure("movementTable"), 11);
    EXPECT_EQ(openEveryFigure("monthEndTable"), 12);
}

TEST_F(Reports, FoldCategoriesUnderTheirParentsAndCompareThem)
{
    open();
    screen.keys("Ctrl+Tab");
    screen.waitFor("incomeTab");
    EXPECT_EQ(row("categoryTable", "category payroll"), "Payroll | 112,640,000 | 51.3 % | 0.0 % | new");
    EXPECT_EQ(row("categoryTable", "category premises"), "Premises | 67,705,200 | 30.8 % | +1.7 % | new");
    EXPECT_EQ(table("categoryTable").grid().rowOf("category rent"), -1) << "folded";
    goTo("categoryTable", "category premises", 0);
    screen.keys("Return");
    EXPECT_EQ(row("categoryTable", "category rent"), "Warehouse rent | 54,000,000 | 24.6 % | 0.0 % | new");
    EXPECT_EQ(screen.spoken("categoryTable"), "Expense by category");
    // A month of the trend has the categories of its own, and the same month once more those of the period.
    goTo("trendTable", table("trendTable").grid().row(1).id.c_str(), 0);
    screen.keys("Return");
    EXPECT_EQ(row("categoryTable", "total").substr(0, 27), "Total expense | 216,845,200");
    screen.keys("Return");
    EXPECT_EQ(row("categoryTable", "total").substr(0, 27), "Total expense | 219,625,200");
    screen.press("Income");
    EXPECT_EQ(row("categoryTable", "category service"), "Service | 12,500,000 | 3.6 % | 0.0 % | new");
}

TEST_F(Reports, BreakTheTrendIntoOtherPeriods)
{
    open();
    screen.keys("Ctrl+Tab");
    screen.waitFor("incomeTab");
    screen.press("Quarter");
    EXPECT_EQ(table("trendTable").grid().rowCount(), 12);
    EXPECT_EQ(table("trendTable").grid().row(0).cells[0].text.toStdString(), "Q4 2026");
    screen.press("Day");
    EXPECT_EQ(table("trendTable").grid().rowCount(), 30) << "every day of November";
    EXPECT_EQ(screen.find<ChartView>("trendChart").data().places.size(), 30U);
}

TEST_F(Reports, BreakEveryAccountDownByWhatMovedIt)
{
    open();
    screen.keys("Ctrl+Tab Ctrl+Tab");
    screen.waitFor("matrixTab");
    EXPECT_EQ(row("movementTable", "account Operating bank"),
              "Operating bank | 3,067,902,800 | +352,100,000 | −214,625,200 | −5,000,000 | 3,200,377,600");
    EXPECT_EQ(row("movementTable", "account Kas kecil – Rizky"),
              "Kas kecil – Rizky | 0 | – | −5,000,000 | +5,000,000 | 0");
    EXPECT_EQ(row("movementTable", "total"), "Total | 3,067,902,800 | +352,100,000 | −219,625,200 | – | 3,200,377,600");
    screen.press("matrixHides");
    EXPECT_EQ(table("movementTable").grid().columnCount(), 11) << "all kinds of movement";
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
    screen.pressRow("choices", "Kas kecil");
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

TEST(SummaryPage, NamesNoCurrencyBeforeThereIsAnAccount)
{
    PageRegistry pages;
    pages.add<SummaryView>(WorkspacePage::summary);
    WindowUnderTest under{pages};
    under.signIn(SnapshotBuilder{}.currentMember(SnapshotBuilder::person("m1", "Rizky Pratama")));
    under.screen.waitForText("Expense by category");
    EXPECT_FALSE(under.screen.says("Expense by category,"));
}

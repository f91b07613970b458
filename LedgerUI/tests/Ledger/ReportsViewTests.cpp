#include "LedgerUI/Screens/Reports/ReportsView.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QTableView>
#include <QTest>
#include <gtest/gtest.h>

#include "LedgerUI/Components/Chart/ChartView.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportGridModel.h"
#include "LedgerUI/Screens/Ledger/LedgerTable.h"
#include "LedgerUI/Screens/Ledger/LedgerView.h"
#include "LedgerUI/Screens/Reports/ReportTable.h"
#include "LedgerUI/Screens/Summary/SummaryView.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/testing/ReportSample.h"
#include "LedgerUI/testing/WindowUnderTest.h"

namespace {

PageRegistry builtPages()
{
    PageRegistry pages;
    pages.add<LedgerView>(WorkspacePage::ledger);
    pages.add<ReportsView>(WorkspacePage::reports);
    pages.add<SummaryView>(WorkspacePage::summary);
    return pages;
}

/// An expense of the float in November that `by` has taken back.
void addReversed(SnapshotBuilder& books, const char* id, const char* by)
{
    LedgerTransaction wrong;
    wrong.id = id;
    wrong.kind = EntryKind::expense;
    wrong.date = "2026-11-16";
    wrong.createdAt = "2026-11-16T03:00:00Z";
    wrong.memberID = "m1";
    wrong.categoryID = "packaging";
    wrong.legs = {{"Kas kecil – Rizky", "IDR", -7'500}};
    wrong.reversedBy = wrong.id + " undone";
    books.entry(wrong);
    auto undo = wrong;
    undo.id = *wrong.reversedBy;
    undo.kind = EntryKind::reversal;
    undo.createdAt = "2026-11-16T04:00:00Z";
    undo.memberID = by;
    undo.legs.front().amountMinor = 7'500;
    undo.reversedBy.reset();
    undo.reversalOf = wrong.id;
    books.entry(undo);
}

/// A figure as a spreadsheet has it, in hundredths.
qint64 hundredthsOf(const ReportGridCell& cell)
{
    auto digits = cell.copied;
    const bool hasDecimals = digits.contains(QLatin1Char('.'));
    return digits.remove(QLatin1Char(',')).remove(QLatin1Char('.')).toLongLong() * (hasDecimals ? 1 : 100);
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
                screen.press(page);
                screen.waitFor(name);
            }
        }
        return opened;
    }

    /// The rows whose last figure is not the sum of those before it, and how many rows were added up.
    std::pair<std::vector<std::string>, int> unbalanced(const char* name)
    {
        const auto& grid = table(name).grid().grid();
        std::vector<std::string> found;
        int added = 0;
        for (const auto& each : grid.rows) {
            if (each.level == ReportGridRow::Level::heading)
                continue;
            qint64 sum = 0;
            for (std::size_t column = 0; column + 1 < each.cells.size(); ++column)
                sum +=
                    grid.columns[column].kind == ReportGridColumn::Kind::figure ? hundredthsOf(each.cells[column]) : 0;
            if (sum != hundredthsOf(each.cells.back()))
                found.push_back(each.id);
            ++added;
        }
        return {found, added};
    }

    WindowUnderTest under{builtPages()};
    ScreenDriver& screen = under.screen;
    const char* page = "page-reports";
};

/// The page of who does not see the whole company.
class Summary : public Reports {
protected:
    void openSummary(const SnapshotBuilder& books = reportSample())
    {
        auto own = books;
        page = "page-summary";
        under.openDemonstration(own.permissions({}));
        screen.waitFor("ownAccountTable");
    }
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

TEST_F(Reports, CloseWithWhatTheyOpenedWithAndWhatMoved)
{
    open();
    std::vector<std::vector<qint64>> openings;
    for (const auto* month : {"November 2026", "October 2026", "September 2026"}) {
        screen.waitForText(month);
        openings.emplace_back();
        const auto& rows = table("currencyTable").grid().grid().rows;
        ASSERT_EQ(rows.size(), 3U);
        for (std::size_t at = 0; at < rows.size(); ++at) {
            const auto figure = [&](std::size_t column) { return hundredthsOf(rows[at].cells[column]); };
            EXPECT_EQ(figure(2) + figure(3), figure(4)) << month << " " << rows[at].id;
            EXPECT_EQ(figure(1) + figure(4) + figure(5), figure(6)) << month << " " << rows[at].id;
            if (openings.size() > 1)
                EXPECT_EQ(figure(6), openings[openings.size() - 2][at]) << month << " closes as the next one opens";
            openings.back().push_back(figure(1));
        }
        screen.keys("Alt+Left");
    }
    EXPECT_NE(openings[0], openings[2]) << "the months are not one and the same";
}

/// The total under the ledger is the figure, whichever one is opened by keys.
TEST_F(Reports, OpenTheEntriesWhoseTotalIsTheFigure)
{
    open();
    EXPECT_EQ(openEveryFigure("currencyTable"), 12) << "five of rupiah and dollars each, two of Singapore dollars";
    goTo("currencyTable", "IDR", 0);
    EXPECT_EQ(openEveryFigure("expenseTable"), 4);
    EXPECT_EQ(openEveryFigure("incomeCategoryTable"), 2);
    EXPECT_EQ(openEveryFigure("monthTable"), 48) << "what the chart shows, and what each month closed with";
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

TEST_F(Reports, SortATableByItsHeadsAndKeysAndSaySo)
{
    open();
    screen.keys("Ctrl+Tab");
    screen.waitFor("incomeTab");
    const auto top = [this](const char* name) { return table(name).grid().row(0).id; };
    const auto clickHead = [this](const char* name, int column) {
        auto& head = *screen.find<ReportTable>(name).horizontalHeader();
        QTest::mouseClick(head.viewport(), Qt::LeftButton, {},
                          {head.sectionViewportPosition(column) + head.sectionSize(column) / 2, head.height() / 2});
    };
    const auto byTheBooks = top("categoryTable");
    clickHead("categoryTable", 1);
    EXPECT_EQ(top("categoryTable"), "category payroll");
    clickHead("categoryTable", 1);
    EXPECT_NE(top("categoryTable"), "category payroll");
    const auto smallest = top("categoryTable");
    EXPECT_EQ(table("categoryTable").accessibleDescription().toStdString(), "Amount, in ascending order");
    EXPECT_EQ(table("categoryTable").model()->headerData(1, Qt::Horizontal, Qt::AccessibleTextRole).toString(),
              QStringLiteral("Amount, in ascending order"));
    clickHead("categoryTable", 1);
    EXPECT_EQ(top("categoryTable"), byTheBooks);
    EXPECT_EQ(table("categoryTable").accessibleDescription(), QString{});
    // The same by keys, of the table that has them alone.
    goTo("categoryTable", "category payroll", 0);
    screen.keys("F8 F8 Shift+F8");
    EXPECT_EQ(top("categoryTable"), smallest);
    EXPECT_EQ(screen.find<ReportTable>("categoryTable").selectedIDs(), std::vector<std::string>{"category payroll"});
    EXPECT_EQ(table("trendTable").grid().row(0).cells[0].text, QStringLiteral("November 2026"));
    // A row opens its own period, wherever it stands.
    clickHead("trendTable", 0);
    EXPECT_EQ(table("trendTable").grid().row(0).cells[0].text, QStringLiteral("December 2025"));
    goTo("trendTable", table("trendTable").grid().row(10).id.c_str(), 0);
    screen.keys("Return");
    EXPECT_EQ(row("categoryTable", "total").substr(0, 27), "Total expense | 216,845,200") << "of October";
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

TEST_F(Reports, ShowNamesInFullWhereTheTableScrollsAnyway)
{
    constexpr auto name = "Rekening operasional BCA";
    open(reportSample().account(name, {"IDR"}).grantAll());
    screen.turnTo("matrixTab");
    screen.press("matrixHides");
    under.window.resize(900, 760);
    settle();
    const auto& shown = table("movementTable");
    ASSERT_NE(shown.horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    EXPECT_GE(shown.columnWidth(0), shown.fontMetrics().horizontalAdvance(QString::fromUtf8(name)));
}

TEST_F(Reports, CloseEachAccountWithWhatItOpenedWithAndWhatMovedIt)
{
    open();
    screen.turnTo("matrixTab");
    for (const auto& [currency, rows] : {std::pair{"IDR", 3}, std::pair{"USD", 3}, std::pair{"SGD", 2}}) {
        screen.press(currency);
        EXPECT_EQ(unbalanced("movementTable"), std::pair(std::vector<std::string>{}, rows)) << currency;
    }
    screen.press("matrixHides");
    EXPECT_EQ(unbalanced("movementTable"), std::pair(std::vector<std::string>{}, 2)) << "with all kinds of movement";
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
    EXPECT_TRUE(screen.spoken("chart").contains(": October 2026")) << screen.spoken("chart");
    screen.keys("Left");
    EXPECT_TRUE(screen.spoken("chart").contains(": September 2026"))
        << "from where the keys were, not where October is now";
    EXPECT_EQ(screen.find<ReportTable>("currencyTable").selectedIDs(), std::vector<std::string>{"USD"});
}

TEST_F(Reports, LeaveOutRowsInANarrowWindow)
{
    auto books = reportSample();
    books.settings(FinancialSettings{});
    for (const std::string id : {"tea", "ink", "stamps", "tape"}) {
        books.category(id, "expense", id);
        books.expense(id, "2026-11-17", "Operating bank", "IDR", 100'000, id);
    }
    open(books);
    goTo("currencyTable", "IDR", 0);
    const auto height = [this] { return screen.find<ReportTable>("expenseTable").height(); };
    const auto wide = height();
    const auto chart = screen.find("chart").minimumHeight();
    EXPECT_FALSE(screen.shows("attentionAll"));
    under.window.resize(900, 640);
    screen.waitUntil("the list is lower", [&] { return height() < wide; });
    EXPECT_TRUE(screen.shows("attentionAll"));
    EXPECT_LT(screen.find("chart").minimumHeight(), chart);
}

TEST_F(Reports, ShowTwoRowsOfWhatWantsAHandAboveTheFoldOfTheSmallestWindow)
{
    auto books = reportSample();
    books.settings(FinancialSettings{}).account("Hanoi", {"VND", "CNY"}).grantAll();
    for (const std::string id : {"tea", "ink"})
        books.category(id, "expense", id).expense(id, "2026-11-17", "Operating bank", "IDR", 100'000, id);
    open(books);
    goTo("currencyTable", "IDR", 0);
    under.window.resize(900, 640);
    screen.waitUntil("the window is narrow", [this] { return screen.shows("attentionAll"); });
    ASSERT_EQ(table("currencyTable").grid().rowCount(), 5);
    ASSERT_GE(table("expenseTable").grid().rowCount(), 5);
    const auto& second = screen.find("attention1");
    screen.waitUntil("the second row is whole",
                     [&] { return second.visibleRegion().boundingRect().height() == second.height(); });
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

/// The report goes on without an account that is taken from the member, and says so.
TEST_F(Reports, TellThatAChosenAccountIsNotSeenAnyMore)
{
    open();
    screen.press("reportAccounts");
    screen.waitForFocus("reportAccountsPopover");
    screen.pressRow("choices", "Kas kecil");
    screen.keys("Esc");
    EXPECT_EQ(row("currencyTable", "IDR"), "IDR | 0 | 0 | −5,000,000 | −5,000,000 | +5,000,000 | 0");
    SnapshotBuilder fewer;
    fewer.account("Operating bank", {"IDR", "USD"}).grantAll().category("power", "expense", "Electricity");
    fewer.expense("e2", "2026-11-05", "Operating bank", "IDR", 400'000'000, "power");
    under.server.replace("GET v1/snapshot", ServerReply::json(fewer.json()));
    require(resultOf(under.store.refresh(true)).has_value(), "the books are loaded");
    screen.waitForText("You no longer see 1 of the chosen accounts; the report goes on without it.");
    EXPECT_EQ(screen.read("reportAccounts"), "All visible accounts");
}

TEST_F(Reports, CopyAFigureAndATableForSpreadsheets)
{
    open();
    goTo("currencyTable", "USD", 5);
    screen.keys("Ctrl+C");
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), "-12,000.00");
    screen.keys("Shift+F10");
    screen.waitFor("figureMenu");
    screen.keys("Up Up Return");
    const auto table = QApplication::clipboard()->text();
    EXPECT_TRUE(table.startsWith(
        QStringLiteral("Currency\tCurrency name\tOpening\tIncome\tExpense\tNet\tOther movements\tClosing\n")));
    EXPECT_TRUE(table.contains(QStringLiteral("\nUSD\tUS dollar\t197,420.00\t"))) << table.toStdString();
    EXPECT_EQ(table.count(QLatin1Char('\n')), 4);
}

/// What a chart tells of a month leads to its entries and to spreadsheets, as the table beside it does.
TEST_F(Reports, OpenAndCopyTheFiguresOfAChart)
{
    open();
    goTo("currencyTable", "IDR", 0);
    screen.find("chart").setFocus();
    screen.keys("Left Ctrl+C");
    EXPECT_TRUE(QApplication::clipboard()->text().contains(QStringLiteral("\nOctober 2026\t")));
    EXPECT_TRUE(QApplication::clipboard()->text().contains(QStringLiteral("\t-216,845,200\t")));
    screen.keys("Shift+F10");
    screen.waitFor("rowMenu");
    EXPECT_TRUE(screen.says("Show the entries: Expense −216,845,200"));
    screen.keys("Down Down Return");
    screen.waitFor("totalsStrip");
    EXPECT_NE(screen.read("totals").find("−216,845,200"), std::string::npos) << screen.read("totals");
    EXPECT_TRUE(screen.says("October 2026"));
    screen.press(page);
    screen.turnTo("incomeTab");
    const auto income = table("trendTable").grid().row(0).cells[1].text.mid(1).toStdString();
    screen.find("trendChart").setFocus();
    screen.keys("End Shift+F10");
    screen.waitFor("rowMenu");
    screen.keys("Down Return");
    screen.waitFor("totalsStrip");
    EXPECT_NE(screen.read("totals").find(income), std::string::npos) << screen.read("totals");
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

TEST_F(Reports, ShowTheEntriesOfAFloatThatOthersFund)
{
    auto books = reportSample();
    books.currentMember(SnapshotBuilder::person("m1", "Rizky Pratama")).permissions({"viewCompany"});
    for (const auto* account : {"Operating bank", "Singapore account", "Kas kecil – Rizky"})
        books.grant(account, {"view"});
    open(books);
    screen.press("Show, Kas kecil – Rizky has no IDR balance left");
    screen.waitFor("entryCount");
    EXPECT_EQ(screen.read("entryCount"), "2 of 90 entries");
}

/// What was taken back needs no receipt any more: the row counts what the ledger then lists.
TEST_F(Reports, CountTheEntriesThatTheLedgerThenShows)
{
    auto books = reportSample();
    addReversed(books, "wrong", "m1");
    open(books);
    screen.press("Show, 9 entries in this period have no receipt");
    screen.waitFor("entryCount");
    EXPECT_EQ(screen.read("entryCount"), "9 of 92 entries");
    EXPECT_TRUE(screen.says("Standing: In force"));
}

TEST_F(Summary, ShowsWhatTheMemberAnswersForAndOpensTheEntriesBehindIt)
{
    openSummary();
    EXPECT_EQ(row("ownAccountTable", "Kas kecil – Rizky IDR"),
              "Kas kecil – Rizky | IDR | 0 | +5,000,000 | 0 | −5,000,000 | 0 | 0");
    EXPECT_EQ(row("ownAccountTable", "Singapore account USD"),
              "Singapore account | USD | 197,420.00 | 0.00 | +10,940.00 | 0.00 | −12,000.00 | 196,360.00");
    EXPECT_EQ(unbalanced("ownAccountTable"), std::pair(std::vector<std::string>{}, 5));
    EXPECT_EQ(openEveryFigure("ownAccountTable"), 13);
    goTo("ownAccountTable", "Operating bank IDR", 0);
    EXPECT_TRUE(screen.says("Expense by category, IDR"));
    EXPECT_EQ(row("ownExpenseTable", "category payroll"), "Payroll | 112,640,000");
    EXPECT_EQ(openEveryFigure("ownExpenseTable"), 4);
}

TEST_F(Summary, LeadsFromALatestEntryToThatEntry)
{
    openSummary();
    goTo("latestTable", "refund1", 1);
    screen.keys("Return");
    screen.waitFor("ledgerTable");
    EXPECT_EQ(screen.find<LedgerTable>("ledgerTable").selectedIDs(), std::vector<std::string>{"refund1"});
    // And so does the menu of any of its figures.
    screen.press(page);
    screen.waitFor("latestTable");
    goTo("latestTable", "u2026-11", 3);
    screen.keys("Shift+F10");
    screen.waitFor("figureMenu");
    EXPECT_TRUE(screen.says("Show the entry"));
    screen.keys("Down Return");
    screen.waitFor("ledgerTable");
    EXPECT_EQ(screen.find<LedgerTable>("ledgerTable").selectedIDs(), std::vector<std::string>{"u2026-11"});
}

/// Where the smallest room is in which a spare column is shown.
TEST(ReportTable, CutsWhatStandsBesideANameBeforeItHidesAColumn)
{
    const auto least = [](const QString& beside) {
        ReportTable table{QStringLiteral("currencyTable")};
        table.resize(1000, 200);
        table.show();
        table.present({.name = QStringLiteral("Currencies"),
                       .columns = {{.head = QStringLiteral("Currency"), .kind = ReportGridColumn::Kind::name},
                                   {.head = QStringLiteral("Other movements"), .isSpare = true},
                                   {.head = QStringLiteral("Closing")}},
                       .rows = {{.id = "IDR",
                                 .cells = {{.text = QStringLiteral("IDR"), .beside = beside},
                                           {.text = QStringLiteral("+246,287.32")},
                                           {.text = QStringLiteral("853,967,168.45")}}}}},
                      {.income = Token::ok, .expense = Token::danger});
        int width = table.width();
        for (; width > 0 && !table.isColumnHidden(1); width -= 4) {
            table.resize(width, 200);
            settle();
        }
        return width;
    };
    const int without = least({});
    EXPECT_GT(without, 200);
    EXPECT_EQ(least(QStringLiteral("Indonesian rupiah")), without);
}

TEST_F(Summary, ShowsTheGlyphOfEveryLatestEntryInTheColourOfItsKind)
{
    openSummary();
    const auto& table = screen.find<QTableView>("latestTable");
    const auto picture = table.viewport()->grab().toImage();
    for (int row = 0; row < table.model()->rowCount(); ++row) {
        auto glyph = table.visualRect(table.model()->index(row, 1));
        glyph.setWidth(Space::cellPadding + Space::icon);
        int colour = 0; // how far the strongest pixel is from any grey
        for (int y = glyph.top(); y <= glyph.bottom(); ++y) {
            for (int x = glyph.left(); x <= glyph.right(); ++x) {
                const auto pixel = picture.pixelColor(QPoint{x, y} * picture.devicePixelRatio());
                const auto [least, most] = std::minmax({pixel.red(), pixel.green(), pixel.blue()});
                colour = std::max(colour, most - least);
            }
        }
        EXPECT_GT(colour, 60) << row;
    }
    EXPECT_EQ(table.model()->rowCount(), 8);
}

TEST_F(Summary, TellsWhatWantsAHandAndCountsWhatItThenShows)
{
    auto books = reportSample();
    books.member(SnapshotBuilder::person("m2", "Dewi Anggraini"));
    addReversed(books, "undone by another", "m2");
    addReversed(books, "undone by oneself", "m1");
    openSummary(books);
    screen.press("Show, 1 entry of yours was reversed; check it and record it again");
    screen.waitFor("entryCount");
    EXPECT_EQ(screen.read("entryCount"), "1 of 94 entries");
    screen.press(page);
    screen.waitFor("ownAccountTable");
    screen.press("Fund, Kas kecil – Rizky has no IDR balance left");
    screen.waitForFocus("transactionForm");
    screen.keys("Esc");
    screen.waitUntilGone("transactionForm");
    under.activate();
    screen.press("summaryNewEntryButton");
    screen.waitForFocus("transactionForm");
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

#include "LedgerUI/Presentation/Exports/LedgerPrint.h"

#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "LedgerUI/Components/Print/PrintDialog.h"
#include "LedgerUI/testing/LedgerPage.h"
#include "LedgerUI/testing/WindowUnderTest.h"

namespace {

constexpr std::string_view english = "en-US";
const PrintMoment moment{.day = "2026-11-20", .time = "14:32"};

/// An account with a history that explains its balance, in two currencies.
SnapshotBuilder books()
{
    SnapshotBuilder builder;
    builder.companyName("PT Lentera").account("Bank", {"IDR", "USD"}).account("Savings", {"IDR"}).grantAll();
    builder.category("power", "expense", "Electricity").category("sales", "income", "Sales");
    builder.entry("o1", EntryKind::opening, "2026-10-01", {{"Bank", "IDR", 1'000'000}});
    builder.expense("e1", "2026-10-05", "Bank", "IDR", 400'000, "power").note("October");
    builder.income("i1", "2026-11-03", "Bank", "IDR", 250'000, "sales");
    builder.expense("e2", "2026-11-05", "Bank", "IDR", 900'000, "power").note("November");
    builder.transfer("t1", "2026-11-17", "Bank", "Savings", "IDR", 50'000);
    builder.income("i2", "2026-11-18", "Bank", "USD", 1'200, "sales");
    builder.balance("Bank", "IDR", -100'000).balance("Bank", "USD", 1'200).balance("Savings", "IDR", 50'000);
    return builder;
}

LedgerListing listing(const SnapshotBuilder& shown, LedgerFilter filter, std::string_view locale = english,
                      LedgerGrouping grouping = LedgerGrouping::none)
{
    auto book =
        std::make_shared<const LedgerBook>(std::make_shared<const LedgerSnapshot>(shown.build()), std::string{locale});
    return listingOf(std::move(book), {.filter = std::move(filter),
                                       .sort = {},
                                       .today = std::chrono::year{2026} / std::chrono::November / 20,
                                       .grouping = grouping});
}

Period november()
{
    return Period::containing(Period::Span::month, std::chrono::year{2026} / std::chrono::November / 1);
}

/// The rows of a table as a reader of the page would say them.
std::vector<std::string> said(const PrintedTable& table)
{
    std::vector<std::string> rows;
    for (const auto& row : table.rows) {
        std::string text;
        for (const auto& cell : row.cells) {
            text += (&cell == row.cells.data() ? "" : " | ") +
                    QString{cell.text}.replace(QChar::Nbsp, QLatin1Char(' ')).toStdString();
            if (!cell.second.isEmpty())
                text += " / " + cell.second.toStdString();
        }
        rows.push_back(text);
    }
    return rows;
}

std::vector<std::string> titles(const PrintedDocument& document)
{
    std::vector<std::string> all;
    for (const auto& table : document.tables)
        all.push_back(table.title.toStdString());
    return all;
}

std::string factsOf(const PrintedDocument& document)
{
    std::string all;
    for (const auto& fact : document.facts)
        all += fact.label.toStdString() + ": " + fact.value.toStdString() + "\n";
    return all;
}

}

TEST(LedgerPrint, ShowsTheEntriesInTheirOrderWithTheirTotals)
{
    const auto document =
        LedgerPrint::list(listing(books(), {.period = november(), .kinds = {"expense", "income"}}), moment);
    ASSERT_EQ(document.tables.size(), 2U);
    EXPECT_EQ(
        said(document.tables[0]),
        (std::vector<std::string>{"18 Nov 2026 | Sales / Income | Bank | Mira Owner | USD +12.00",
                                  "5 Nov 2026 | Electricity / Expense · November | Bank | Mira Owner | IDR −9,000",
                                  "3 Nov 2026 | Sales / Income | Bank | Mira Owner | IDR +2,500"}));
    EXPECT_EQ(said(document.tables[1]),
              (std::vector<std::string>{"IDR | +2,500 | −9,000 | −6,500", "USD | +12.00 | 0.00 | +12.00"}));
    EXPECT_EQ(factsOf(document),
              "Period: November 2026\nKind: Income, Expense\nAccounts: All accounts\nAs of: 20 Nov 2026, 14:32\n");
    EXPECT_EQ(document.fileName.toStdString(), "tallyfold-ledger-2026-11-01_2026-11-30");
}

TEST(LedgerPrint, ShowsTheSelectedEntriesAloneWithTheirTotals)
{
    const auto shown = std::make_shared<const LedgerListing>(
        listing(books(), {.period = november(), .accountIDs = {"Bank"}, .amounts = {.least = 100}}));
    const LedgerPrint::Asked asked{shown->book->snapshotPointer(), shown, moment, {"e2", "i1"}};
    const auto document = LedgerPrint::list(asked, std::string{english});
    EXPECT_EQ(
        said(document.tables[0]),
        (std::vector<std::string>{"5 Nov 2026 | Electricity / Expense · November | Bank | Mira Owner | IDR −9,000",
                                  "3 Nov 2026 | Sales / Income | Bank | Mira Owner | IDR +2,500"}));
    EXPECT_EQ(said(document.tables[1]), std::vector<std::string>{"IDR | +2,500 | −9,000 | −6,500"});
    EXPECT_EQ(factsOf(document), "Period: November 2026\nAccount: Bank\nAmount range: from 1\n"
                                 "Selected entries: 2 entries\nAs of: 20 Nov 2026, 14:32\n");
}

TEST(LedgerPrint, HeadsEachDayWhereThePageDoes)
{
    const auto document = LedgerPrint::list(
        listing(books(), {.period = november(), .kinds = {"expense", "income"}}, english, LedgerGrouping::byDay),
        moment);
    EXPECT_EQ(said(document.tables[0]).front(), "Wed 18 November 2026 · 1 entry · USD +12.00 |  |  |  | ");
    EXPECT_EQ(document.tables[0].rows.front().level, PrintedRow::Level::group);
    EXPECT_EQ(document.tables[0].rows.size(), 6U);
}

TEST(LedgerPrint, StatesAnAccountFromItsOpeningToItsClosing)
{
    const auto document = LedgerPrint::list(listing(books(), {.period = november(), .accountIDs = {"Bank"}}), moment);
    EXPECT_EQ(titles(document), (std::vector<std::string>{"IDR", "USD"}));
    EXPECT_EQ(
        said(document.tables[0]),
        (std::vector<std::string>{" | Opening balance |  |  | 6,000", "3 Nov 2026 | Sales / Income | 2,500 |  | 8,500",
                                  "5 Nov 2026 | Electricity / Expense · November |  | −9,000 | −500",
                                  "17 Nov 2026 | Transfer / Savings |  | −500 | −1,000",
                                  " | Closing balance | 2,500 | −9,500 | −1,000"}));
    EXPECT_EQ(said(document.tables[1]).back(), " | Closing balance | 12.00 | 0.00 | 12.00");
    EXPECT_EQ(document.tables[0].note, QString{});
    const auto narrowed = LedgerPrint::list(
        listing(books(), {.period = november(), .accountIDs = {"Bank"}, .currencies = {"USD"}}), moment);
    EXPECT_EQ(titles(narrowed), std::vector<std::string>{"USD"});
    const auto list = LedgerPrint::list(
        listing(books(), {.period = november(), .kinds = {"expense"}, .accountIDs = {"Bank"}}), moment);
    EXPECT_EQ(list.title.toStdString(), "Ledger") << "some of the entries are no statement";
}

TEST(LedgerPrint, StatesNoBalanceThatTheEntriesDoNotExplain)
{
    auto partly = books();
    partly.balance("Bank", "IDR", 7'777);
    const auto document = LedgerPrint::list(listing(partly, {.period = november(), .accountIDs = {"Bank"}}), moment);
    const auto rows = said(document.tables[0]);
    EXPECT_EQ(rows.front(), "3 Nov 2026 | Sales / Income | 2,500 | ");
    EXPECT_EQ(rows.back(), " | Total | 2,500 | −9,500");
    EXPECT_FALSE(document.tables[0].note.isEmpty());
    EXPECT_EQ(document.tables[0].columns.size(), 4U);
}

TEST(LedgerPrint, ShowsAnEntryWithItsMovements)
{
    const auto all = listing(books(), {.period = november()});
    const auto document = LedgerPrint::entry(*all.book, all.book->find("t1"), moment);
    EXPECT_EQ(document.title.toStdString(), "Transfer");
    EXPECT_EQ(said(document.tables[0]),
              (std::vector<std::string>{"Bank | IDR −500 | IDR −1,000", "Savings | IDR +500 | IDR 500"}));
    EXPECT_NE(factsOf(document).find("Number: t1"), std::string::npos) << factsOf(document);
}

TEST(LedgerPrinting, SavesWhatThePageShows)
{
    WindowUnderTest under{ledgerPage()};
    const QTemporaryDir folder;
    const auto saved = [&](const char* name) {
        under.screen.waitForFocus("printDialog");
        under.screen.waitUntil("the pages are there", [&] { return under.screen.offers("printSave"); });
        const auto path = folder.filePath(QString::fromLatin1(name));
        under.screen.find<PrintDialog>("printDialog").saveTo(path.toStdString());
        under.screen.waitUntilGone("printDialog");
        under.activate();
        QProcess process;
        process.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), path, QStringLiteral("-")});
        process.waitForFinished();
        return process.readAllStandardOutput().toStdString();
    };
    under.openDemonstration(books());
    under.screen.waitFor("ledgerTable");
    under.screen.keys("Ctrl+P");
    const auto list = saved("list.pdf");
    EXPECT_NE(list.find("Totals by currency"), std::string::npos) << list;
    EXPECT_EQ(list.find("October"), std::string::npos) << "the page shows November";
    under.screen.pressRow("ledgerTable", "Sales");
    under.screen.keys("Shift+F10");
    under.screen.waitFor("entryMenu");
    under.screen.keys("Up Up Up Up Return"); // the last but going to a day, the columns and the ways to sort
    const auto entry = saved("entry.pdf");
    EXPECT_NE(entry.find("Income: Sales"), std::string::npos) << entry;
    EXPECT_EQ(entry.find("Electricity"), std::string::npos);
}

TEST(LedgerPrinting, GivesNothingOutFromBooksThatHaveChangedInWhatItShows)
{
    const QTemporaryDir folder;
    WindowUnderTest under{ledgerPage()};
    under.openDemonstration(books());
    under.screen.waitFor("ledgerTable");
    const auto path = std::filesystem::path{folder.filePath(QStringLiteral("list.pdf")).toStdString()};
    const auto save = [&] {
        under.screen.waitUntil("the pages are there", [&] { return under.screen.offers("printSave"); });
        under.window.findChild<PrintDialog*>()->saveTo(path);
    };
    under.screen.keys("Ctrl+P");
    under.server.replace(
        "GET v1/snapshot",
        ServerReply::json(books().expense("late", "2026-11-19", "Bank", "IDR", 770'000, "power").json()));
    save();
    under.screen.waitForText("The records have changed");
    EXPECT_FALSE(std::filesystem::exists(path));
    // What no page of it shows may change.
    under.server.replace("GET v1/snapshot",
                         ServerReply::json(books()
                                               .expense("late", "2026-11-19", "Bank", "IDR", 770'000, "power")
                                               .expense("early", "2026-10-19", "Bank", "IDR", 1, "power")
                                               .json()));
    save();
    under.screen.waitUntilGone("printDialog");
    QProcess process;
    process.start(QStringLiteral("pdftotext"),
                  {QStringLiteral("-layout"), QString::fromStdString(path.string()), QStringLiteral("-")});
    process.waitForFinished();
    EXPECT_NE(process.readAllStandardOutput().toStdString().find("19 Nov 2026"), std::string::npos);
}

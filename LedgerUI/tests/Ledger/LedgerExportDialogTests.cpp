#include "LedgerUI/Screens/Exports/LedgerExportDialog.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include <QAction>
#include <QScrollArea>
#include <QScrollBar>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "LedgerUI/Components/Buttons/SegmentedControl.h"
#include "LedgerUI/Screens/Ledger/LedgerTable.h"
#include "LedgerUI/Screens/Ledger/LedgerView.h"
#include "LedgerUI/testing/LedgerPage.h"
#include "LedgerUI/testing/WindowUnderTest.h"

namespace {

/// Two legs in October, four in November of which one is in dollars.
SnapshotBuilder books()
{
    SnapshotBuilder builder;
    builder.account("Operating bank", {"IDR", "USD"}).account("Savings", {"IDR"}).grantAll();
    builder.category("power", "expense", "Electricity").category("sales", "income", "Sales");
    builder.expense("e1", "2026-10-05", "Operating bank", "IDR", 438'520'000, "power").note("October");
    builder.income("i0", "2026-10-07", "Savings", "IDR", 500, "sales");
    builder.expense("e2", "2026-11-05", "Operating bank", "IDR", 400'000'000, "power").note("=HYPERLINK(1)");
    builder.income("i1", "2026-11-18", "Operating bank", "USD", 1'200'000, "sales");
    return builder.transfer("t1", "2026-11-17", "Operating bank", "Savings", "IDR", 50'000'000);
}

struct ExportUnderTest : WindowUnderTest {
    explicit ExportUnderTest(const SnapshotBuilder& shown = books()) : WindowUnderTest{ledgerPage()}
    {
        openDemonstration(shown);
        screen.waitFor("ledgerTable");
    }
    void open()
    {
        screen.keys("Ctrl+E");
        screen.waitForFocus("ledgerExportDialog");
    }
    /// Presses the button and chooses the file as a person does in the file dialog.
    void save(const std::string& name = "books.csv")
    {
        screen.press("exportSave");
        screen.waitForFocus("exportFileDialog");
        screen.fill("fileNameEdit", (std::filesystem::path{folder.path().toStdString()} / name).string());
        screen.keys("Return");
    }
    [[nodiscard]] std::string saved(const std::string& name = "books.csv") const
    {
        std::ostringstream text;
        text << std::ifstream{std::filesystem::path{folder.path().toStdString()} / name, std::ios::binary}.rdbuf();
        return text.str();
    }
    void waitForCounts(const std::string& transactions, const std::string& entries)
    {
        screen.waitUntil("the preview counts " + transactions + " and " + entries, [&] {
            return screen.read("preview.transactions") == transactions && screen.read("preview.entries") == entries;
        });
    }

    void waitForEntries(const std::string& count)
    {
        screen.waitUntil("the page shows " + count, [&] { return screen.read("entryCount").starts_with(count); });
    }

    QTemporaryDir folder;
};

std::size_t records(const std::string& document)
{
    std::size_t count = 0;
    for (auto at = document.find("\r\n"); at != std::string::npos; at = document.find("\r\n", at + 2))
        ++count;
    return count;
}

}

TEST(LedgerExportDialog, SavesWhatThePageIsNarrowedToAndWhatThePreviewCounts)
{
    ExportUnderTest under;
    under.open();
    under.waitForCounts("3", "4");
    EXPECT_EQ(under.screen.read("exportFileName"), "quillet-ledger-2026-11-01_2026-11-30.csv");
    under.save();
    under.screen.waitUntilGone("ledgerExportDialog");
    const auto file = under.saved();
    EXPECT_EQ(records(file), 5U) << "a head and four legs";
    EXPECT_TRUE(file.starts_with("\xEF\xBB\xBF\"transaction_id\""));
    EXPECT_NE(file.find("\"'=HYPERLINK(1)\""), std::string::npos);
    EXPECT_EQ(file.find("October"), std::string::npos);
    under.screen.waitForText("Saved books.csv");
}

TEST(LedgerExportDialog, FollowsEveryChoice)
{
    ExportUnderTest under;
    under.open();
    under.screen.fill("exportFirstDay", "1/10/2026");
    under.waitForCounts("5", "6");
    under.screen.fill("exportFirstDay", "1/10/2026");
    under.screen.keys("Up Tab"); // the next day
    EXPECT_EQ(under.screen.read("exportFileName"), "quillet-ledger-2026-10-02_2026-11-30.csv");
    under.screen.press("exportAccounts");
    under.screen.pressRow("choices", "Savings");
    under.waitForCounts("2", "2");
    under.screen.keys("Esc");
    EXPECT_TRUE(under.screen.shows("ledgerExportDialog")) << "Esc closed the list alone";
    under.screen.press("exportKind.income");
    under.waitForCounts("1", "1");
    EXPECT_TRUE(under.screen.says("20 columns"));
    under.screen.press("exportReceiptIndex");
    under.screen.waitForText("22 columns");
    under.save();
    under.screen.waitUntilGone("ledgerExportDialog");
    EXPECT_EQ(records(under.saved()), 2U);
    EXPECT_NE(under.saved().find("\"receipt_names\""), std::string::npos);
}

TEST(LedgerExportDialog, ClosesAnOpenListByCtrlReturnAndKeepsWhatIsTicked)
{
    ExportUnderTest under;
    under.open();
    under.screen.fill("exportFirstDay", "1/10/2026");
    under.screen.press("exportAccounts");
    under.screen.pressRow("choices", "Savings");
    under.waitForCounts("2", "2");
    under.screen.keys("Home Ctrl+Return");
    EXPECT_FALSE(under.screen.shows("exportAccountsPopover"));
    EXPECT_TRUE(under.screen.shows("ledgerExportDialog")) << "nothing is exported by it";
    EXPECT_EQ(under.screen.read("exportAccounts"), "Savings");
    under.waitForCounts("2", "2");
}

TEST(LedgerExportDialog, NamesAnAccountThatIsNotSeenAnyMoreSoThatItCanBeTakenOut)
{
    ExportUnderTest under;
    under.open();
    under.screen.press("exportAccounts");
    under.screen.pressRow("choices", "Savings");
    under.screen.pressRow("choices", "Operating bank");
    under.screen.keys("Esc");
    under.waitForCounts("3", "4");
    SnapshotBuilder fewer;
    fewer.account("Operating bank", {"IDR", "USD"}).grantAll().category("power", "expense", "Electricity");
    fewer.expense("e2", "2026-11-05", "Operating bank", "IDR", 400'000'000, "power");
    under.server.replace("GET v1/snapshot", ServerReply::json(fewer.json()));
    require(resultOf(under.store.refresh(true)).has_value(), "the books are loaded");
    under.screen.waitForText("No longer seen: Savings.");
    EXPECT_EQ(under.screen.read("exportAccounts"), "Operating bank, Savings (no longer seen)");
    under.screen.press("exportAccounts");
    under.screen.pressRow("choices", "Savings");
    under.waitForCounts("1", "1");
    EXPECT_EQ(under.screen.read("exportAccounts"), "Operating bank");
    EXPECT_FALSE(under.screen.says("No longer seen"));
}

/// Also while the page has chosen, before the fields are in sight.
TEST(LedgerExportDialog, NamesAnAccountOfThePageThatIsNotSeenAnyMore)
{
    ExportUnderTest under;
    under.screen.find<LedgerView>("ledgerView")
        .follow({.page = WorkspacePage::ledger,
                 .action = PageAction::showEntries,
                 .subject = {},
                 .entries = LedgerFilter{.period = Period::allTime(), .accountIDs = {"Savings"}}});
    under.screen.fill("ledgerSearch", "sales");
    under.waitForEntries("1 of ");
    under.open();
    under.waitForCounts("1", "1");
    EXPECT_FALSE(under.screen.says("No longer seen"));
    SnapshotBuilder fewer;
    fewer.account("Operating bank", {"IDR", "USD"}).grantAll().category("sales", "income", "Sales");
    fewer.income("i1", "2026-11-18", "Operating bank", "USD", 1'200'000, "sales");
    under.server.replace("GET v1/snapshot", ServerReply::json(fewer.json()));
    require(resultOf(under.store.refresh(true)).has_value(), "the books are loaded");
    under.screen.waitForText("No longer seen: Savings. Take what you no longer see out of the page's filters");
    EXPECT_FALSE(under.screen.shows("exportAccounts"));
    EXPECT_TRUE(under.screen.says("Account: Another account"));
    under.screen.find<SegmentedControl>("exportSource")
        .chosenByUser(static_cast<int>(LedgerExportForm::Source::chosen));
    under.screen.waitForText("No longer seen: Savings. Untick in the list");
    EXPECT_FALSE(under.screen.says("out of the page's filters"));
}

TEST(LedgerExportDialog, SaysWhatIsWrongAndKeepsWhatWasTyped)
{
    ExportUnderTest under;
    under.open();
    under.waitForCounts("3", "4");
    under.screen.fill("exportLastDay", "31/2/2026");
    under.screen.waitForText("Enter a day, such as 20/11/2026.");
    EXPECT_EQ(under.screen.read("exportLastDay"), "31/2/2026");
    EXPECT_FALSE(under.screen.offers("exportSave"));
    under.screen.fill("exportLastDay", "1/1/2026");
    under.screen.waitForText("The last day is before the first.");
    EXPECT_FALSE(under.screen.offers("exportSave"));
    under.screen.fill("exportLastDay", "30/11/2026");
    under.screen.waitUntil("it can be saved", [&] { return under.screen.offers("exportSave"); });
    for (const auto kind : EntryKind::all)
        under.screen.press("exportKind." + std::string{kind});
    under.screen.waitForText("Choose at least one type of entry.");
    EXPECT_FALSE(under.screen.offers("exportSave"));
}

TEST(LedgerExportDialog, WritesNothingFromBooksThatHaveChanged)
{
    ExportUnderTest under;
    under.open();
    under.waitForCounts("3", "4");
    auto changed = books();
    changed.expense("e9", "2026-11-19", "Operating bank", "IDR", 1, "power");
    under.server.replace("GET v1/snapshot", ServerReply::json(changed.json()));
    under.save();
    under.screen.waitForText("changed");
    under.waitForCounts("4", "5");
    under.screen.waitForText("1 entry added");
    EXPECT_EQ(under.saved(), "") << "nothing was written";
    under.save();
    under.screen.waitUntilGone("ledgerExportDialog");
    EXPECT_EQ(records(under.saved()), 6U);
}

TEST(LedgerExportDialog, StaysOpenWhereTheFileCannotBeWritten)
{
    ExportUnderTest under;
    under.open();
    under.waitForCounts("3", "4");
    auto& dialog = under.screen.find<LedgerExportDialog>("ledgerExportDialog");
    dialog.saveTo(std::filesystem::path{under.folder.path().toStdString()} / "gone" / "books.csv");
    under.screen.waitForText("The folder is no longer there.");
    EXPECT_TRUE(under.screen.says("The export file could not be created. Try again."));
    EXPECT_FALSE(under.screen.shows("alertDialog"));
    under.server.replace("GET v1/snapshot", ServerReply::dropped());
    dialog.saveTo(std::filesystem::path{under.folder.path().toStdString()} / "books.csv");
    under.screen.waitUntil("it can be saved again", [&] { return under.screen.offers("exportSave"); });
    EXPECT_EQ(under.saved(), "");
    EXPECT_FALSE(under.screen.shows("alertDialog"));
    under.server.replace("GET v1/snapshot", ServerReply::json(books().json()));
    under.save();
    under.screen.waitUntilGone("ledgerExportDialog");
    EXPECT_EQ(records(under.saved()), 5U);
}

TEST(LedgerExportDialog, EndsWithTheSession)
{
    ExportUnderTest under;
    under.open();
    under.waitForCounts("3", "4");
    under.server.replace("GET v1/snapshot", ServerReply::error(401, "unauthorized"));
    under.save();
    under.screen.waitUntilGone("ledgerExportDialog");
    EXPECT_EQ(under.saved(), "");
}

TEST(LedgerExportDialog, IsNotOfferedWithoutTheRight)
{
    ExportUnderTest under{books().permissions({"viewCompany"})};
    EXPECT_FALSE(under.screen.shows("exportLedgerButton"));
    under.screen.keys("Ctrl+E");
    EXPECT_FALSE(under.screen.shows("ledgerExportDialog"));
}

TEST(LedgerExportDialog, StandsWholeInEveryLanguage)
{
    for (const auto* language : {"zh-CN", "id-ID", "vi-VN", "en-US"}) {
        ExportUnderTest under;
        under.speak(language);
        under.open();
        under.waitForCounts("3", "4");
        settle();
        const auto& form = under.screen.find<QScrollArea>("formScroll");
        EXPECT_FALSE(form.verticalScrollBar()->isVisible()) << language;
    }
}

TEST(LedgerExportDialog, HoldsWhatThePageShowsWhateverNarrowsIt)
{
    auto shown = books();
    shown.expense("e3", "2026-11-12", "Savings", "IDR", 700, "power").note("Generator fuel");
    ExportUnderTest under{shown};
    under.screen.fill("ledgerSearch", "electricity generator");
    under.waitForEntries("1 of ");
    under.open();
    under.waitForCounts("1", "1");
    EXPECT_FALSE(under.screen.shows("exportAccounts")) << "the page has chosen";
    EXPECT_TRUE(under.screen.says("Search: electricity generator"));
    EXPECT_TRUE(under.screen.says("Period: November 2026"));
    under.save();
    under.screen.waitUntilGone("ledgerExportDialog");
    EXPECT_EQ(records(under.saved()), 2U);
    EXPECT_NE(under.saved().find("Generator fuel"), std::string::npos);

    under.open();
    under.screen.find<SegmentedControl>("exportSource")
        .chosenByUser(static_cast<int>(LedgerExportForm::Source::chosen));
    under.waitForCounts("4", "5");
    EXPECT_TRUE(under.screen.says("do not narrow this file"));
    EXPECT_TRUE(under.screen.shows("exportAccounts"));
}

TEST(LedgerExportDialog, AsksThePagesQuestionAgainBeforeTheFileIsWritten)
{
    ExportUnderTest under;
    under.screen.fill("ledgerSearch", "electricity");
    under.waitForEntries("1 of ");
    under.open();
    under.waitForCounts("1", "1");
    auto changed = books();
    changed.expense("e9", "2026-11-19", "Operating bank", "IDR", 1, "power");
    under.server.replace("GET v1/snapshot", ServerReply::json(changed.json()));
    under.save();
    under.screen.waitForText("1 entry added");
    under.waitForCounts("2", "2");
    EXPECT_EQ(under.saved(), "") << "an entry that has come belongs to it, too";
    auto elsewhere = changed;
    elsewhere.income("i9", "2026-11-19", "Operating bank", "IDR", 1, "sales");
    under.server.replace("GET v1/snapshot", ServerReply::json(elsewhere.json()));
    under.save();
    under.screen.waitUntilGone("ledgerExportDialog");
    EXPECT_EQ(records(under.saved()), 3U) << "one that the page does not show changes nothing";
}

TEST(LedgerExportDialog, HoldsTheFigureOfAReport)
{
    ExportUnderTest under;
    LedgerFilter filter{.period = Period::allTime()};
    filter.figure = ReportFigure{.scope = {.currency = "IDR", .accountIDs = {{"Savings"}}}};
    under.screen.find<LedgerView>("ledgerView")
        .follow({.page = WorkspacePage::ledger, .action = PageAction::showEntries, .subject = {}, .entries = filter});
    under.waitForEntries("2 of ");
    under.open();
    under.waitForCounts("2", "2");
    EXPECT_EQ(under.screen.read("exportFileName"), "quillet-ledger-2026-10-07_2026-11-17.csv");
    under.save();
    under.screen.waitUntilGone("ledgerExportDialog");
    const auto file = under.saved();
    EXPECT_NE(file.find("\"500000.00\""), std::string::npos) << "what arrived on the account";
    EXPECT_EQ(file.find("-500000.00"), std::string::npos) << "the other leg is not of the figure";
}

TEST(LedgerExportDialog, HoldsWhatArrivedWhereTheFigureIsOfThatAlone)
{
    ExportUnderTest under;
    LedgerFilter filter{.period = Period::allTime()};
    filter.figure = ReportFigure{
        .scope = {.currency = "IDR"}, .movements = {Movement::transfer}, .direction = LegDirection::arriving};
    under.screen.find<LedgerView>("ledgerView")
        .follow({.page = WorkspacePage::ledger, .action = PageAction::showEntries, .subject = {}, .entries = filter});
    under.waitForEntries("1 of ");
    under.open();
    under.waitForCounts("1", "1");
    under.save();
    under.screen.waitUntilGone("ledgerExportDialog");
    const auto file = under.saved();
    EXPECT_NE(file.find("\"500000.00\""), std::string::npos) << file;
    EXPECT_EQ(file.find("-500000.00"), std::string::npos) << file;
}

TEST(LedgerExportDialog, OpensOnceHoweverOftenItIsAskedForBeforeItIsThere)
{
    ExportUnderTest under;
    auto* action = under.window.findChild<QAction*>(QStringLiteral("exportLedger"));
    ASSERT_NE(action, nullptr);
    action->trigger();
    action->trigger();
    under.screen.waitForFocus("ledgerExportDialog");
    EXPECT_EQ(under.window.findChildren<LedgerExportDialog*>().size(), 1);
    under.screen.keys("Escape");
    under.screen.waitUntilGone("ledgerExportDialog");
    under.open();
}

TEST(LedgerExportDialog, HoldsTheSelectedEntriesAlone)
{
    ExportUnderTest under;
    auto& table = under.screen.find<LedgerTable>("ledgerTable");
    auto* action = under.window.findChild<QAction*>(QStringLiteral("exportSelected"));
    ASSERT_NE(action, nullptr);
    ASSERT_TRUE(table.chooseAll({"i1"}));
    EXPECT_FALSE(action->isVisible());
    ASSERT_TRUE(table.chooseAll({"i1", "e2"}));
    EXPECT_EQ(action->text(), QStringLiteral("Export these 2…"));
    action->trigger();
    under.screen.waitForFocus("ledgerExportDialog");
    under.waitForCounts("2", "2");
    EXPECT_TRUE(under.screen.says("Selected entries: 2 entries"));
    under.save();
    under.screen.waitUntilGone("ledgerExportDialog");
    EXPECT_NE(under.saved().find("\"i1\""), std::string::npos);
    EXPECT_NE(under.saved().find("\"e2\""), std::string::npos);
    EXPECT_EQ(under.saved().find("\"t1\""), std::string::npos);
}

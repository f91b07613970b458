#include "LedgerUI/Screens/Imports/ImportDialog.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>

#include <QApplication>
#include <QClipboard>
#include <QCoro/QCoroTask>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QTemporaryDir>
#include <QUrl>
#include <gtest/gtest.h>

#include "LedgerCore/Client/testing/BusyWorkers.h"
#include "LedgerCore/Domain/Imports/LedgerImportCSV.h"
#include "LedgerUI/Screens/Company/CompanyView.h"
#include "LedgerUI/Screens/Ledger/LedgerTable.h"
#include "LedgerUI/Screens/Ledger/LedgerView.h"
#include "LedgerUI/testing/LedgerPage.h"
#include "LedgerUI/testing/WindowUnderTest.h"

namespace {

SnapshotBuilder books()
{
    SnapshotBuilder builder;
    builder.account("Bank", {"IDR", "USD"}).account("Savings", {"IDR"}).grantAll();
    builder.permissions({"viewCompany", "manageCompany"});
    builder.category("power", "expense", "Electricity").category("sales", "income", "Sales");
    return builder.balance("Bank", "IDR", 1'000'000'00);
}

const std::string goodRows = "2026-01-02,Income,Bank,IDR,250000,Sales,January,,,\r\n"
                             "2026-01-03,Expense,Bank,IDR,50000,Electricity,,,,\r\n"
                             "2026-01-04,Transfer,Bank,IDR,100000,,,Savings,,\r\n";

struct ImportUnderTest : WindowUnderTest {
    explicit ImportUnderTest(const SnapshotBuilder& shown = books(), const PageRegistry& pages = ledgerPage())
        : WindowUnderTest{pages}
    {
        openDemonstration(shown);
        screen.waitFor("importLedgerButton");
    }
    void open(const std::string& rows)
    {
        screen.press("importLedgerButton");
        screen.waitForFocus("importDialog");
        choose(rows);
    }
    void choose(const std::string& rows)
    {
        std::ofstream{file(), std::ios::binary} << LedgerImportCSV::templateText() << rows;
        screen.find<ImportDialog>("importDialog").chooseFile(file());
        screen.waitFor("importFileName");
    }
    [[nodiscard]] std::filesystem::path file() const
    {
        return std::filesystem::path{folder.path().toStdString()} / "old books.csv";
    }
    void start()
    {
        screen.press("importStart");
        screen.press("questionConfirm");
    }
    [[nodiscard]] std::vector<std::string> keysSent() const
    {
        std::vector<std::string> keys;
        for (const auto& request : server.requests("POST v1/transactions"))
            keys.push_back(Json::decode<TransactionInput>(request.body)->idempotencyKey);
        return keys;
    }

    QTemporaryDir folder;
};

}

TEST(ImportDialog, ShowsWhatAFileWouldRecordAndRecordsItInOrder)
{
    ImportUnderTest under;
    under.open(goodRows);
    under.screen.waitForText("3 records are ready to import");
    EXPECT_TRUE(under.screen.says("3 data rows"));
    const auto entries = under.screen.read("importTable");
    EXPECT_NE(entries.find("2 Jan 2026"), std::string::npos) << entries;
    EXPECT_NE(entries.find("Sales · January"), std::string::npos) << entries;
    EXPECT_NE(entries.find("Bank → Savings"), std::string::npos) << entries;
    const auto effects = under.screen.read("importEffects");
    EXPECT_NE(effects.find("1,000,000 | IDR\u00A01,100,000"), std::string::npos) << effects;
    EXPECT_NE(effects.find("0 | IDR\u00A0100,000"), std::string::npos) << effects;
    EXPECT_TRUE(under.keysSent().empty()) << "nothing is sent before it is confirmed";

    under.server.replace("POST v1/transactions", ServerReply::json(R"({"id":"t"})"));
    under.start();
    under.screen.waitForText("3 records imported successfully.");
    EXPECT_EQ(under.keysSent().size(), 3U);
    under.screen.keys("Esc");
    under.screen.waitUntilGone("importDialog");
    under.screen.waitForText("3 records imported successfully.");
}

TEST(ImportDialog, LeadsFromTheCompanyPageToWhatItRecorded)
{
    const std::string rows = "2026-01-02,Income,Bank,IDR,250000,Sales,January,,,\r\n"
                             "2026-01-04,Income,Bank,IDR,50000,Sales,,,,\r\n";
    const auto plan = LedgerImportCSV::plan(LedgerImportCSV::templateText() + rows, books().build());
    ASSERT_EQ(plan.inputs.size(), 2U);
    std::vector<std::string> ids;
    auto after = books();
    for (const auto& input : plan.inputs) {
        ids.push_back(input.idempotencyKey);
        after.income(input.idempotencyKey, input.date, "Bank", "IDR", 25'000'000, "sales");
    }
    auto pages = ledgerPage();
    pages.add<CompanyView>(WorkspacePage::company);
    ImportUnderTest under{books(), pages};
    under.server.replace("GET v1/invites", ServerReply::json(R"({"invitations":[]})"));
    auto& ledger = under.screen.find<LedgerView>("ledgerView");
    Q_EMIT ledger.linkPressed({.page = WorkspacePage::company, .action = PageAction::setStartDate});
    under.screen.press("importHistory");
    under.screen.waitForFocus("importDialog");
    under.choose(rows);
    under.screen.waitForText("2 records are ready to import");
    under.server.replace("POST v1/transactions", ServerReply::json(R"({"id":"t"})"));
    under.server.replace("GET v1/snapshot", ServerReply::json(after.json()));
    under.start();
    under.screen.waitForText("2 records imported successfully.");
    EXPECT_FALSE(under.screen.shows("ledgerView")) << "what the dialog says is read first";
    under.screen.keys("Esc");
    under.screen.waitFor("ledgerView");
    auto& table = under.screen.find<LedgerTable>("ledgerTable");
    under.screen.waitUntil("they are chosen", [&] { return table.selectedIDs().size() == 2; });
    auto chosen = table.selectedIDs();
    std::ranges::sort(chosen);
    std::ranges::sort(ids);
    EXPECT_EQ(chosen, ids);
    EXPECT_EQ(under.screen.read("statusSaid"), "2 records imported successfully.");
}

TEST(ImportDialog, NamesEveryIssueAndSendsNothing)
{
    ImportUnderTest under;
    std::string rows;
    for (int row = 0; row < 1'001; ++row)
        rows += "2026-02-30,Income,Bank,IDR,1,Sales,,,,\r\n";
    under.open("2026-02-01,Expense,Bank,IDR,1.250.000,Electricity,,,,\r\n" + rows);
    under.screen.waitForText("1,002 issues found; no data has been written");
    EXPECT_FALSE(under.screen.shows("importStart"));
    EXPECT_TRUE(under.screen.says("and 2 more issues"));
    EXPECT_NE(under.screen.read("importTable").find("3 | Date | 2026-02-30 | Invalid date; use YYYY-MM-DD."),
              std::string::npos);
    EXPECT_EQ(under.screen.read("importIssue"),
              "Amount: Amount must be a valid number greater than zero. Write it with a decimal point and without "
              "separators of thousands, such as 1250000.50.");
    under.screen.press("importCopyIssues");
    const auto copied = QApplication::clipboard()->text();
    EXPECT_EQ(copied.count(QLatin1Char{'\n'}), 1'002);
    EXPECT_TRUE(under.screen.says("1,002 issues found; no data has been written\nCopied"));
    EXPECT_TRUE(
        copied.contains(QStringLiteral("2\tAmount\t1.250.000\tAmount must be a valid number greater than zero.")));

    under.choose("2027-01-01,Income,Bank,IDR,1,Sales,,,,\r\n"); // well written, and refused by the books
    under.screen.waitForText("1 issue found; no data has been written");
    EXPECT_FALSE(under.screen.shows("importStart"));
    under.choose("");
    under.screen.waitForText("The file has no data rows.");
    std::filesystem::remove(under.file());
    under.screen.find<ImportDialog>("importDialog").chooseFile(under.file());
    under.screen.waitForText("The file could not be read.");
    std::ofstream{under.file()} << std::string(LedgerImportCSV::maximumFileSize + 1, 'x');
    under.screen.find<ImportDialog>("importDialog").chooseFile(under.file());
    under.screen.waitForText("The file cannot exceed 5 MB.");
    EXPECT_TRUE(under.keysSent().empty());
}

TEST(ImportDialog, GivesTheRowsBackWithTheirIssuesSoThatTheyCanBeMended)
{
    ImportUnderTest under;
    under.open("2026-01-02,Income,Bank,IDR,250000,Sales,=January,,,\r\n"
               "2026-01-03,Expense,Bank,IDR,50.000.0,Electricity,,,,\r\n");
    under.screen.waitForText("1 issue found");
    under.screen.press("importSaveIssues");
    under.screen.waitForFocus("importSaveDialog");
    const auto saved = std::filesystem::path{under.folder.path().toStdString()} / "issues.csv";
    under.screen.fill("fileNameEdit", saved.string());
    under.screen.keys("Return");
    under.screen.waitUntil("the file is there", [&] { return std::filesystem::exists(saved); });
    std::ostringstream file;
    file << std::ifstream{saved, std::ios::binary}.rdbuf();
    auto text = file.str();
    EXPECT_NE(text.find("\"Amount: Amount must be a valid number"), std::string::npos) << text;
    const auto fault = text.find("50.000.0");
    ASSERT_NE(fault, std::string::npos) << text;
    text.replace(fault, 8, "50000");
    std::ofstream{saved, std::ios::binary | std::ios::trunc} << text;
    under.screen.find<ImportDialog>("importDialog").chooseFile(saved);
    under.screen.waitForText("2 records are ready to import");
    EXPECT_NE(under.screen.read("importTable").find("Sales · =January"), std::string::npos);
}

TEST(ImportDialog, ReadsAFileThatIsDroppedOnIt)
{
    ImportUnderTest under;
    under.screen.keys("Ctrl+I");
    under.screen.waitForFocus("importDialog");
    std::ofstream{under.file(), std::ios::binary} << LedgerImportCSV::templateText() << goodRows;
    auto& dialog = under.screen.find<ImportDialog>("importDialog");
    const auto drop = [&](const QList<QUrl>& urls) {
        QMimeData data;
        data.setUrls(urls);
        QDragEnterEvent enters{{10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier};
        QApplication::sendEvent(&dialog, &enters);
        if (!enters.isAccepted())
            return false;
        QDropEvent drops{{10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier};
        QApplication::sendEvent(&dialog, &drops);
        return true;
    };
    const auto url = QUrl::fromLocalFile(QString::fromStdString(under.file().string()));
    EXPECT_FALSE(drop({url, url})) << "which of them?";
    EXPECT_FALSE(drop({QUrl{QStringLiteral("https://books.example/old.csv")}}));
    EXPECT_TRUE(drop({url}));
    under.screen.waitForText("3 records are ready to import");
}

TEST(ImportDialog, SaysWhyItDoesNotStartWhileTheBooksComeAnew)
{
    ImportUnderTest under;
    under.open(goodRows);
    under.screen.waitFor("importStart");
    under.screen.press("importStart");
    under.screen.waitFor("questionConfirm");
    under.server.replace("GET v1/snapshot", ServerReply::parked());
    QCoro::connect(under.store.refresh(false), &under.store, [](const Result<void>&) {});
    under.screen.waitUntil("the books are on their way", [&] { return under.store.isBusy(); });
    under.screen.press("questionConfirm");
    under.screen.waitForText("Wait until the current operation ends.");
    EXPECT_TRUE(under.keysSent().empty());
    under.server.release(ServerReply::json(books().json()));
    under.screen.waitUntil("the books are there", [&] { return !under.store.isBusy(); });
    EXPECT_FALSE(under.screen.says("Wait until the current operation ends."));
    EXPECT_TRUE(under.screen.says("3 records are ready to import"));
}

TEST(ImportDialog, GoesOnWithTheSameKeysAfterAReplyWasLost)
{
    ImportUnderTest under;
    under.server.answer("POST v1/transactions", ServerReply::json(R"({"id":"t"})"));
    under.server.answer("POST v1/transactions", ServerReply::dropped());
    under.open(goodRows);
    under.screen.waitFor("importStart");
    under.start();
    under.screen.waitForText("Import stopped after 1 confirmed record.");
    EXPECT_FALSE(under.screen.shows("alertDialog")) << "the form says it";
    const auto before = under.keysSent();

    under.server.replace("POST v1/transactions", ServerReply::json(R"({"id":"t"})"));
    under.screen.press("Go on with this file");
    under.screen.waitForText("3 records are ready to import");
    under.start();
    under.screen.waitForText("3 records imported successfully.");
    const auto all = under.keysSent();
    ASSERT_GE(before.size(), 2U);
    EXPECT_EQ(std::vector(all.end() - 3, all.begin() + static_cast<std::ptrdiff_t>(all.size()))[0], before[0]);
    EXPECT_EQ(all[all.size() - 2], before[1]);
}

TEST(ImportDialog, SaysWhyItStoppedInTheLanguageOfNow)
{
    ImportUnderTest under;
    const Failure refusal = APIError{409, "insufficient_funds", ""};
    const auto why = [&](const char* locale) { return under.store.friendly(refusal, locale); };
    under.server.answer("POST v1/transactions", ServerReply::error(409, "insufficient_funds"));
    under.open(goodRows);
    under.screen.waitFor("importStart");
    under.start();
    under.screen.waitForText(why("en-US"));
    under.speak("vi-VN");
    EXPECT_TRUE(under.screen.says(why("vi-VN"))) << under.screen.readAll();
    EXPECT_FALSE(under.screen.says(why("en-US")));
}

TEST(ImportDialog, MarksWhatIsRecordedAlready)
{
    const auto plan = LedgerImportCSV::plan(LedgerImportCSV::templateText() + goodRows, books().build());
    ASSERT_EQ(plan.inputs.size(), 3U);
    auto after = books();
    after.income(plan.inputs[0].idempotencyKey, "2026-01-02", "Bank", "IDR", 25'000'000, "sales");
    ImportUnderTest under{after};
    under.open(goodRows);
    under.screen.waitForText("1 of them is recorded already and will not be duplicated.");
    EXPECT_NE(under.screen.read("importTable").find("Recorded already"), std::string::npos);
}

TEST(ImportDialog, ReadsAFileAnewWhereTheBooksChangedMeanwhile)
{
    const auto plan = LedgerImportCSV::plan(LedgerImportCSV::templateText() + goodRows, books().build());
    ASSERT_EQ(plan.inputs.size(), 3U);
    ImportUnderTest under;
    under.screen.press("importLedgerButton");
    under.screen.waitForFocus("importDialog");
    auto workers = std::make_unique<BusyWorkers>();
    std::ofstream{under.file(), std::ios::binary} << LedgerImportCSV::templateText() << goodRows;
    under.screen.find<ImportDialog>("importDialog").chooseFile(under.file());
    auto after = books();
    after.income(plan.inputs[0].idempotencyKey, "2026-01-02", "Bank", "IDR", 25'000'000, "sales");
    under.server.replace("GET v1/snapshot", ServerReply::json(after.json()));
    QCoro::connect(under.store.refresh(false), &under.store, [](const Result<void>&) {});
    under.screen.waitUntil("the newer books are there",
                           [&] { return !under.store.isBusy() && under.store.snapshot()->transactions.size() == 1; });
    EXPECT_FALSE(under.screen.shows("importStart")) << "nothing is known of the file yet";
    workers.reset();
    under.screen.waitForText("1 of them is recorded already and will not be duplicated.");
    EXPECT_TRUE(under.screen.shows("importStart"));
}

TEST(ImportDialog, StopsWhenAskedAndEndsWithTheSession)
{
    ImportUnderTest under;
    under.server.answer("POST v1/transactions", ServerReply::json(R"({"id":"t"})"));
    under.server.answer("POST v1/transactions", ServerReply::parked());
    under.open(goodRows);
    under.screen.waitFor("importStart");
    under.start();
    under.screen.waitForText("1 / 3 records confirmed");
    under.screen.keys("Esc");
    under.screen.waitForText("Import stopped after 1 confirmed record.");
    EXPECT_TRUE(under.screen.shows("importDialog"));

    under.server.replace("POST v1/transactions", ServerReply::json(R"({"id":"t"})"));
    under.server.answer("POST v1/transactions", ServerReply::error(401, "unauthorized"));
    under.choose(goodRows);
    under.screen.waitFor("importStart");
    under.start();
    under.screen.waitUntilGone("importDialog");
    under.screen.waitFor("alertDialog");
    EXPECT_TRUE(under.screen.says("Import stopped after 1 confirmed record.")) << under.screen.readAll();
}

TEST(ImportDialog, SavesItsTemplateOrSaysWhyNot)
{
    ImportUnderTest under;
    under.screen.press("importLedgerButton");
    under.screen.waitForFocus("importDialog");
    const auto saveAs = [&](const std::filesystem::path& path) {
        under.screen.press("importTemplate");
        under.screen.waitForFocus("importSaveDialog");
        under.screen.fill("fileNameEdit", path.string());
        under.screen.keys("Return");
    };
    const auto folder = std::filesystem::path{under.folder.path().toStdString()};
    saveAs(folder / "template");
    under.screen.waitUntil("the template is saved", [&] { return std::filesystem::exists(folder / "template.csv"); });
    std::ostringstream saved;
    saved << std::ifstream{folder / "template.csv", std::ios::binary}.rdbuf();
    EXPECT_EQ(saved.str(), LedgerImportCSV::templateText());
    under.screen.waitForText("Saved template.csv");

    saveAs(folder / "gone" / "template.csv");
    under.screen.waitForText("The file could not be saved.");
    EXPECT_TRUE(under.screen.says("The folder is no longer there."));
    saveAs(folder / "again.csv");
    under.screen.waitUntil("the template is saved", [&] { return std::filesystem::exists(folder / "again.csv"); });
    under.screen.waitForText("Saved again.csv");
    EXPECT_FALSE(under.screen.says("The file could not be saved."));
}

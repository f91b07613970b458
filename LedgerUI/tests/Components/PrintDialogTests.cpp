#include "LedgerUI/Components/Print/PrintDialog.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include <QCoreApplication>
#include <QPrinter>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "LedgerCore/Client/testing/BusyWorkers.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Buttons/SegmentedControl.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Screens/Reports/ReportsView.h"
#include "LedgerUI/Screens/Summary/SummaryView.h"
#include "LedgerUI/testing/ReportSample.h"
#include "LedgerUI/testing/WindowUnderTest.h"

namespace {

PageRegistry reportsPage()
{
    PageRegistry pages;
    pages.add<ReportsView>(WorkspacePage::reports);
    return pages;
}

struct PrintUnderTest : WindowUnderTest {
    explicit PrintUnderTest(const SnapshotBuilder& books = reportSample()) : WindowUnderTest{reportsPage()}
    {
        openDemonstration(books);
        screen.waitFor("currencyTable");
    }
    void open()
    {
        screen.keys("Ctrl+P");
        screen.waitForFocus("printDialog");
        screen.waitUntil("the pages are there", [this] { return screen.offers("printSave"); });
    }
    [[nodiscard]] std::filesystem::path path(const char* name = "report.pdf") const
    {
        return std::filesystem::path{folder.path().toStdString()} / name;
    }
    [[nodiscard]] std::string text(const char* name = "report.pdf") const
    {
        QProcess process;
        process.start(QStringLiteral("pdftotext"),
                      {QStringLiteral("-layout"), QString::fromStdString(path(name)), QStringLiteral("-")});
        process.waitForFinished();
        return process.readAllStandardOutput().toStdString();
    }
    PrintDialog& dialog() { return screen.find<PrintDialog>("printDialog"); }

    QTemporaryDir folder;
};

}

TEST(PrintDialog, SavesTheReportInSightInEveryLanguage)
{
    struct Said {
        const char* language;
        std::vector<const char*> words;
    };
    const std::array cases{
        Said{"zh-CN", {"概览", "2026年11月", "截至", "全部账户", "期末", "最大支出"}},
        Said{"id-ID", {"Ikhtisar", "November 2026", "Semua rekening", "Saldo akhir", "Pengeluaran terbesar"}},
        Said{"vi-VN", {"Tổng quan", "Tháng 11 năm 2026", "Tất cả tài khoản", "Cuối kỳ", "Khoản chi lớn nhất"}},
        Said{"en-US", {"Overview", "November 2026", "All accounts", "Closing", "Largest expenses"}}};
    for (const auto& said : cases) {
        PrintUnderTest under;
        under.speak(said.language);
        under.open();
        under.dialog().saveTo(under.path());
        under.screen.waitUntilGone("printDialog");
        const auto text = under.text();
        for (const auto* each : said.words)
            EXPECT_NE(text.find(each), std::string::npos) << each << " in\n" << text;
        EXPECT_NE(text.find("PT Lentera Niaga Nusantara"), std::string::npos);
        const bool isEnglishGrouped = std::string{said.language} == "zh-CN" || std::string{said.language} == "en-US";
        EXPECT_NE(text.find(isEnglishGrouped ? "197,420.00" : "197.420,00"), std::string::npos) << text;
        under.screen.waitForText("report.pdf");
    }
}

/// The other reports, read back from their files: title, heads and figures as the language writes them.
TEST(PrintDialog, SavesEveryOtherReportInEveryLanguage)
{
    using Words = std::vector<const char*>;
    struct Said {
        const char* language;
        std::array<Words, 3> reports; // in the order of the tabs
    };
    const std::array cases{
        Said{"zh-CN",
             {{{"收入与支出", "趋势", "各期间的收入与支出", "支出合计", "112,640,000"},
               {"账户矩阵", "各月末余额", "Kas kecil – Rizky", "3,200,377,600"},
               {"资金变动", "各类资金变动", "内部划拨", "5,000,000"}}}},
        Said{"id-ID",
             {{{"Pemasukan & pengeluaran", "Tren", "Pemasukan dan pengeluaran per periode", "Total pengeluaran",
                "112.640.000"},
               {"Matriks rekening", "Saldo akhir bulan", "Kas kecil – Rizky", "3.200.377.600"},
               {"Pergerakan dana", "Pergerakan menurut jenis", "Transfer", "5.000.000"}}}},
        Said{"vi-VN",
             {{{"Thu và chi", "Xu hướng", "Thu và chi theo kỳ", "Tổng chi", "112.640.000"},
               {"Ma trận tài khoản", "Số dư cuối tháng", "Kas kecil – Rizky", "3.200.377.600"},
               {"Biến động tiền", "Biến động theo loại", "Chuyển nội bộ", "5.000.000"}}}},
        Said{"en-US",
             {{{"Income and expense", "Trend", "Income and expense by period", "Total expense", "112,640,000"},
               {"Account matrix", "Balances at month ends", "Kas kecil – Rizky", "3,200,377,600"},
               {"Fund movements", "Movements by kind", "Transfer", "5,000,000"}}}}};
    for (const auto& said : cases) {
        PrintUnderTest under;
        under.speak(said.language);
        const std::array tabs{"incomeTab", "matrixTab", "movementsTab"};
        for (std::size_t at = 0; at < tabs.size(); ++at) {
            under.screen.keys("Ctrl+Tab");
            under.screen.waitFor(tabs[at]);
            under.open();
            const auto file = std::string{tabs[at]} + ".pdf";
            under.dialog().saveTo(under.path(file.c_str()));
            under.screen.waitUntilGone("printDialog");
            under.activate();
            const auto text = under.text(file.c_str());
            for (const auto* each : said.reports[at])
                EXPECT_NE(text.find(each), std::string::npos) << each << " in\n" << text;
        }
    }
}

TEST(PrintDialog, IsOfferedAFileByItsOwnName)
{
    PrintUnderTest under;
    under.open();
    under.screen.press("printSave");
    under.screen.waitForFocus("printFileDialog");
    EXPECT_EQ(under.screen.read("fileNameEdit"), "tallyfold-report-overview-2026-11-01_2026-11-30.pdf");
    under.screen.fill("fileNameEdit", under.path("mine").string());
    under.screen.keys("Return");
    under.screen.waitUntilGone("printDialog");
    EXPECT_TRUE(std::filesystem::exists(under.path("mine.pdf")));
}

TEST(PrintDialog, LaysOutAnewForOtherPaperAndAnotherLanguage)
{
    PrintUnderTest under;
    under.open();
    EXPECT_EQ(under.screen.read("printPages"), "2 pages");
    under.screen.press("Letter");
    under.screen.press("Landscape");
    under.screen.waitUntil("the pages are there", [&] { return under.screen.offers("printSave"); });
    under.dialog().saveTo(under.path());
    under.screen.waitUntilGone("printDialog");
    QProcess process;
    process.start(QStringLiteral("pdfinfo"), {QString::fromStdString(under.path())});
    process.waitForFinished();
    EXPECT_TRUE(process.readAllStandardOutput().contains("792 x 612 pts (letter)"));
    under.activate();
    under.open();
    under.speak("id-ID");
    under.screen.waitUntil("the pages are there", [&] { return under.screen.offers("printSave"); });
    under.dialog().saveTo(under.path("second.pdf"));
    under.screen.waitUntilGone("printDialog");
    EXPECT_NE(under.text("second.pdf").find("Ikhtisar"), std::string::npos);
}

TEST(PrintDialog, LaysNothingOutOfADocumentThatIsBeingMadeAnew)
{
    PrintUnderTest under;
    under.open();
    auto& dialog = under.dialog();
    auto& paper = under.screen.find<SegmentedControl>("printPaper");
    auto workers = std::make_unique<BusyWorkers>();
    InterfaceLanguage::change("id-ID");
    QEvent changed{QEvent::LanguageChange};
    QCoreApplication::sendEvent(&dialog, &changed);
    EXPECT_FALSE(dialog.confirmButton().isEnabled());
    Q_EMIT paper.chosenByUser(QPageSize::Letter); // before the document is there
    workers.reset();
    under.screen.waitUntil("the pages are there", [&] { return under.screen.offers("printSave"); });
    under.dialog().saveTo(under.path());
    under.screen.waitUntilGone("printDialog");
    EXPECT_NE(under.text().find("Ikhtisar"), std::string::npos) << under.text();
    under.speak("en-US");
}

TEST(PrintDialog, GivesNothingOutFromBooksThatHaveChangedAndSaysWhy)
{
    for (const int more : {0, 1001}) { // of many the page works on the report when the dialog already asks for it
        auto changed = reportSample();
        for (int at = 0; at < more; ++at)
            changed.expense("b" + std::to_string(at), "2025-12-20", "Operating bank", "IDR", 1, "packaging");
        PrintUnderTest under{changed};
        under.open();
        changed.expense("e9", "2026-11-19", "Operating bank", "IDR", 1, "rent");
        under.server.replace("GET v1/snapshot", ServerReply::json(changed.json()));
        under.dialog().saveTo(under.path());
        under.screen.waitForText("The records have changed");
        EXPECT_FALSE(std::filesystem::exists(under.path()));
        under.screen.waitUntil("the pages are there", [&] { return under.screen.offers("printSave"); });
        under.dialog().saveTo(under.path());
        under.screen.waitUntilGone("printDialog");
        EXPECT_NE(under.text().find("54,000,000.01"), std::string::npos) << "as the books stand now: " << under.text();
    }
}

TEST(PrintDialog, StaysOpenWhereTheFileCannotBeWritten)
{
    PrintUnderTest under;
    under.open();
    under.dialog().saveTo(under.path("gone/report.pdf"));
    under.screen.waitForText("The folder is no longer there.");
    EXPECT_TRUE(under.screen.says("The file could not be saved."));
    std::ofstream{under.path()} << "what stood there";
    under.dialog().saveTo("/dev/full/report.pdf");
    under.screen.waitUntil("it can be saved again", [&] { return under.screen.offers("printSave"); });
    under.dialog().saveTo(under.path());
    under.screen.waitUntilGone("printDialog");
    EXPECT_NE(under.text().find("Overview"), std::string::npos) << "the file was replaced whole";
}

TEST(PrintDialog, PrintsOnThePaperOfThePrinter)
{
    PrintUnderTest under;
    under.open();
    const auto printer = std::make_shared<QPrinter>(QPrinter::HighResolution);
    printer->setOutputFormat(QPrinter::PdfFormat);
    printer->setOutputFileName(QString::fromStdString(under.path()));
    printer->setPageSize(QPageSize{QPageSize::A5});
    under.dialog().printOn(printer);
    under.screen.waitUntilGone("printDialog");
    under.screen.waitForText("Sent to the printer");
    EXPECT_NE(under.text().find("Largest expenses"), std::string::npos);
}

/// Who does not see the whole company has own accounts on paper, in all their currencies.
TEST(PrintDialog, SavesTheSummaryOfAMember)
{
    PageRegistry pages;
    pages.add<SummaryView>(WorkspacePage::summary);
    WindowUnderTest under{std::move(pages)};
    auto own = reportSample();
    under.openDemonstration(own.permissions({"exportData"}));
    under.screen.waitFor("ownAccountTable");
    under.screen.keys("Ctrl+P");
    under.screen.waitForFocus("printDialog");
    under.screen.waitUntil("the pages are there", [&] { return under.screen.offers("printSave"); });
    const QTemporaryDir folder;
    const auto path = folder.filePath(QStringLiteral("summary.pdf"));
    under.screen.find<PrintDialog>("printDialog").saveTo(path.toStdString());
    under.screen.waitUntilGone("printDialog");
    QProcess process;
    process.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), path, QStringLiteral("-")});
    process.waitForFinished();
    const auto text = process.readAllStandardOutput().toStdString();
    for (const auto* said : {"Summary", "November 2026", "Kas kecil", "196,360.00", "16,074.00",
                             "Only the accounts and entries that you may see."})
        EXPECT_NE(text.find(said), std::string::npos) << said << " in\n" << text;
}

TEST(PrintDialog, IsForThoseWhoMayExportAndEndsWithTheSession)
{
    {
        PrintUnderTest under{reportSample().permissions({"viewCompany"})};
        EXPECT_FALSE(under.screen.shows("printReportButton"));
        under.screen.keys("Ctrl+P");
        EXPECT_FALSE(under.screen.shows("printDialog"));
    }
    PrintUnderTest under;
    under.open();
    under.server.replace("GET v1/snapshot", ServerReply::error(401, "unauthorized"));
    under.dialog().saveTo(under.path());
    under.screen.waitUntilGone("printDialog");
    EXPECT_FALSE(std::filesystem::exists(under.path()));
}

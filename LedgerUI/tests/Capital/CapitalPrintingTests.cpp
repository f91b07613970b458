#include <QAbstractButton>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "LedgerUI/Components/Print/PrintDialog.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/tests/CapitalUnderTest.h"

// Capital and dividends on paper, from the page by keys to the text that a reader of the PDF finds.

namespace {

struct Desk : WindowUnderTest {
    explicit Desk(const CapitalSample& sample = capitalSample()) : WindowUnderTest{capitalPages()}
    {
        openBooks(*this, sample);
    }

    void waitForPages()
    {
        screen.waitForFocus("printDialog");
        screen.waitUntil("the pages are there", [this] { return screen.offers("printSave"); });
    }
    /// Saves what is previewed and reads it back.
    std::string saved()
    {
        waitForPages();
        const auto path = m_folder.filePath(QStringLiteral("document.pdf"));
        screen.find<PrintDialog>("printDialog").saveTo(path.toStdString());
        screen.waitUntilGone("printDialog");
        activate();
        QProcess process;
        process.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), path, QStringLiteral("-")});
        process.waitForFinished();
        return process.readAllStandardOutput().toStdString();
    }
    /// The paper of the file that was saved last, as poppler names it.
    std::string paper()
    {
        QProcess process;
        process.start(QStringLiteral("pdfinfo"), {m_folder.filePath(QStringLiteral("document.pdf"))});
        process.waitForFinished();
        return process.readAllStandardOutput().toStdString();
    }

private:
    QTemporaryDir m_folder;
};

void expectAll(const std::string& text, std::initializer_list<const char*> parts)
{
    for (const auto* part : parts)
        EXPECT_NE(text.find(part), std::string::npos) << part << " is missing from\n" << text;
}

}

TEST(CapitalPrinting, SavesEachTabWithTheFiguresOfTheScreen)
{
    Desk desk;
    desk.screen.keys("Ctrl+P");
    expectAll(desk.saved(), {"1,200,000,000", "31,350,000", "Ownership versions", "38.33", "Latest records"});
    desk.screen.turnTo("contributionsTable");
    desk.screen.keys("Ctrl+P");
    expectAll(desk.saved(), {"+150,000,000", "Reversed on", "Historical contributions", "1,850,000,000"});
    desk.screen.turnTo("batchesTable");
    desk.screen.keys("Ctrl+P");
    expectAll(desk.saved(), {"2026 Q2", "2026 Q3", "Advances", "No cash flow", "64,500,000"});
}

TEST(CapitalPrinting, SavesTheStatementOfTheChosenParticipantInEachLanguage)
{
    constexpr std::tuple<const char*, const char*, const char*> languages[] = {
        {"zh-CN", "分红结算单", "31,350,000"},
        {"id-ID", "Laporan pelunasan dividen", "31.350.000"},
        {"vi-VN", "Bảng kê thanh toán cổ tức", "31.350.000"},
        {"en-US", "Dividend settlement statement", "31,350,000"}};
    Desk desk;
    desk.screen.turnTo("batchesTable");
    desk.screen.pressRow("linesTable", "陈思远");
    for (const auto& [language, title, unpaid] : languages) {
        desk.speak(language);
        desk.screen.press("printStatementButton");
        const auto text = desk.saved();
        expectAll(text, {title, unpaid, "陈思远", "2026 Q2"});
        EXPECT_EQ(text.find("Budi"), std::string::npos) << "nobody else's figures are on it";
    }
}

TEST(CapitalPrinting, SavesEachTabInTheWordsAndFiguresOfEachLanguage)
{
    struct Sheet {
        const char* contents;
        std::vector<std::string_view> words; // of the heads, notes and remarks on it
        std::vector<std::string> figures;    // in English
    };
    const Sheet sheets[] = {
        {"ownersTable", {"owners", "ownership.title", "latest.title", "ownership.inForce"}, {"1,200,000,000", "38.33"}},
        {"contributionsTable", {"tab.contributions", "baseline.title"}, {"+150,000,000", "1,850,000,000"}},
        {"batchesTable", {"advances.title", "movements.title", "remark.noCash"}, {"64,500,000", "25.00"}}};
    Desk desk;
    for (const std::string language : {"zh-CN", "id-ID", "vi-VN", "en-US"}) {
        desk.speak(language);
        const bool usesCommas = language == "id-ID" || language == "vi-VN";
        for (const auto& sheet : sheets) {
            desk.screen.turnTo(sheet.contents);
            desk.screen.keys("Ctrl+P");
            const auto text = desk.saved();
            for (const auto word : sheet.words)
                EXPECT_NE(text.find(wordIn(language, capitalWords(), word).toStdString()), std::string::npos)
                    << language << ' ' << word << " is missing from\n"
                    << text;
            for (auto figure : sheet.figures) {
                for (auto& sign : figure)
                    sign = !usesCommas ? sign : sign == ',' ? '.' : sign == '.' ? ',' : sign;
                EXPECT_NE(text.find(figure), std::string::npos) << language << ' ' << figure << '\n' << text;
            }
        }
    }
}

TEST(CapitalPrinting, LaysTheStatementOutOnTheChosenPaper)
{
    Desk desk;
    desk.screen.turnTo("batchesTable");
    for (const auto& [segment, named] :
         {std::pair{QPageSize::Letter, "612 x 792 pts (letter)"}, std::pair{QPageSize::A4, "(A4)"}}) {
        desk.screen.press("printStatementButton");
        desk.waitForPages();
        auto& sizes = desk.screen.find("printPaper");
        sizes.findChild<QAbstractButton*>(QStringLiteral("segment%1").arg(static_cast<int>(segment)))->click();
        desk.saved();
        EXPECT_NE(desk.paper().find(named), std::string::npos) << desk.paper();
    }
}

TEST(CapitalPrinting, MakesThePreviewAnewWhereTheRecordsHaveChanged)
{
    Desk desk;
    desk.screen.turnTo("batchesTable");
    desk.screen.pressRow("linesTable", "陈思远");
    desk.screen.press("printStatementButton");
    desk.waitForPages();
    auto newer = capitalSample();
    serveBooks(desk, newer.pay("2026-11-20", "d4", "d2", "2,000,000", "Operating bank"));
    desk.screen.find<PrintDialog>("printDialog").saveTo("/nowhere/at/all.pdf");
    desk.screen.waitForText("The records have changed; the preview is up to date. Look at it again.");
    expectAll(desk.saved(), {"29,350,000"});
}

TEST(CapitalPrinting, IsOfferedOnlyToWhomMayExportWhatIsOnThePaper)
{
    const auto offers = [](std::vector<std::string> permissions, const char* tab, const char* button) {
        auto sample = capitalSample();
        sample.books().currentMember.role = "partner";
        sample.books().currentMember.permissions = std::move(permissions);
        Desk desk{sample};
        desk.screen.turnTo(tab);
        return desk.screen.shows(button);
    };
    const std::vector<std::string> looks{"viewCapital", "viewDividends"};
    EXPECT_FALSE(offers(looks, "ownersTable", "printCapitalButton"));
    EXPECT_FALSE(offers(looks, "batchesTable", "printStatementButton"));
    const std::vector<std::string> capital{"viewCapital", "viewDividends", "exportCapital"};
    EXPECT_FALSE(offers(capital, "ownersTable", "printCapitalButton")) << "dividends stand on it as well";
    EXPECT_TRUE(offers(capital, "contributionsTable", "printCapitalButton"));
    const std::vector<std::string> dividends{"viewCapital", "viewDividends", "exportData"};
    EXPECT_TRUE(offers(dividends, "batchesTable", "printStatementButton"));
    EXPECT_FALSE(offers(dividends, "contributionsTable", "printCapitalButton"));
    auto broken = capitalSample();
    broken.books().capital->contributions.front().date = "2025-12-31";
    EXPECT_FALSE(Desk{broken}.screen.shows("printCapitalButton"));
}

TEST(CapitalView, ShowsTheBreakdownOfAParticipantFromTheOverview)
{
    Desk desk;
    desk.screen.pressRow("ownersTable", "Thanh Hương");
    desk.screen.find("ownersTable").setFocus();
    desk.screen.keys("Return");
    desk.screen.waitFor("settlementEquation");
    EXPECT_TRUE(desk.screen.says("16,125,000")) << "her part of the newest allocation";
}

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>

#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "LedgerUI/Components/Print/PagePainter.h"
#include "LedgerUI/Presentation/Print/Paginator.h"
#include "LedgerUI/Presentation/Reports/Output/ReportPrint.h"
#include "LedgerUI/Theme/TypeScale.h"
#include "LedgerUI/testing/ReportSample.h"

namespace {

using Level = PrintedRow::Level;
using Orientation = PaperChoice::Orientation;

constexpr double margin = 420; // that printers keep free

/// Words of four languages as books hold them, by the number of a row.
QString note(int at)
{
    static const QStringList notes{
        QStringLiteral("Sewa gudang Jl. Jend. Sudirman Kav. 52–53, termasuk biaya pemeliharaan dan keamanan"),
        QStringLiteral("支付十一月份仓库租金及物业管理费，含电费和水费，由财务部统一转账"),
        QStringLiteral("Thanh toán tiền thuê kho tháng 11 cho Công ty Trách nhiệm hữu hạn Vận tải Hà Nội"),
        QStringLiteral("Refund of an office fit-out, file 4711/ffi-a")};
    return notes[at % notes.size()];
}

PrintedDocument document(int rows)
{
    PrintedDocument made{.locale = "en-US",
                         .company = QStringLiteral("PT Lentera Niaga Nusantara · 灯塔贸易"),
                         .title = QStringLiteral("Sổ cái"),
                         .facts = {{QStringLiteral("Period"), QStringLiteral("November 2026")}},
                         .notes = {QStringLiteral("Reversals count in the period in which they are booked.")}};
    PrintedTable table{.title = QStringLiteral("Entries"),
                       .columns = {{.head = QStringLiteral("Date")},
                                   {.head = QStringLiteral("备注 Note"), .width = PrintedColumn::Width::rest},
                                   {.head = QStringLiteral("Amount"), .side = PrintedColumn::Side::end}},
                       .rows = {}};
    for (int at = 0; at < rows; ++at)
        table.rows.push_back({.cells = {{QStringLiteral("2026-11-%1").arg(at % 30 + 1, 2, 10, QLatin1Char('0'))},
                                        {note(at)},
                                        {QStringLiteral("−%1,500.00").arg(at)}}});
    made.tables.push_back(std::move(table));
    return made;
}

PrintedPages pagesOf(const PrintedDocument& shown, const PaperChoice& paper = {})
{
    return Paginator::pages(shown, paper, TypeScale::font(TypeStep::body).families());
}

QString textOf(const PrintedPage& page)
{
    QString all;
    for (const auto& text : page.texts)
        all += text.text + QLatin1Char('\n');
    return all;
}

std::size_t count(const PrintedPage& page, const QString& text)
{
    return static_cast<std::size_t>(std::ranges::count(page.texts, text, &PrintedText::text));
}

/// What stands outside the margins, or upon another text of its line.
std::vector<std::string> misplaced(const PrintedPages& pages)
{
    std::vector<std::string> found;
    for (const auto& page : pages.pages) {
        std::map<double, std::vector<const PrintedText*>> lines;
        for (const auto& text : page.texts) {
            const bool isInside = text.place.x() >= margin - 1 &&
                                  text.place.x() + text.width <= pages.size.width() - margin + 2 &&
                                  text.place.y() > margin && text.place.y() < pages.size.height() - 200;
            if (!isInside)
                found.push_back("outside: " + text.text.toStdString());
            lines[text.place.y()].push_back(&text);
        }
        for (auto& [y, texts] : lines) {
            std::ranges::sort(texts, {}, [](const auto* text) { return text->place.x(); });
            for (std::size_t at = 1; at < texts.size(); ++at) {
                if (texts[at - 1]->place.x() + texts[at - 1]->width > texts[at]->place.x())
                    found.push_back("covered: " + texts[at]->text.toStdString());
            }
        }
    }
    return found;
}

/// The figures of the tables that stand nowhere in one piece.
std::vector<std::string> brokenFigures(const PrintedDocument& shown, const PrintedPages& pages)
{
    std::set<QString> written;
    for (const auto& page : pages.pages) {
        for (const auto& text : page.texts)
            written.insert(text.text);
    }
    std::vector<std::string> broken;
    for (const auto& table : shown.tables) {
        for (const auto& row : table.rows) {
            for (std::size_t at = 0; at < table.columns.size() && row.level != Level::group; ++at) {
                const auto& text = row.cells[at].text;
                if (table.columns[at].side == PrintedColumn::Side::end && !text.isEmpty() && !written.contains(text))
                    broken.push_back(text.toStdString());
            }
        }
    }
    return broken;
}

/// What the PDF tools of the system read in a file.
QString toolReads(const char* tool, const QStringList& arguments)
{
    QProcess process;
    process.start(QString::fromLatin1(tool), arguments);
    if (!process.waitForFinished() || process.exitCode() != 0)
        return QStringLiteral("%1 failed: ").arg(QString::fromLatin1(tool)) + process.errorString();
    return QString::fromUtf8(process.readAllStandardOutput());
}

/// Readers leave out blanks that are narrow.
QRegularExpression numberOf(int page, std::size_t pages)
{
    return QRegularExpression{QStringLiteral("%1 ?/ ?%2\n").arg(page).arg(pages)};
}

struct SavedPdf {
    explicit SavedPdf(const PrintedPages& pages)
    {
        const auto content = PagePainter::pdf(pages);
        std::ofstream{path().toStdString(), std::ios::binary} << content;
    }
    [[nodiscard]] QString path() const { return folder.filePath(QStringLiteral("document.pdf")); }
    [[nodiscard]] QString page(int number) const
    {
        const auto at = QString::number(number);
        return toolReads("pdftotext", {QStringLiteral("-layout"), QStringLiteral("-f"), at, QStringLiteral("-l"), at,
                                       path(), QStringLiteral("-")});
    }
    [[nodiscard]] QString facts() const { return toolReads("pdfinfo", {path()}); }

    QTemporaryDir folder;
};

}

TEST(PrintedPages, DrawAChartWithItsWordsAboveTheTables)
{
    auto shown = document(3);
    const auto books = std::make_shared<const LedgerSnapshot>();
    ChartData data{.currency = "USD", .places = {}, .series = {}, .chosen = 1};
    for (const auto* month : {"Oct", "Nov"})
        data.places.push_back({QString::fromLatin1(month), QString::fromLatin1(month)});
    data.series = {{QStringLiteral("Income"), ChartMark::bar, ChartRole::income, {120'000, 90'000}},
                   {QStringLiteral("Net"), ChartMark::line, ChartRole::net, {20'000, -40'000}}};
    shown.charts.push_back({.title = QStringLiteral("Months · USD"), .data = data, .books = books});
    const auto pages = pagesOf(shown);
    ASSERT_EQ(pages.pages.size(), 1U);
    const auto& page = pages.pages.front();
    ASSERT_EQ(page.drawings.size(), 1U);
    const auto& drawing = page.drawings.front();
    EXPECT_EQ(drawing.layout.bars.size(), 2U);
    EXPECT_EQ(drawing.samples.size(), 2U);
    EXPECT_FALSE(drawing.layout.band) << "what is chosen on the page is nothing on paper";
    for (const auto* word : {"Months · USD", "Income", "Net", "Oct", "Nov"})
        EXPECT_EQ(count(page, QString::fromUtf8(word)), 1U) << word;
    EXPECT_TRUE(std::ranges::all_of(drawing.layout.ticks, [](const auto& tick) { return tick.text.isEmpty(); }));
    const auto firstRow = std::ranges::find(page.texts, QStringLiteral("2026-11-01"), &PrintedText::text);
    EXPECT_GT(firstRow->place.y(), drawing.top + drawing.scale * drawing.layout.plot.bottom());
    EXPECT_EQ(misplaced(pages), std::vector<std::string>{});
    const auto read = SavedPdf{pages}.page(1);
    EXPECT_TRUE(read.contains(QStringLiteral("Nov"))) << read.toStdString();
}

TEST(PrintedPages, RepeatTheHeadsAndNumberEveryPage)
{
    const auto pages = pagesOf(document(200));
    ASSERT_GT(pages.pages.size(), 3U);
    for (std::size_t at = 0; at < pages.pages.size(); ++at) {
        const auto& page = pages.pages[at];
        EXPECT_EQ(count(page, QStringLiteral("Amount")), 1U) << "page " << at + 1;
        EXPECT_EQ(count(page, QStringLiteral("%1 / %2").arg(at + 1).arg(pages.pages.size())), 1U) << "page " << at + 1;
        EXPECT_EQ(count(page, QStringLiteral("Entries")), at == 0 ? 1U : 0U) << "the title is said once";
    }
    EXPECT_EQ(misplaced(pages), std::vector<std::string>{});
}

TEST(PrintedPages, HoldEveryRowWholeAndInOrder)
{
    const auto shown = document(200);
    std::vector<QString> amounts;
    for (const auto& page : pagesOf(shown).pages) {
        const auto all = textOf(page);
        for (const auto& row : shown.tables.front().rows) {
            if (count(page, row.cells[2].text) == 0)
                continue;
            amounts.push_back(row.cells[2].text);
            // The last words of a wrapped note stand on the page on which its amount does.
            EXPECT_TRUE(all.contains(row.cells[1].text.right(6))) << row.cells[1].text.toStdString();
        }
    }
    std::vector<QString> expected;
    for (const auto& row : shown.tables.front().rows)
        expected.push_back(row.cells[2].text);
    EXPECT_EQ(amounts, expected);
}

TEST(PrintedPages, SplitARowThatIsHigherThanAPage)
{
    auto shown = document(3);
    QStringList lines;
    for (int line = 0; line < 150; ++line)
        lines << QStringLiteral("line %1").arg(line);
    shown.tables.front().rows[1].cells[1].text = lines.join(QLatin1Char('\n'));
    const auto pages = pagesOf(shown);
    QString all;
    for (const auto& page : pages.pages) {
        EXPECT_EQ(count(page, QStringLiteral("Amount")), 1U);
        all += textOf(page);
    }
    for (const auto& line : lines)
        EXPECT_EQ(all.count(line + QLatin1Char('\n')), 1) << line.toStdString();
    EXPECT_EQ(misplaced(pages), std::vector<std::string>{});
}

TEST(PrintedPages, KeepTheHeadOfAGroupWithItsFirstRow)
{
    for (int before = 30; before < 60; ++before) { // whatever is left of the page
        auto shown = document(before);
        auto& rows = shown.tables.front().rows;
        for (auto& row : rows)
            row.cells[1].text = QStringLiteral("short");
        rows.push_back({.cells = {{QStringLiteral("Employee floats")}}, .level = Level::group});
        rows.push_back({.cells = {{QStringLiteral("1")}, {QStringLiteral("first of its group")}, {}}});
        for (const auto& page : pagesOf(shown).pages)
            EXPECT_EQ(count(page, QStringLiteral("Employee floats")), count(page, QStringLiteral("first of its group")))
                << before << " rows before";
    }
}

TEST(PrintedPages, LieDownWhereATableIsTooWideAndAreCutIntoPartsBeyondThat)
{
    const auto wide = [](int columns) {
        auto shown = document(0);
        auto& table = shown.tables.front();
        table.columns = {{.head = QStringLiteral("Account"), .width = PrintedColumn::Width::rest}};
        PrintedRow row{.cells = {{QStringLiteral("Ngân hàng Hà Nội – thanh toán")}}};
        for (int at = 0; at < columns; ++at) {
            table.columns.push_back({.head = QStringLiteral("Month %1").arg(at), .side = PrintedColumn::Side::end});
            row.cells.push_back({QStringLiteral("−111,222,333,%1").arg(100 + at)});
        }
        table.rows = {row};
        return shown;
    };
    EXPECT_EQ(pagesOf(wide(4)).orientation, QPageLayout::Portrait);
    EXPECT_EQ(pagesOf(wide(8)).orientation, QPageLayout::Landscape);
    EXPECT_EQ(pagesOf(wide(8), {.orientation = Orientation::portrait}).orientation, QPageLayout::Portrait);
    for (const auto orientation : {Orientation::automatic, Orientation::portrait, Orientation::landscape}) {
        for (const auto size : {QPageSize::A4, QPageSize::Letter}) {
            const auto pages = pagesOf(wide(24), {.size = QPageSize{size}, .orientation = orientation});
            EXPECT_EQ(misplaced(pages), std::vector<std::string>{});
            QString all;
            for (const auto& page : pages.pages)
                all += textOf(page);
            for (int at = 0; at < 24; ++at)
                EXPECT_EQ(all.count(QStringLiteral("−111,222,333,%1\n").arg(100 + at)), 1) << at;
            EXPECT_GT(all.count(QStringLiteral("thanh toán\n")), 1) << "each part begins with the account";
        }
    }
}

/// Of every report, in each language and on each paper, nothing stands outside the margins or upon another, and each
/// figure in one piece.
TEST(PrintedPages, CutNothingOfAnyReport)
{
    using enum ReportPart;
    const auto today = std::chrono::year{2026} / std::chrono::November / 20;
    const auto books = std::make_shared<const ReportBooks>(reportSample().share());
    for (const auto* locale : {"zh-CN", "id-ID", "vi-VN", "en-US"}) {
        for (const auto part : {overview, income, matrix, movements, summary}) {
            const auto sheet = reportSheet(books,
                                           {.report = part,
                                            .period = Period::containing(Period::Span::month, today),
                                            .currency = "IDR",
                                            .today = today,
                                            .hidesStillColumns = false},
                                           locale);
            const auto shown = ReportPrint::document(sheet, part, {.day = "2026-11-20", .time = "14:32"});
            for (const auto size : {QPageSize::A4, QPageSize::Letter}) {
                const auto pages = pagesOf(shown, {.size = QPageSize{size}});
                const auto what = std::string{locale} + ' ' + std::string{ReportParts::idOf(part)};
                EXPECT_EQ(misplaced(pages), std::vector<std::string>{}) << what;
                EXPECT_EQ(brokenFigures(shown, pages), std::vector<std::string>{}) << what;
            }
        }
    }
}

TEST(PrintedPdf, CanBeReadBackInEveryLanguage)
{
    const auto pages = pagesOf(document(120));
    const SavedPdf file{pages};
    const auto facts = file.facts();
    EXPECT_TRUE(facts.contains(QRegularExpression{QStringLiteral("Pages: +%1\n").arg(pages.pages.size())}))
        << facts.toStdString();
    EXPECT_TRUE(facts.contains(QStringLiteral("(A4)"))) << facts.toStdString();
    EXPECT_TRUE(facts.contains(QStringLiteral("Sổ cái"))) << facts.toStdString();
    const auto first = file.page(1);
    for (const auto* words :
         {"PT Lentera Niaga Nusantara · 灯塔贸易", "Sổ cái", "November 2026", "Jend. Sudirman",
          "支付十一月份仓库租金及物业管理费", "Vận tải Hà Nội", "office fit-out, file 4711/ffi-a", "−3,500.00"})
        EXPECT_TRUE(first.contains(QString::fromUtf8(words))) << words << " in\n" << first.toStdString();
    for (int page = 1; page <= static_cast<int>(pages.pages.size()); ++page)
        EXPECT_TRUE(file.page(page).contains(QStringLiteral("备注 Note"))) << "the head of page " << page;
    EXPECT_TRUE(file.page(2).contains(numberOf(2, pages.pages.size()))) << file.page(2).toStdString();
}

TEST(PrintedPdf, ComesFromAPrinterAsItComesFromAFile)
{
    const auto pages = pagesOf(document(120), {.size = QPageSize{QPageSize::Letter}});
    const QTemporaryDir folder;
    QPrinter printer{QPrinter::HighResolution};
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(folder.filePath(QStringLiteral("printed.pdf")));
    printer.setFromTo(2, 3);
    ASSERT_TRUE(PagePainter::print(printer, pages));
    const auto path = printer.outputFileName();
    const auto facts = toolReads("pdfinfo", {path});
    EXPECT_TRUE(facts.contains(QRegularExpression{QStringLiteral("Pages: +2\n")})) << facts.toStdString();
    EXPECT_TRUE(facts.contains(QStringLiteral("(letter)"))) << facts.toStdString();
    const auto text = toolReads("pdftotext", {QStringLiteral("-layout"), path, QStringLiteral("-")});
    EXPECT_TRUE(text.contains(numberOf(2, pages.pages.size()))) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("备注 Note"))) << text.toStdString();
    EXPECT_FALSE(text.contains(QStringLiteral("November 2026"))) << "the first page was not asked for";
}

#include "LedgerUI/Screens/Exports/ReceiptShareDialog.h"

#include <array>
#include <cmath>
#include <filesystem>

#include <QApplication>
#include <QClipboard>
#include <QPainter>
#include <QPdfDocument>
#include <QPrinter>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "LedgerUI/Screens/Exports/DigitalReceiptView.h"
#include "LedgerUI/testing/LedgerPage.h"
#include "LedgerUI/testing/WindowUnderTest.h"

namespace {

constexpr QSize room{40, 40};         // around the receipt in its preview
constexpr QRgb markBlue = 0xff23508e; // of the program's mark

SnapshotBuilder books()
{
    SnapshotBuilder made;
    made.companyName("PT Lentera Niaga Nusantara").account("Ngân hàng Hà Nội – thanh toán", {"VND"}).grantAll();
    made.category("freight", "expense", "Sea freight");
    made.expense("e1", "2026-11-19", "Ngân hàng Hà Nội – thanh toán", "VND", 38'600'000, "freight");
    return made.note("Cước vận chuyển HPH–JKT, vận đơn 7741");
}

struct ShareUnderTest : WindowUnderTest {
    ShareUnderTest() : WindowUnderTest{ledgerPage()}
    {
        openDemonstration(books());
        screen.pressRow("ledgerTable", "Sea freight");
        screen.press("shareButton");
        screen.waitForFocus("shareAccount");
    }
    [[nodiscard]] std::filesystem::path path(const char* name) const
    {
        return std::filesystem::path{folder.path().toStdString()} / name;
    }
    ReceiptShareDialog& dialog() { return screen.find<ReceiptShareDialog>("receiptShare"); }
    void save(const std::filesystem::path& file)
    {
        dialog().saveTo(file);
        screen.waitUntil("the file is written", [this] { return screen.offers("shareSave"); });
    }
    QImage picture(const char* name)
    {
        save(path(name));
        return QImage{QString::fromStdString(path(name))};
    }
    [[nodiscard]] std::string read(const char* tool, const QStringList& arguments) const
    {
        QProcess process;
        process.start(QString::fromLatin1(tool), arguments);
        process.waitForFinished();
        return process.readAllStandardOutput().toStdString();
    }
    [[nodiscard]] std::string text(const char* name) const
    {
        return read("pdftotext", {QStringLiteral("-layout"), QString::fromStdString(path(name)), QStringLiteral("-")});
    }
    [[nodiscard]] std::string facts(const char* name) const
    {
        return read("pdfinfo", {QString::fromStdString(path(name))});
    }

    QTemporaryDir folder;
};

bool holds(const QImage& image, QRgb color)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) == color)
                return true;
        }
    }
    return false;
}

bool holdsInk(const QImage& image)
{
    QImage white{image.size(), image.format()};
    white.fill(Qt::white);
    return image != white;
}

/// What two pictures differ by, from 0 for none to 255, over all their pixels.
double difference(const QImage& left, const QImage& right)
{
    double sum = 0;
    for (int y = 0; y < left.height(); ++y) {
        for (int x = 0; x < left.width(); ++x)
            sum += std::abs(qGray(left.pixel(x, y)) - qGray(right.pixel(x, y)));
    }
    return sum / (static_cast<double>(left.width()) * left.height());
}

}

TEST(ReceiptShare, SavesThePictureThatIsShown)
{
    ShareUnderTest under;
    const auto shown = under.screen.find<DigitalReceiptView>("sharePreview").size() - room;
    const auto picture = under.picture("receipt.png");
    EXPECT_EQ(picture.width(), 388 * 3);
    EXPECT_NEAR(picture.height(), shown.height() * 3, 3);
    EXPECT_TRUE(holds(picture, markBlue));
    EXPECT_FALSE(holdsInk(picture.copy(0, 0, picture.width(), 24 * 3 - 1))) << "the margin above";
    EXPECT_FALSE(holdsInk(picture.copy(0, 0, 24 * 3 - 1, picture.height()))) << "the margin at the left";
    EXPECT_FALSE(holdsInk(picture.copy(picture.width() - 24 * 3 + 1, 0, 71, picture.height()))) << "and at the right";
    under.screen.waitForText("The receipt is ready to share.");
    under.screen.press("shareNote");
    const auto withoutNote = under.picture("short.png");
    EXPECT_LT(withoutNote.height(), picture.height() - 18 * 3) << "the note took two lines";
}

TEST(ReceiptShare, CopiesTheSamePicture)
{
    ShareUnderTest under;
    under.screen.press("shareCopy");
    under.screen.waitForText("The image is copied.");
    const auto copied = QApplication::clipboard()->image().convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(copied.size(), under.picture("receipt.png").size());
    EXPECT_EQ(difference(copied, under.picture("receipt.png")), 0);
}

TEST(ReceiptShare, SavesADocumentThatReadsTheSameInEveryLanguage)
{
    struct Said {
        const char* language;
        std::array<const char*, 4> words;
    };
    const std::array cases{Said{"简体中文", {"电子票据", "支出", "付款账户", "并非税务发票"}},
                           Said{"Bahasa Indonesia", {"Bukti digital", "Pengeluaran", "Rekening", "Bukan faktur pajak"}},
                           Said{"Tiếng Việt", {"Biên nhận điện tử", "Chi", "Tài khoản chi", "Không phải hóa"}},
                           Said{"English", {"Digital receipt", "Expense", "Payment account", "Not a tax"}}};
    ShareUnderTest under;
    under.screen.press("PDF");
    for (const auto& said : cases) {
        under.screen.pick("shareLanguage", said.language);
        under.save(under.path("receipt.pdf"));
        const auto text = under.text("receipt.pdf");
        for (const auto* each : said.words)
            EXPECT_NE(text.find(each), std::string::npos) << each << " in\n" << text;
        for (const auto* each : {"PT Lentera Niaga Nusantara", "VND", "Ngân hàng Hà Nội", "7741", "Mira Owner"})
            EXPECT_NE(text.find(each), std::string::npos) << each << " in\n" << text;
        EXPECT_NE(under.facts("receipt.pdf").find("Pages:           1"), std::string::npos);
        EXPECT_TRUE(under.screen.says("Copy image")) << "the window keeps its language";
    }
    EXPECT_NE(under.text("receipt.pdf").find("38,600,000"), std::string::npos);
}

TEST(ReceiptShare, PaintsFileAndPictureAlike)
{
    ShareUnderTest under;
    const auto picture = under.picture("receipt.png");
    under.screen.press("PDF");
    under.save(under.path("receipt.pdf"));
    QPdfDocument document;
    ASSERT_EQ(document.load(QString::fromStdString(under.path("receipt.pdf"))), QPdfDocument::Error::None);
    QImage page{picture.size(), QImage::Format_RGB32};
    page.fill(Qt::white);
    const auto rendered = document.render(0, picture.size());
    ASSERT_FALSE(rendered.isNull());
    QPainter{&page}.drawImage(0, 0, rendered);
    EXPECT_TRUE(holds(page, markBlue)) << "glyphs are in the file too";
    EXPECT_LT(difference(page, picture), 4) << "of 255, for edges that are drawn otherwise";
}

TEST(ReceiptShare, PrintsAtTheTopOfASheet)
{
    ShareUnderTest under;
    QPrinter printer{QPrinter::HighResolution};
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setPageSize(QPageSize{QPageSize::A4});
    printer.setOutputFileName(QString::fromStdString(under.path("sheet.pdf")));
    under.dialog().printOn(printer);
    under.screen.waitForText("Sent to the printer");
    EXPECT_NE(under.facts("sheet.pdf").find("595 x 842 pts (A4)"), std::string::npos) << under.facts("sheet.pdf");
    EXPECT_NE(under.facts("sheet.pdf").find("Pages:           1"), std::string::npos);
    QPdfDocument document;
    ASSERT_EQ(document.load(QString::fromStdString(under.path("sheet.pdf"))), QPdfDocument::Error::None);
    const auto sheet = document.render(0, {595, 842}).convertToFormat(QImage::Format_RGB32);
    EXPECT_TRUE(holds(sheet.copy(0, 0, 595, 421), markBlue)) << "in the upper half";
    EXPECT_FALSE(holds(sheet.copy(0, 421, 595, 421), markBlue));
}

TEST(ReceiptShare, SaysWhyAFileWasNotWritten)
{
    ShareUnderTest under;
    under.save(under.path("gone") / "receipt.png");
    under.screen.waitForText("The receipt could not be created. Try again.");
    EXPECT_TRUE(under.screen.says("The folder is no longer there."));
    under.save(under.path("receipt.png"));
    under.screen.waitForText("Saved receipt.png");
}

TEST(ReceiptShare, IsOfferedAFileByItsOwnName)
{
    ShareUnderTest under;
    under.screen.press("PDF");
    under.screen.keys("Ctrl+Return");
    under.screen.waitForFocus("shareFileDialog");
    EXPECT_EQ(under.screen.read("fileNameEdit"), "tallyfold-receipt-2026-11-19.pdf");
    under.screen.fill("fileNameEdit", under.path("mine").string());
    under.screen.keys("Return");
    under.screen.waitForText("Saved mine.pdf");
    EXPECT_TRUE(std::filesystem::exists(under.path("mine.pdf")));
}

TEST(ReceiptShare, FollowsTheEntryWhileItIsOpen)
{
    ShareUnderTest under;
    auto json = books().json();
    json.insert(json.find(R"("id":"e1")"), R"("reversedBy":"v1",)");
    under.server.replace("GET v1/snapshot", ServerReply::json(json));
    require(resultOf(under.store.refresh(true)).has_value(), "the books are loaded");
    EXPECT_NE(under.screen.spoken("sharePreview").find("Expense (reversed)"), std::string::npos);
    under.server.replace("GET v1/snapshot", ServerReply::json(SnapshotBuilder{}.json()));
    require(resultOf(under.store.refresh(true)).has_value(), "the books are loaded");
    under.screen.waitUntilGone("receiptShare");
}

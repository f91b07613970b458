#include "LedgerUI/Presentation/Receipts/ReceiptPicture.h"

#include <optional>

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>
#include <gtest/gtest.h>

namespace {

constexpr QSize room{200, 100};

std::string document(int pages)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer{&buffer};
        writer.setPageSize(QPageSize{QPageSize::A5});
        QPainter painter{&writer};
        for (int page = 1; page < pages; ++page)
            writer.newPage();
    }
    return buffer.data().toStdString();
}

/// A PNG whose head promises this size; the pixels do not matter.
std::string promised(unsigned width, unsigned height)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImage{1, 1, QImage::Format_Grayscale8}.save(&buffer, "png");
    auto data = buffer.data();
    const auto put = [&](qsizetype at, unsigned value) {
        for (int byte = 0; byte < 4; ++byte)
            data[at + byte] = static_cast<char>(value >> (24 - 8 * byte));
    };
    put(16, width);
    put(20, height);
    // The check sum of the head: without it the reader believes nothing.
    unsigned sum = 0xffffffffU;
    for (qsizetype at = 12; at < 29; ++at) {
        sum ^= static_cast<unsigned char>(data[at]);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum & 1U) ? (sum >> 1U) ^ 0xedb88320U : sum >> 1U;
    }
    put(29, ~sum);
    return data.toStdString();
}

/// Opens only with a password: its keys are not those of an empty one.
std::string protectedDocument()
{
    const std::string key(64, '5');
    return "%PDF-1.4\n1 0 obj\n<</Type/Catalog/Pages 2 0 R>>\nendobj\n2 0 obj\n<</Type/Pages/Kids[3 0 R]/Count "
           "1>>\nendobj\n3 0 obj\n<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 200]>>\nendobj\n4 0 obj\n<</Filter/"
           "Standard/V 1/R 2/P -4/O<" +
           key + ">/U<" + key + ">>>\nendobj\ntrailer\n<</Root 1 0 R/Encrypt 4 0 R/ID[<31><31>]>>\n%%EOF\n";
}

std::optional<ReceiptUnseen> unseen(const std::string& data, std::string_view mime)
{
    const auto seen = ReceiptPictures::read(data, mime, room, 0);
    return seen ? std::nullopt : std::optional{seen.error()};
}

}

TEST(ReceiptPicture, ShowsThePageThatIsAskedForWithinTheRoom)
{
    const auto three = document(3);
    const auto second = ReceiptPictures::read(three, "application/pdf", room, 1);
    ASSERT_TRUE(second.has_value());
    EXPECT_EQ(second->pageCount, 3);
    EXPECT_EQ(second->page, 1);
    EXPECT_EQ(second->image.height(), room.height());
    EXPECT_LE(second->image.width(), room.width());
    EXPECT_EQ(ReceiptPictures::read(three, "application/pdf", room, 9)->page, 2);
}

TEST(ReceiptPicture, NeverEnlargesASmallPicture)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImage small{20, 10, QImage::Format_RGB32};
    small.fill(Qt::blue);
    small.save(&buffer, "png");
    const auto seen = ReceiptPictures::read(buffer.data().toStdString(), "image/png", room, 0);
    ASSERT_TRUE(seen.has_value());
    EXPECT_EQ(seen->image.size(), (QSize{20, 10}));
}

TEST(ReceiptPicture, SaysWhyAReceiptCannotBeShown)
{
    EXPECT_EQ(unseen("%PDF-1.4 and then nothing", "application/pdf"), ReceiptUnseen::damaged);
    EXPECT_EQ(unseen(document(1).substr(0, 300), "application/pdf"), ReceiptUnseen::damaged);
    EXPECT_EQ(unseen(protectedDocument(), "application/pdf"), ReceiptUnseen::isProtected);
    EXPECT_EQ(unseen("\xff\xd8\xff no picture", "image/jpeg"), ReceiptUnseen::damaged);
    EXPECT_EQ(unseen("no picture either", "image/heic"), ReceiptUnseen::damaged);
    EXPECT_EQ(unseen(promised(60'000, 60'000), "image/png"), ReceiptUnseen::tooLarge) << "14 GB when decoded";
    EXPECT_EQ(unseen(promised(300, 300), "image/png"), ReceiptUnseen::damaged) << "fewer pixels than promised";
}

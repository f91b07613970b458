#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <random>

#include <QBuffer>
#include <QColorSpace>
#include <QImage>
#include <QImageReader>
#include <QImageWriter>
#include <gtest/gtest.h>
#include <libheif/heif.h>

#include "LedgerCore/Client/Receipts/ReceiptCompressor.h"
#include "LedgerCore/Client/Receipts/ReceiptImage.h"

namespace {

using Refusal = ReceiptCompressor::Refusal;

std::string encoded(const QImage& image, const char* format, int quality = -1,
                    QImageIOHandler::Transformations turned = QImageIOHandler::TransformationNone)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer{&buffer, format};
    writer.setQuality(quality);
    writer.setTransformation(turned);
    EXPECT_TRUE(writer.write(image)) << writer.errorString().toStdString();
    return buffer.data().toStdString();
}

/// A picture that compresses badly: every pixel is a throw of dice, `grain` pixels wide.
QImage noise(int width, int height, int grain = 1)
{
    std::mt19937 dice{7};
    QImage small{(width + grain - 1) / grain, (height + grain - 1) / grain, QImage::Format_RGB32};
    for (int y = 0; y < small.height(); ++y)
        for (int x = 0; x < small.width(); ++x)
            small.setPixel(x, y, 0xff000000U | (dice() & 0xffffffU));
    return small.scaled(width, height);
}

/// A red left half beside a blue right half.
QImage halves(int width, int height)
{
    QImage image{width, height, QImage::Format_RGB32};
    image.fill(Qt::blue);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width / 2; ++x)
            image.setPixelColor(x, y, Qt::red);
    return image;
}

/// Followed by bytes that readers pass over, so that even a plain picture is large enough to be reduced.
std::string padded(std::string data, std::size_t size)
{
    data.resize(std::max(data.size(), size), '\0');
    return data;
}

QImage decoded(const std::string& data)
{
    return QImage::fromData(QByteArray::fromStdString(data));
}

/// As a phone would write it, turned as the camera was held.
std::string heic(const QImage& image, heif_orientation turned = heif_orientation_normal,
                 heif_color_profile_nclx* colours = nullptr)
{
    std::unique_ptr<heif_context, void (*)(heif_context*)> context{heif_context_alloc(), heif_context_free};
    heif_image* pixels = nullptr;
    heif_image_create(image.width(), image.height(), heif_colorspace_RGB, heif_chroma_interleaved_RGB, &pixels);
    heif_image_add_plane(pixels, heif_channel_interleaved, image.width(), image.height(), 24);
    int stride = 0;
    auto* plane = heif_image_get_plane(pixels, heif_channel_interleaved, &stride);
    const auto rgb = image.convertToFormat(QImage::Format_RGB888);
    for (int y = 0; y < rgb.height(); ++y)
        std::copy_n(rgb.constScanLine(y), 3 * rgb.width(), plane + std::ptrdiff_t{y} * stride);
    if (const auto profile = image.colorSpace().iccProfile(); !profile.isEmpty())
        heif_image_set_raw_color_profile(pixels, "prof", profile.data(), static_cast<std::size_t>(profile.size()));
    heif_encoder* encoder = nullptr;
    EXPECT_EQ(heif_context_get_encoder_for_format(context.get(), heif_compression_HEVC, &encoder).code, heif_error_Ok);
    heif_encoder_set_lossy_quality(encoder, 90);
    if (colours)
        heif_image_set_nclx_color_profile(pixels, colours);
    auto* options = heif_encoding_options_alloc();
    options->image_orientation = turned;
    options->output_nclx_profile = colours;
    options->macOS_compatibility_workaround_no_nclx_profile = colours == nullptr;
    EXPECT_EQ(heif_context_encode_image(context.get(), pixels, encoder, options, nullptr).code, heif_error_Ok);
    heif_encoding_options_free(options);
    heif_encoder_release(encoder);
    heif_image_release(pixels);
    std::string written;
    heif_writer writer{1, [](heif_context*, const void* data, std::size_t size, void* target) {
                           static_cast<std::string*>(target)->append(static_cast<const char*>(data), size);
                           return heif_error{heif_error_Ok, heif_suberror_Unspecified, ""};
                       }};
    heif_context_write(context.get(), &writer, &written);
    return written;
}

bool looksLike(QColor seen, QColor wanted)
{
    return std::abs(seen.red() - wanted.red()) < 40 && std::abs(seen.green() - wanted.green()) < 40 &&
           std::abs(seen.blue() - wanted.blue()) < 40;
}

}

TEST(ReceiptCompressor, KeepsWhatIsSmallEnoughByteForByte)
{
    struct Case {
        const char* mime;
        std::size_t size;
    };
    for (const auto& [mime, size] : std::to_array<Case>({{"application/pdf", 10'485'760},
                                                         {"image/png", 500'000},
                                                         {"image/png", 512'000},
                                                         {"image/heic", 512'000},
                                                         {"image/jpeg", 12}})) {
        const std::string data(size, 'x');
        const auto kept = ReceiptCompressor::prepare(data, "scan", mime);
        ASSERT_TRUE(kept.has_value()) << mime;
        EXPECT_EQ(*kept, (PreparedReceipt{data, "scan", mime, static_cast<std::int64_t>(size)})) << mime;
    }
}

TEST(ReceiptCompressor, RefusesEachForItsOwnReason)
{
    const auto refusal = [](std::string data, const char* mime) {
        const auto prepared = ReceiptCompressor::prepare(std::move(data), "x", mime);
        return prepared ? std::optional<Refusal>{} : prepared.error();
    };
    EXPECT_EQ(refusal(std::string(10'485'761, 'x'), "application/pdf"), Refusal::tooLarge);
    EXPECT_EQ(refusal("GIF89a", "image/gif"), Refusal::unsupportedType);
    EXPECT_EQ(refusal(std::string(512'001, 'x'), "image/jpeg"), Refusal::compressionFailed);
    EXPECT_EQ(refusal(std::string(512'001, 'x'), "image/heic"), Refusal::compressionFailed);
    // A JPEG whose frame header claims 60,000 by 60,000 pixels.
    auto trap = encoded(halves(16, 16), "jpeg");
    const auto frame = trap.find("\xff\xc0");
    ASSERT_NE(frame, std::string::npos);
    trap.replace(frame + 5, 4, "\xea\x60\xea\x60");
    EXPECT_EQ(refusal(padded(trap, 600'000), "image/jpeg"), Refusal::compressionFailed);
}

TEST(ReceiptCompressor, StopsAtTheFirstStepThatIsSmallEnough)
{
    // 600 kB of PNG that is easy for JPEG: the first step does.
    const auto easy = encoded(noise(3000, 1500, 16), "png", 100);
    const auto first = ReceiptCompressor::prepare(padded(easy, 600'000), "a.png", "image/png");
    ASSERT_TRUE(first.has_value());
    EXPECT_EQ(first->mime, "image/jpeg");
    EXPECT_EQ(first->byteCount, static_cast<std::int64_t>(first->data.size()));
    EXPECT_EQ(decoded(first->data).size(), QSize(2600, 1300));

    // Noise never gets small: all four are tried, and the smallest is the last.
    const auto hard = ReceiptCompressor::prepare(encoded(noise(2700, 2700), "png"), "b.png", "image/png");
    ASSERT_TRUE(hard.has_value());
    EXPECT_GT(hard->byteCount, ReceiptCompressor::aimedBytes);
    EXPECT_EQ(decoded(hard->data).size(), QSize(1900, 1900));
}

TEST(ReceiptCompressor, NeverEnlargesAPicture)
{
    const auto small = ReceiptCompressor::prepare(padded(encoded(halves(40, 20), "png"), 600'000), "a", "image/png");
    ASSERT_TRUE(small.has_value());
    EXPECT_EQ(decoded(small->data).size(), QSize(40, 20));
}

TEST(ReceiptCompressor, TurnsPicturesUpright)
{
    // Taken with the camera on its side: to be shown after a quarter turn to the right.
    const auto turned = encoded(halves(6000, 3000), "jpeg", 90, QImageIOHandler::TransformationRotate90);
    const auto upright = ReceiptCompressor::prepare(padded(turned, 600'000), "a.jpg", "image/jpeg");
    ASSERT_TRUE(upright.has_value());
    const auto seen = decoded(upright->data);
    EXPECT_EQ(seen.size(), QSize(1300, 2600));
    EXPECT_TRUE(looksLike(seen.pixelColor(650, 100), Qt::red));
    EXPECT_TRUE(looksLike(seen.pixelColor(650, 2500), Qt::blue));
    QBuffer buffer;
    buffer.setData(QByteArray::fromStdString(upright->data));
    EXPECT_EQ(QImageReader{&buffer}.transformation(), QImageIOHandler::TransformationNone);
}

TEST(ReceiptCompressor, ShowsTransparencyAsPaperAndWideColoursAsTheyWere)
{
    QImage clear{400, 400, QImage::Format_ARGB32};
    clear.fill(Qt::transparent);
    const auto paper = ReceiptCompressor::prepare(padded(encoded(clear, "png"), 600'000), "a", "image/png");
    ASSERT_TRUE(paper.has_value());
    EXPECT_TRUE(looksLike(decoded(paper->data).pixelColor(200, 200), Qt::white));

    // The numbers of a green in a wider space mean a stronger green in sRGB: 0 of red instead of 100.
    QImage wide{400, 400, QImage::Format_RGB32};
    wide.fill(QColor{100, 200, 100});
    wide.setColorSpace(QColorSpace::AdobeRgb);
    const auto plain = ReceiptCompressor::prepare(padded(encoded(wide, "png"), 600'000), "a", "image/png");
    ASSERT_TRUE(plain.has_value());
    EXPECT_LT(decoded(plain->data).pixelColor(200, 200).red(), 60);
}

TEST(ReceiptCompressor, ReadsThePicturesOfPhones)
{
    const auto photo = heic(halves(3000, 2000));
    EXPECT_EQ(ReceiptCompressor::mimeOf(photo), "image/heic");
    const auto jpeg = ReceiptCompressor::prepare(padded(photo, 600'000), "IMG_1.HEIC", "image/heic");
    ASSERT_TRUE(jpeg.has_value());
    EXPECT_EQ(jpeg->mime, "image/jpeg");
    const auto seen = decoded(jpeg->data);
    EXPECT_EQ(seen.size(), QSize(2600, 1733));
    EXPECT_TRUE(looksLike(seen.pixelColor(300, 800), Qt::red));
    EXPECT_TRUE(looksLike(seen.pixelColor(2300, 800), Qt::blue));
}

TEST(ReceiptCompressor, ShowsThePicturesOfPhonesUprightAndInTheirColours)
{
    const auto photo = halves(1200, 600);
    const auto turned =
        ReceiptCompressor::prepare(padded(heic(photo, heif_orientation_rotate_90_cw), 600'000), "a.heic", "image/heic");
    ASSERT_TRUE(turned.has_value());
    const auto seen = decoded(turned->data);
    EXPECT_EQ(seen.size(), QSize(600, 1200));
    EXPECT_TRUE(looksLike(seen.pixelColor(300, 100), Qt::red));
    EXPECT_TRUE(looksLike(seen.pixelColor(300, 1100), Qt::blue));

    QImage wide{400, 400, QImage::Format_RGB32};
    wide.fill(QColor{100, 200, 100});
    wide.setColorSpace(QColorSpace::AdobeRgb);
    const auto plain = ReceiptCompressor::prepare(padded(heic(wide), 600'000), "a.heic", "image/heic");
    ASSERT_TRUE(plain.has_value());
    EXPECT_LT(decoded(plain->data).pixelColor(200, 200).red(), 60);
}

TEST(ReceiptCompressor, ShowsColoursThatAPictureNamesByNumbers)
{
    QImage wide{400, 400, QImage::Format_RGB32};
    wide.fill(QColor{100, 200, 100});
    const auto redOf = [&](std::uint16_t primaries, std::uint16_t transfer) {
        const std::unique_ptr<heif_color_profile_nclx, void (*)(heif_color_profile_nclx*)> colours{
            heif_nclx_color_profile_alloc(), heif_nclx_color_profile_free};
        heif_nclx_color_profile_set_color_primaries(colours.get(), primaries);
        heif_nclx_color_profile_set_transfer_characteristics(colours.get(), transfer);
        const auto picture = padded(heic(wide, heif_orientation_normal, colours.get()), 600'000);
        const auto plain = ReceiptCompressor::prepare(picture, "a.heic", "image/heic");
        EXPECT_TRUE(plain.has_value());
        return plain ? decoded(plain->data).pixelColor(200, 200).red() : -1;
    };
    EXPECT_LT(redOf(heif_color_primaries_SMPTE_EG_432_1, heif_transfer_characteristic_IEC_61966_2_1), 70);
    EXPECT_NEAR(redOf(heif_color_primaries_ITU_R_BT_709_5, heif_transfer_characteristic_IEC_61966_2_1), 100, 10);
    EXPECT_NEAR(redOf(heif_color_primaries_unspecified, heif_transfer_characteristic_unspecified), 100, 10);
}

TEST(ReceiptCompressor, BelievesNoHeadThatPromisesMorePixelsThanMemoryHas)
{
    const auto read = [](int width, int height) {
        auto trap = heic(halves(64, 64));
        const auto extent = trap.find("ispe");
        EXPECT_NE(extent, std::string::npos);
        for (int byte = 0; byte < 4; ++byte) { // after the version, big-endian
            trap[extent + 8 + static_cast<std::size_t>(byte)] = static_cast<char>(width >> (8 * (3 - byte)));
            trap[extent + 12 + static_cast<std::size_t>(byte)] = static_cast<char>(height >> (8 * (3 - byte)));
        }
        const auto image = ReceiptImage::read(trap, "image/heic", 100);
        return image ? std::nullopt : std::optional{image.error()};
    };
    EXPECT_EQ(read(30'000, 30'000), ReceiptImage::Unread::tooLarge);
    EXPECT_EQ(read(8'001, 8'000), ReceiptImage::Unread::tooLarge);
    EXPECT_NE(read(8'000, 8'000), ReceiptImage::Unread::tooLarge) << "as large as may be";
}

TEST(ReceiptCompressor, KnowsATypeByItsFirstBytes)
{
    const auto mimeOf = ReceiptCompressor::mimeOf;
    EXPECT_EQ(mimeOf("%PDF-1.7\n"), "application/pdf");
    EXPECT_EQ(mimeOf(encoded(halves(2, 2), "jpeg")), "image/jpeg");
    EXPECT_EQ(mimeOf(encoded(halves(2, 2), "png")), "image/png");
    EXPECT_EQ(mimeOf(std::string_view{"\0\0\0\x18"
                                      "ftypmif1\0\0\0\0",
                                      16}),
              "image/heif");
    for (const auto other : {std::string_view{}, std::string_view{"%PDF"}, std::string_view{"GIF89a"},
                             std::string_view{"\0\0\0\x18"
                                              "ftypisom",
                                              12},
                             std::string_view{"<svg/>"}})
        EXPECT_EQ(mimeOf(other), "");
}

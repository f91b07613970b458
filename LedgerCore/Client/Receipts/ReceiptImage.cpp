#include "LedgerCore/Client/Receipts/ReceiptImage.h"

#include <algorithm>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

#include <QBuffer>
#include <QColorSpace>
#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <QPointF>
#include <libheif/heif.h>

#include "LedgerCore/Client/Receipts/ReceiptCompressor.h"

namespace {

constexpr qint64 bytesPerPixel = 4;
constexpr qint64 bytesPerMegabyte = 1 << 20;

using Read = std::expected<QImage, ReceiptImage::Unread>;

constexpr std::unexpected damaged{ReceiptImage::Unread::damaged};

/// What a picture of this size is not read for.
std::optional<ReceiptImage::Unread> whyNot(qint64 width, qint64 height, qint64 mostPixels)
{
    if (width <= 0 || height <= 0)
        return ReceiptImage::Unread::damaged;
    return width > mostPixels / height ? std::optional{ReceiptImage::Unread::tooLarge} : std::nullopt;
}

/// The smallest size of the same shape whose longest side is at least `longestSide`, where half as large would be less.
/// Only halves are taken: a JPEG decoder leaves out detail in powers of two for next to nothing.
QSize halvedDownTo(QSize size, int longestSide)
{
    while (std::max(size.width(), size.height()) / 2 >= longestSide)
        size = {(size.width() + 1) / 2, (size.height() + 1) / 2};
    return size;
}

/// JPEG and PNG, with Qt's own readers.
Read readPlain(std::string_view data, int longestSide)
{
    static std::once_flag limited;
    std::call_once(limited, [] {
        QImageReader::setAllocationLimit(
            static_cast<int>(ReceiptCompressor::maximumPixels * bytesPerPixel / bytesPerMegabyte + 1));
    });
    const auto bytes = QByteArray::fromRawData(data.data(), static_cast<qsizetype>(data.size()));
    QBuffer buffer;
    buffer.setData(bytes);
    QImageReader reader{&buffer};
    reader.setAutoTransform(true);
    reader.setDecideFormatFromContent(true);
    const auto size = reader.size();
    if (const auto refusal = whyNot(size.width(), size.height(), ReceiptCompressor::maximumPixels))
        return std::unexpected(*refusal);
    if (reader.format() == "jpeg")
        reader.setScaledSize(halvedDownTo(size, longestSide));
    auto image = reader.read();
    return image.isNull() ? Read{damaged} : std::move(image);
}

struct FreeHeif {
    void operator()(heif_context* context) const { heif_context_free(context); }
    void operator()(heif_image_handle* handle) const { heif_image_handle_release(handle); }
    void operator()(heif_image* image) const { heif_image_release(image); }
    void operator()(heif_color_profile_nclx* coded) const { heif_nclx_color_profile_free(coded); }
};
template <class Part>
using Heif = std::unique_ptr<Part, FreeHeif>;

/// Those of standard video are so near to that of screens that programs show them alike. What is brighter than paper
/// stays as it is.
std::optional<QColorSpace::TransferFunction> transferOf(heif_transfer_characteristics coded)
{
    switch (coded) {
    case heif_transfer_characteristic_linear:
        return QColorSpace::TransferFunction::Linear;
    case heif_transfer_characteristic_ITU_R_BT_709_5:
    case heif_transfer_characteristic_ITU_R_BT_601_6:
    case heif_transfer_characteristic_IEC_61966_2_1:
    case heif_transfer_characteristic_ITU_R_BT_2020_2_10bit:
    case heif_transfer_characteristic_ITU_R_BT_2020_2_12bit:
        return QColorSpace::TransferFunction::SRgb;
    default:
        return std::nullopt;
    }
}

/// Colours that the file names by numbers instead of a profile.
QColorSpace codedColorSpaceOf(const heif_image_handle* handle)
{
    heif_color_profile_nclx* found = nullptr;
    if (heif_image_handle_get_nclx_color_profile(handle, &found).code != heif_error_Ok)
        return {};
    const Heif<heif_color_profile_nclx> coded{found};
    const auto transfer = transferOf(coded->transfer_characteristics);
    if (!transfer || coded->color_primaries == heif_color_primaries_unspecified)
        return {};
    return {QPointF{coded->color_primary_white_x, coded->color_primary_white_y},
            QPointF{coded->color_primary_red_x, coded->color_primary_red_y},
            QPointF{coded->color_primary_green_x, coded->color_primary_green_y},
            QPointF{coded->color_primary_blue_x, coded->color_primary_blue_y}, *transfer};
}

QColorSpace colorSpaceOf(const heif_image_handle* handle)
{
    const auto size = heif_image_handle_get_raw_color_profile_size(handle);
    if (size == 0)
        return codedColorSpaceOf(handle);
    QByteArray profile(static_cast<qsizetype>(size), Qt::Uninitialized);
    const auto failed = heif_image_handle_get_raw_color_profile(handle, profile.data());
    return failed.code == heif_error_Ok ? QColorSpace::fromIccProfile(profile) : QColorSpace{};
}

/// The decoded pixels themselves, which go with the picture.
QImage imageOf(Heif<heif_image> pixels)
{
    int stride = 0;
    const auto* plane = heif_image_get_plane_readonly(pixels.get(), heif_channel_interleaved, &stride);
    const int width = heif_image_get_width(pixels.get(), heif_channel_interleaved);
    const int height = heif_image_get_height(pixels.get(), heif_channel_interleaved);
    if (plane == nullptr || width <= 0 || height <= 0)
        return {};
    const auto release = [](void* image) { heif_image_release(static_cast<heif_image*>(image)); };
    return {plane, width, height, stride, QImage::Format_RGBA8888, release, pixels.release()};
}

/// HEIC and HEIF. The library turns and mirrors as the file asks.
Read readHeif(std::string_view data)
{
    const Heif<heif_context> context{heif_context_alloc()};
    if (!context)
        return damaged;
    if (heif_context_read_from_memory_without_copy(context.get(), data.data(), data.size(), nullptr).code !=
        heif_error_Ok)
        return damaged;
    heif_image_handle* found = nullptr;
    if (heif_context_get_primary_image_handle(context.get(), &found).code != heif_error_Ok)
        return damaged;
    const Heif<heif_image_handle> handle{found};
    if (const auto refusal = whyNot(heif_image_handle_get_width(found), heif_image_handle_get_height(found),
                                    ReceiptCompressor::maximumHeifPixels))
        return std::unexpected(*refusal);
    heif_image* decoded = nullptr;
    if (heif_decode_image(found, &decoded, heif_colorspace_RGB, heif_chroma_interleaved_RGBA, nullptr).code !=
        heif_error_Ok)
        return damaged;
    auto image = imageOf(Heif<heif_image>{decoded});
    if (image.isNull())
        return damaged;
    image.setColorSpace(colorSpaceOf(found));
    return image;
}

}

std::expected<QImage, ReceiptImage::Unread> ReceiptImage::read(std::string_view data, std::string_view mime,
                                                               int longestSide)
{
    return mime == "image/heic" || mime == "image/heif" ? readHeif(data) : readPlain(data, longestSide);
}

QImage ReceiptImage::opaque(QImage image)
{
    if (image.colorSpace().isValid() && image.colorSpace() != QColorSpace{QColorSpace::SRgb})
        image.convertToColorSpace(QColorSpace::SRgb);
    if (!image.hasAlphaChannel())
        return std::move(image).convertToFormat(QImage::Format_RGB32);
    QImage ground{image.size(), QImage::Format_RGB32};
    ground.fill(Qt::white);
    QPainter painter{&ground};
    painter.drawImage(0, 0, image);
    return ground;
}

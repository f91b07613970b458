#include "LedgerCore/Client/Receipts/ReceiptCompressor.h"

#include <algorithm>
#include <array>
#include <optional>

#include <QBuffer>
#include <QImage>
#include <QImageWriter>

#include "LedgerCore/Client/Receipts/ReceiptImage.h"

namespace {

struct Step {
    int longestSide; // pixels
    int quality;     // of 100
};

constexpr std::array<Step, 4> ladder{{{2600, 84}, {2400, 80}, {2200, 76}, {1900, 72}}};

constexpr std::array<std::string_view, 4> pictureTypes{"image/jpeg", "image/png", "image/heic", "image/heif"};

std::int64_t sizeOf(const std::string& data)
{
    return static_cast<std::int64_t>(data.size());
}

/// Never larger than the source.
QImage reduced(const QImage& source, int longestSide)
{
    if (std::max(source.width(), source.height()) <= longestSide)
        return source;
    return source.scaled(longestSide, longestSide, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

std::optional<std::string> asJpeg(const QImage& image, int quality)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer{&buffer, "jpeg"};
    writer.setQuality(quality);
    writer.setOptimizedWrite(true);
    if (!writer.write(image))
        return std::nullopt;
    return buffer.data().toStdString();
}

/// The first result that is small enough, else the smallest of all; nothing when none could be made.
std::optional<std::string> smallestJpeg(const QImage& source)
{
    std::optional<std::string> best;
    for (const auto& [longestSide, quality] : ladder) {
        auto encoded = asJpeg(ReceiptImage::opaque(reduced(source, longestSide)), quality);
        if (encoded && (!best || encoded->size() < best->size()))
            best = std::move(encoded);
        if (best && sizeOf(*best) <= ReceiptCompressor::aimedBytes)
            break;
    }
    return best;
}

/// What follows "ftyp" in a file of pictures, as the first brand or a compatible one.
bool isHeifBrand(std::string_view brand)
{
    constexpr std::array<std::string_view, 8> brands{"heic", "heix", "heim", "heis", "hevc", "hevx", "mif1", "msf1"};
    return std::ranges::find(brands, brand) != brands.end();
}

PreparedReceipt prepared(std::string data, std::string name, std::string mime)
{
    const auto size = sizeOf(data);
    return {.data = std::move(data), .name = std::move(name), .mime = std::move(mime), .byteCount = size};
}

}

std::string_view ReceiptCompressor::mimeOf(std::string_view data)
{
    if (data.starts_with("%PDF-"))
        return "application/pdf";
    if (data.starts_with("\xff\xd8\xff"))
        return "image/jpeg";
    if (data.starts_with("\x89PNG\r\n\x1a\n"))
        return "image/png";
    if (data.size() >= 12 && data.substr(4, 4) == "ftyp" && isHeifBrand(data.substr(8, 4)))
        return data.substr(8, 4).starts_with("he") ? "image/heic" : "image/heif";
    return {};
}

std::expected<PreparedReceipt, ReceiptCompressor::Refusal>
ReceiptCompressor::prepare(std::string data, std::string name, std::string mime)
{
    if (mime == "application/pdf") {
        if (sizeOf(data) > maximumBytes)
            return std::unexpected(Refusal::tooLarge);
        return prepared(std::move(data), std::move(name), std::move(mime));
    }
    if (std::ranges::find(pictureTypes, mime) == pictureTypes.end())
        return std::unexpected(Refusal::unsupportedType);
    if (sizeOf(data) <= keptBytes)
        return prepared(std::move(data), std::move(name), std::move(mime));
    const auto source = ReceiptImage::read(data, mime, ladder.front().longestSide);
    if (!source)
        return std::unexpected(Refusal::compressionFailed);
    auto encoded = smallestJpeg(*source);
    if (!encoded || sizeOf(*encoded) > maximumBytes)
        return std::unexpected(Refusal::compressionFailed);
    return prepared(*std::move(encoded), std::move(name), "image/jpeg");
}

#include "LedgerService/Receipts/ReceiptContent.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

namespace LedgerService {

namespace {

using std::string_view_literals::operator""sv;

/// The number of so many bytes at this place, most significant byte first; nothing past the end.
std::optional<std::uint64_t> numberAt(std::string_view bytes, std::size_t at, std::size_t size)
{
    if (at > bytes.size() || bytes.size() - at < size)
        return std::nullopt;
    std::uint64_t number = 0;
    for (const char each : bytes.substr(at, size))
        number = (number << 8U) | static_cast<unsigned char>(each);
    return number;
}

bool isFrame(std::uint64_t marker)
{
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

/// Goes from segment to segment: a picture says its size before its data begins.
bool isJpeg(std::string_view bytes)
{
    if (!bytes.starts_with("\xFF\xD8\xFF"sv))
        return false;
    bool sized = false;
    for (std::size_t at = 2;;) {
        const auto marker = numberAt(bytes, at, 2);
        if (marker == 0xFFFF) { // bytes may be filled up before a marker
            ++at;
            continue;
        }
        if (!marker || *marker <= 0xFF00 || *marker == 0xFFD9)
            return false;
        const auto length = numberAt(bytes, at + 2, 2);
        if (!length || *length < 2 || at + 2 + *length > bytes.size())
            return false;
        if (*marker == 0xFFDA)
            return sized && bytes.find("\xFF\xD9"sv, at + 2 + *length) != std::string_view::npos;
        if (isFrame(*marker & 0xFFU))
            sized = numberAt(bytes, at + 5, 2).value_or(0) > 0 && numberAt(bytes, at + 7, 2).value_or(0) > 0;
        at += 2 + *length;
    }
}

/// Goes from chunk to chunk: the first says the size, some hold the picture, the last ends it.
bool isPng(std::string_view bytes)
{
    constexpr auto signature = "\x89PNG\r\n\x1A\n"sv;
    constexpr std::size_t aroundChunk = 12; // length, name and check sum
    if (!bytes.starts_with(signature) || bytes.substr(signature.size() + 4, 4) != "IHDR")
        return false;
    if (numberAt(bytes, 16, 4).value_or(0) == 0 || numberAt(bytes, 20, 4).value_or(0) == 0)
        return false;
    bool pictured = false;
    for (auto at = signature.size();;) {
        const auto length = numberAt(bytes, at, 4);
        if (!length || at + aroundChunk + *length > bytes.size())
            return false;
        const auto name = bytes.substr(at + 4, 4);
        pictured = pictured || (name == "IDAT" && *length > 0);
        if (name == "IEND")
            return pictured;
        at += aroundChunk + *length;
    }
}

constexpr std::array pictureBrands{"heic"sv, "heix"sv, "heim"sv, "heis"sv, "hevc"sv,
                                   "hevx"sv, "hevm"sv, "hevs"sv, "mif1"sv, "msf1"sv};

/// Whether the list of brands at the beginning names a picture of this format, and no other one that is built alike.
bool hasPictureBrand(std::string_view brands)
{
    bool known = false;
    for (std::size_t at = 0; at + 4 <= brands.size(); at += at == 0 ? 8 : 4) { // after the first stands a version
        const auto brand = brands.substr(at, 4);
        if (brand == "avif" || brand == "avis")
            return false;
        known = known || std::ranges::find(pictureBrands, brand) != pictureBrands.end();
    }
    return known;
}

/// Goes from box to box: one describes the pictures, one holds them.
bool isHeif(std::string_view bytes)
{
    bool described = false;
    bool held = false;
    for (std::size_t at = 0; at < bytes.size();) {
        const auto name = bytes.substr(std::min(at + 4, bytes.size()), 4);
        auto size = numberAt(bytes, at, 4).value_or(0);
        if (size == 1)
            size = numberAt(bytes, at + 8, 8).value_or(0);
        else if (size == 0) // up to the end
            size = bytes.size() - at;
        if (size < 8 || size > bytes.size() - at)
            return false;
        if (at == 0 && (name != "ftyp" || size > 256 || !hasPictureBrand(bytes.substr(8, size - 8))))
            return false;
        described = described || name == "meta";
        held =
            held || name == "mdat" || (name == "meta" && bytes.substr(at, size).find("idat") != std::string_view::npos);
        at += size;
    }
    return described && held;
}

/// A document says its version first, and at its end where its table of contents lies.
bool isPdf(std::string_view bytes)
{
    constexpr std::size_t tailBytes = 2048;
    if (!bytes.starts_with("%PDF-1.") && !bytes.starts_with("%PDF-2."))
        return false;
    const auto tail = bytes.substr(bytes.size() - std::min(bytes.size(), tailBytes));
    const auto table = tail.rfind("startxref");
    return table != std::string_view::npos && tail.find("%%EOF", table) != std::string_view::npos;
}

}

bool ReceiptContent::isOf(std::string_view mediaType, std::string_view bytes)
{
    if (mediaType == "application/pdf")
        return isPdf(bytes);
    if (mediaType == "image/jpeg")
        return isJpeg(bytes);
    if (mediaType == "image/png")
        return isPng(bytes);
    return (mediaType == "image/heic" || mediaType == "image/heif") && isHeif(bytes);
}

}

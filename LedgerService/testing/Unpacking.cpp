#include "LedgerService/testing/Unpacking.h"

#include <array>
#include <memory>

#define ZLIB_CONST // what is unpacked is not changed
#include <zlib.h>
#include <zstd.h>

namespace LedgerService {

namespace {

struct Unpacked {
    std::string text;
    bool ended = false;
};

using Room = std::array<char, 65'536>;

std::optional<Unpacked> ofGzip(std::string_view packed)
{
    constexpr int gzipFrame = MAX_WBITS + 16;
    z_stream stream{};
    stream.next_in = reinterpret_cast<const Bytef*>(packed.data());
    stream.avail_in = static_cast<uInt>(packed.size());
    const std::unique_ptr<z_stream, int (*)(z_stream*)> ending{&stream, &inflateEnd};
    int outcome = inflateInit2(&stream, gzipFrame);
    Unpacked unpacked;
    const auto room = std::make_unique<Room>();
    do {
        stream.next_out = reinterpret_cast<Bytef*>(room->data());
        stream.avail_out = static_cast<uInt>(room->size());
        outcome = inflate(&stream, Z_NO_FLUSH);
        unpacked.text.append(room->data(), room->size() - stream.avail_out);
    } while (outcome == Z_OK && (stream.avail_in > 0 || stream.avail_out == 0));
    unpacked.ended = outcome == Z_STREAM_END && stream.avail_in == 0;
    const bool isSound = outcome == Z_OK || outcome == Z_BUF_ERROR || outcome == Z_STREAM_END;
    return isSound ? std::optional{std::move(unpacked)} : std::nullopt;
}

std::optional<Unpacked> ofZstd(std::string_view packed)
{
    const std::unique_ptr<ZSTD_DCtx, std::size_t (*)(ZSTD_DCtx*)> context{ZSTD_createDCtx(), &ZSTD_freeDCtx};
    ZSTD_inBuffer input{.src = packed.data(), .size = packed.size(), .pos = 0};
    Unpacked unpacked;
    const auto room = std::make_unique<Room>();
    ZSTD_outBuffer output{};
    do {
        output = {.dst = room->data(), .size = room->size(), .pos = 0};
        const auto left = ZSTD_decompressStream(context.get(), &output, &input);
        if (ZSTD_isError(left) != 0)
            return std::nullopt;
        unpacked.text.append(room->data(), output.pos);
        unpacked.ended = left == 0;
    } while (!unpacked.ended && (input.pos < input.size || output.pos == output.size));
    return unpacked;
}

std::optional<Unpacked> of(std::string_view coding, std::string_view packed)
{
    if (coding == "gzip")
        return ofGzip(packed);
    if (coding == "zstd")
        return ofZstd(packed);
    return coding.empty() ? std::optional{Unpacked{.text = std::string{packed}, .ended = true}} : std::nullopt;
}

}

std::optional<std::string> Unpacking::whole(std::string_view coding, std::string_view packed)
{
    auto unpacked = of(coding, packed);
    return unpacked && unpacked->ended ? std::optional{std::move(unpacked->text)} : std::nullopt;
}

std::optional<std::string> Unpacking::begun(std::string_view coding, std::string_view packed)
{
    auto unpacked = of(coding, packed);
    return unpacked ? std::optional{std::move(unpacked->text)} : std::nullopt;
}

}

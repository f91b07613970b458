#include "LedgerService/Http/BodyPacker.h"

#include <new>
#include <stdexcept>

#define ZLIB_CONST // what is packed is not changed
#include <zlib.h>
#include <zstd.h>

#include "LedgerCore/Domain/Contract.h"

namespace LedgerService {

namespace {

/// Room that is added to the result at a time.
constexpr std::size_t stepBytes = std::size_t{32} * 1024;

/// Lets `write` append to the text until it says that nothing is left; it is given room and answers how much it used.
template <class Write>
std::string appended(Write write)
{
    std::string text;
    bool more = true;
    while (more) {
        const auto before = text.size();
        text.resize_and_overwrite(before + stepBytes, [&](char* bytes, std::size_t) {
            std::size_t used = 0;
            more = write(bytes + before, stepBytes, used);
            return before + used;
        });
    }
    return text;
}

class ZstdPacker final : public BodyPacker {
public:
    ZstdPacker() : m_context(ZSTD_createCCtx(), &ZSTD_freeCCtx)
    {
        // What repeats in books repeats nearby. A larger window packs no tighter here and would be held for each
        // reader.
        constexpr int windowBits = 17;
        if (!m_context)
            throw std::bad_alloc{};
        set(ZSTD_c_compressionLevel, 1);
        set(ZSTD_c_windowLog, windowBits);
        set(ZSTD_c_checksumFlag, 1);
    }

    std::string pack(std::string_view piece) override { return run(piece, ZSTD_e_flush); }
    std::string end() override { return run({}, ZSTD_e_end); }
    [[nodiscard]] std::size_t heldBytes() const override { return ZSTD_sizeof_CCtx(m_context.get()); }

private:
    static std::size_t checked(std::size_t outcome)
    {
        if (ZSTD_isError(outcome) != 0)
            throw std::runtime_error{ZSTD_getErrorName(outcome)};
        return outcome;
    }

    void set(ZSTD_cParameter parameter, int value)
    {
        checked(ZSTD_CCtx_setParameter(m_context.get(), parameter, value));
    }

    std::string run(std::string_view piece, ZSTD_EndDirective directive)
    {
        ZSTD_inBuffer input{.src = piece.data(), .size = piece.size(), .pos = 0};
        return appended([&](char* bytes, std::size_t room, std::size_t& used) {
            ZSTD_outBuffer output{.dst = bytes, .size = room, .pos = 0};
            const auto left = checked(ZSTD_compressStream2(m_context.get(), &output, &input, directive));
            used = output.pos;
            return left > 0;
        });
    }

    std::unique_ptr<ZSTD_CCtx, std::size_t (*)(ZSTD_CCtx*)> m_context;
};

class GzipPacker final : public BodyPacker {
public:
    GzipPacker()
    {
        constexpr int gzipFrame = 16; // instead of the library's own
        if (deflateInit2(&m_stream, Z_BEST_SPEED, Z_DEFLATED, windowBits + gzipFrame, memoryLevel,
                         Z_DEFAULT_STRATEGY) != Z_OK)
            throw std::bad_alloc{};
    }
    ~GzipPacker() override { deflateEnd(&m_stream); }

    std::string pack(std::string_view piece) override { return run(piece, Z_SYNC_FLUSH); }
    std::string end() override { return run({}, Z_FINISH); }

    /// As the library's manual puts it.
    [[nodiscard]] std::size_t heldBytes() const override
    {
        return (std::size_t{1} << (windowBits + 2)) + (std::size_t{1} << (memoryLevel + 9));
    }

private:
    static constexpr int windowBits = 15;
    static constexpr int memoryLevel = 8;

    std::string run(std::string_view piece, int flush)
    {
        m_stream.next_in = reinterpret_cast<const Bytef*>(piece.data());
        m_stream.avail_in = static_cast<uInt>(piece.size());
        return appended([&](char* bytes, std::size_t room, std::size_t& used) {
            m_stream.next_out = reinterpret_cast<Bytef*>(bytes);
            m_stream.avail_out = static_cast<uInt>(room);
            const int outcome = deflate(&m_stream, flush);
            if (outcome == Z_STREAM_ERROR)
                throw std::runtime_error{"zlib cannot go on"};
            used = room - m_stream.avail_out;
            return m_stream.avail_out == 0; // else it has said everything
        });
    }

    z_stream m_stream{};
};

}

std::unique_ptr<BodyPacker> BodyPacker::create(ContentCoding coding)
{
    require(coding != ContentCoding::identity, "somebody wants the body to be packed");
    if (coding == ContentCoding::zstd)
        return std::make_unique<ZstdPacker>();
    return std::make_unique<GzipPacker>();
}

}

#include "LedgerCore/Domain/Imports/ImportRowIdentity.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

#include <boost/unordered/unordered_flat_map.hpp>
#include <sodium/crypto_hash_sha256.h>

namespace {

using Digest = std::array<unsigned char, crypto_hash_sha256_BYTES>;
using Hash = crypto_hash_sha256_state;

constexpr std::string_view companyEnd{"\0", 1};
constexpr std::string_view cellSeparator = "\x1F";
constexpr std::string_view countSeparator = "\x1E";

/// Digests are spread evenly already: their first bytes do.
struct DigestHasher {
    using is_avalanching = void;

    std::size_t operator()(const Digest& digest) const
    {
        std::size_t part = 0;
        std::memcpy(&part, digest.data(), sizeof part);
        return part;
    }
};

void take(Hash& hash, std::string_view text)
{
    crypto_hash_sha256_update(&hash, reinterpret_cast<const unsigned char*>(text.data()), text.size());
}

Digest finished(Hash hash)
{
    Digest digest{};
    crypto_hash_sha256_final(&hash, digest.data());
    return digest;
}

/// The first half of a digest as a UUID of version 5 and the usual variant.
std::string deterministicUUID(const Digest& digest)
{
    constexpr auto hex = "0123456789abcdef";
    std::string text;
    text.reserve(36);
    for (std::size_t at = 0; at < 16; ++at) {
        auto byte = static_cast<unsigned>(digest[at]);
        if (at == 6)
            byte = (byte & 0x0FU) | 0x50U;
        if (at == 8)
            byte = (byte & 0x3FU) | 0x80U;
        if (at == 4 || at == 6 || at == 8 || at == 10)
            text += '-';
        text += hex[byte >> 4U];
        text += hex[byte & 15U];
    }
    return text;
}

}

struct ImportRowIdentity::State {
    Hash company{}; // has taken in what all rows begin with
    // How often each row was met; flat, for a node a row would cost more than the row's digest.
    boost::unordered_flat_map<Digest, std::uint32_t, DigestHasher> seen;
};

ImportRowIdentity::ImportRowIdentity(std::string_view companyID, std::size_t rowsExpected)
    : m_state(std::make_unique<State>())
{
    m_state->seen.reserve(rowsExpected);
    crypto_hash_sha256_init(&m_state->company);
    take(m_state->company, companyID);
    take(m_state->company, companyEnd);
}

ImportRowIdentity::~ImportRowIdentity() = default;

bool ImportRowIdentity::isIdentifier(std::string_view text)
{
    constexpr std::string_view form = "00000000-0000-5000-v000-000000000000";
    const auto fits = [](char each, char place) {
        if (place == '0')
            return (each >= '0' && each <= '9') || (each >= 'a' && each <= 'f');
        return place == 'v' ? std::string_view{"89ab"}.contains(each) : each == place;
    };
    return text.size() == form.size() && std::ranges::equal(text, form, fits);
}

std::string ImportRowIdentity::next(std::span<const std::string_view> cells)
{
    auto hash = m_state->company;
    for (std::size_t at = 0; at < cells.size(); ++at) {
        if (at > 0)
            take(hash, cellSeparator);
        take(hash, cells[at]);
    }
    const auto count = ++m_state->seen[finished(hash)];
    take(hash, countSeparator);
    take(hash, std::to_string(count));
    return deterministicUUID(finished(hash));
}

#include "LedgerService/Random.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <vector>

#include <sodium.h>

#include "LedgerCore/Domain/Contract.h"

namespace LedgerService {

namespace {

/// 128 bits never meet by chance.
constexpr std::size_t randomBytes = 16;
/// Milliseconds of some thousand years.
constexpr std::size_t timeBytes = 6;
constexpr unsigned bitsOfByte = 8;

const unsigned char* bytesOf(std::string_view text)
{
    return reinterpret_cast<const unsigned char*>(text.data());
}

void prepareLibrary()
{
    static const bool ready = sodium_init() >= 0;
    require(ready, "the cryptographic library starts");
}

/// URL-safe Base64 without padding.
std::string encoded(std::span<const unsigned char> bytes)
{
    constexpr auto variant = sodium_base64_VARIANT_URLSAFE_NO_PADDING;
    std::string text(sodium_base64_encoded_len(bytes.size(), variant), '\0');
    sodium_bin2base64(text.data(), text.size(), bytes.data(), bytes.size(), variant);
    text.pop_back(); // the terminating zero
    return text;
}

std::array<unsigned char, crypto_generichash_BYTES> hashOf(std::string_view content)
{
    prepareLibrary();
    std::array<unsigned char, crypto_generichash_BYTES> hash{};
    crypto_generichash(hash.data(), hash.size(), bytesOf(content), content.size(), nullptr, 0);
    return hash;
}

}

std::string Random::text(std::size_t bytes)
{
    prepareLibrary();
    std::vector<unsigned char> random(bytes);
    randombytes_buf(random.data(), random.size());
    return encoded(random);
}

/// What is made at the same time begins alike and so stands together in indexes: a database writes fewer pages.
std::string Random::identifier()
{
    prepareLibrary();
    std::array<unsigned char, timeBytes + randomBytes> bytes{};
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    auto time = static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
    for (auto at = timeBytes; at-- > 0; time >>= bitsOfByte)
        bytes[at] = static_cast<unsigned char>(time);
    randombytes_buf(&bytes[timeBytes], randomBytes);
    return encoded(bytes);
}

std::string Random::digits(std::size_t count)
{
    prepareLibrary();
    std::string digits;
    for (std::size_t at = 0; at < count; ++at)
        digits += static_cast<char>('0' + randombytes_uniform(10));
    return digits;
}

std::string Random::digest(std::string_view content)
{
    return hexadecimal(hashOf(content));
}

std::string Random::shortDigest(std::string_view content)
{
    return encoded(hashOf(content));
}

std::string Random::hexadecimal(std::span<const unsigned char> bytes)
{
    std::string text(bytes.size() * 2 + 1, '\0');
    sodium_bin2hex(text.data(), text.size(), bytes.data(), bytes.size());
    text.pop_back(); // the terminating zero
    return text;
}

}

#include "LedgerService/Random.h"

#include <array>
#include <vector>

#include <sodium.h>

#include "LedgerCore/Domain/Contract.h"

namespace LedgerService {

namespace {

/// 128 bits never meet by chance.
constexpr std::size_t identifierBytes = 16;

const unsigned char* bytesOf(std::string_view text)
{
    return reinterpret_cast<const unsigned char*>(text.data());
}

void prepareLibrary()
{
    static const bool ready = sodium_init() >= 0;
    require(ready, "the cryptographic library starts");
}

}

std::string Random::text(std::size_t bytes)
{
    prepareLibrary();
    constexpr auto variant = sodium_base64_VARIANT_URLSAFE_NO_PADDING;
    std::vector<unsigned char> random(bytes);
    randombytes_buf(random.data(), random.size());
    std::string encoded(sodium_base64_encoded_len(bytes, variant), '\0');
    sodium_bin2base64(encoded.data(), encoded.size(), random.data(), random.size(), variant);
    encoded.pop_back(); // the terminating zero
    return encoded;
}

std::string Random::identifier()
{
    return text(identifierBytes);
}

std::string Random::digest(std::string_view content)
{
    prepareLibrary();
    std::array<unsigned char, crypto_generichash_BYTES> hash{};
    crypto_generichash(hash.data(), hash.size(), bytesOf(content), content.size(), nullptr, 0);
    return hexadecimal(hash);
}

std::string Random::hexadecimal(std::span<const unsigned char> bytes)
{
    std::string text(bytes.size() * 2 + 1, '\0');
    sodium_bin2hex(text.data(), text.size(), bytes.data(), bytes.size());
    text.pop_back(); // the terminating zero
    return text;
}

}

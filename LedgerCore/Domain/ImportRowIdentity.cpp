#include "LedgerCore/Domain/ImportRowIdentity.h"

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

#include <sodium/crypto_hash_sha256.h>

namespace {

using Digest = std::array<unsigned char, crypto_hash_sha256_BYTES>;
using Hash = crypto_hash_sha256_state;

constexpr std::string_view companyEnd{"\0", 1};
constexpr std::string_view cellSeparator = "\x1F";
constexpr std::string_view countSeparator = "\x1E";

/// How often each row was met. One flat table: a node a row would cost more than the row's digest.
class Occurrences {
public:
    explicit Occurrences(std::size_t rowsExpected) : m_slots(std::bit_ceil(rowsExpected + rowsExpected / 2 + 16)) {}

    /// 1 for a row met for the first time.
    std::uint32_t count(const Digest& row)
    {
        if (m_used + m_used / 4 >= m_slots.size())
            grow();
        auto& slot = slotOf(row);
        if (slot.times == 0) {
            slot.row = row;
            ++m_used;
        }
        return ++slot.times;
    }

private:
    struct Slot {
        Digest row{};
        std::uint32_t times = 0; // 0: free
    };

    Slot& slotOf(const Digest& row)
    {
        std::size_t at = 0;
        std::memcpy(&at, row.data(), sizeof at);
        for (at &= m_slots.size() - 1; m_slots[at].times != 0 && m_slots[at].row != row;)
            at = (at + 1) & (m_slots.size() - 1);
        return m_slots[at];
    }

    void grow()
    {
        const auto slots = std::exchange(m_slots, std::vector<Slot>(2 * m_slots.size()));
        for (const auto& slot : slots) {
            if (slot.times != 0)
                slotOf(slot.row) = slot;
        }
    }

    std::vector<Slot> m_slots; // a power of two of them, never full
    std::size_t m_used = 0;
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
    Occurrences seen;
};

ImportRowIdentity::ImportRowIdentity(std::string_view companyID, std::size_t rowsExpected)
    : m_state(std::make_unique<State>(Hash{}, Occurrences{rowsExpected}))
{
    crypto_hash_sha256_init(&m_state->company);
    take(m_state->company, companyID);
    take(m_state->company, companyEnd);
}

ImportRowIdentity::~ImportRowIdentity() = default;

std::string ImportRowIdentity::next(std::span<const std::string_view> cells)
{
    auto hash = m_state->company;
    for (std::size_t at = 0; at < cells.size(); ++at) {
        if (at > 0)
            take(hash, cellSeparator);
        take(hash, cells[at]);
    }
    const auto count = m_state->seen.count(finished(hash));
    take(hash, countSeparator);
    take(hash, std::to_string(count));
    return deterministicUUID(finished(hash));
}

#pragma once

#include <cstdint>

/// One line of the ledger's table: an entry, by its place in the book, or the head of the entries of one day.
class LedgerLine {
public:
    [[nodiscard]] static constexpr LedgerLine ofEntry(std::uint32_t at) { return LedgerLine{at}; }
    /// `day` as the book counts days: 20261120.
    [[nodiscard]] static constexpr LedgerLine headOf(std::uint32_t day) { return LedgerLine{headBit | day}; }

    [[nodiscard]] constexpr bool isHead() const { return (m_bits & headBit) != 0; }
    [[nodiscard]] constexpr std::uint32_t entry() const { return m_bits; }          // where it is no head
    [[nodiscard]] constexpr std::uint32_t day() const { return m_bits & ~headBit; } // where it is one

    bool operator==(const LedgerLine&) const = default;

private:
    // Neither a place in a book nor a day ever reaches it.
    static constexpr std::uint32_t headBit = 0x80000000;

    explicit constexpr LedgerLine(std::uint32_t bits) : m_bits{bits} {}

    std::uint32_t m_bits;
};

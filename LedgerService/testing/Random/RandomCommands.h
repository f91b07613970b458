#pragma once

#include <cstdint>
#include <random>
#include <string>

#include "LedgerService/Books/Books.h"

namespace LedgerService {

/// Commands on the company of `SampleBooks`, sound and unsound, always the same for the same seed.
class RandomCommands {
public:
    explicit RandomCommands(std::uint32_t seed) : m_engine(seed) {}

    std::string actor();

    /// Whether the next command reverses an entry.
    bool reverses() { return once(6); }

    /// An entry to reverse or refund, now and then one that does not exist.
    std::string entryOf(const Books& company);

    TransactionInput inputFor(const Books& company);

private:
    std::size_t below(std::size_t end) { return m_engine() % end; }
    bool once(std::size_t in) { return below(in) == 0; }

    template <class Choices>
    const auto& of(const Choices& choices)
    {
        return choices[below(std::size(choices))];
    }

    std::int64_t amount();
    TransactionInput soundInput();
    void disturb(TransactionInput& input);

    std::mt19937 m_engine;
};

}

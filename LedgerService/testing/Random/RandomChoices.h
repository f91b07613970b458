#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <random>

namespace LedgerService {

/// What happens by chance, always the same for the same seed.
class RandomChoices {
protected:
    explicit RandomChoices(std::uint32_t seed) : m_engine(seed) {}

    std::size_t below(std::size_t end) { return m_engine() % end; }
    bool once(std::size_t in) { return below(in) == 0; }

    template <class Choices>
    const auto& of(const Choices& choices)
    {
        return choices[below(std::size(choices))];
    }

    std::mt19937& engine() { return m_engine; }

private:
    std::mt19937 m_engine;
};

}

#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace LedgerService {

/// Bytes that a hostile client might send: requests to the service's own routes, bent in every part. Always the same
/// for the same seed and tokens.
class RandomRequests {
public:
    /// `tokens` are some that are in force.
    RandomRequests(std::uint32_t seed, std::vector<std::string> tokens) : m_engine(seed), m_tokens(std::move(tokens)) {}

    std::string next();

private:
    std::size_t below(std::size_t end) { return m_engine() % end; }
    bool once(std::size_t in) { return below(in) == 0; }
    template <class Choices>
    const auto& of(const Choices& choices)
    {
        return choices[below(std::size(choices))];
    }

    std::string method(std::string_view usual);
    std::string path(std::string_view pattern);
    std::string query();
    std::string headers();
    std::string body();
    std::string framed(std::string body);
    void bend(std::string& bytes);

    std::mt19937 m_engine;
    std::vector<std::string> m_tokens;
};

}

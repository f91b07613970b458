#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerService/testing/Random/RandomChoices.h"

namespace LedgerService {

/// Bytes that a hostile client might send: requests to the service's own routes, bent in every part. Always the same
/// for the same seed and tokens.
class RandomRequests : RandomChoices {
public:
    /// `tokens` are some that are in force.
    RandomRequests(std::uint32_t seed, std::vector<std::string> tokens)
        : RandomChoices(seed), m_tokens(std::move(tokens))
    {
    }

    std::string next();

private:
    std::string method(std::string_view usual);
    std::string path(std::string_view pattern);
    std::string query();
    std::string headers();
    std::string body();
    std::string framed(std::string body);
    void bend(std::string& bytes);

    std::vector<std::string> m_tokens;
};

}

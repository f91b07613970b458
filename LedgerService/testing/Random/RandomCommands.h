#pragma once

#include <cstdint>
#include <string>

#include "LedgerService/Books/Books.h"
#include "LedgerService/testing/Random/RandomChoices.h"

namespace LedgerService {

/// Commands on the company of `SampleBooks`, sound and unsound, always the same for the same seed.
class RandomCommands : RandomChoices {
public:
    explicit RandomCommands(std::uint32_t seed) : RandomChoices(seed) {}

    std::string actor();

    /// Whether the next command reverses an entry.
    bool reverses() { return once(6); }

    /// An entry to reverse or refund, now and then one that does not exist.
    std::string entryOf(const Books& company);

    TransactionInput inputFor(const Books& company);

private:
    std::int64_t amount();
    TransactionInput soundInput();
    void disturb(TransactionInput& input);
};

}

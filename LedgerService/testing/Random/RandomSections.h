#pragma once

#include <cstdint>
#include <string>

#include "LedgerCore/Domain/Records/Requests/CapitalCommand.h"
#include "LedgerCore/Domain/Records/Requests/DividendCommand.h"
#include "LedgerService/testing/Random/RandomChoices.h"

namespace LedgerService {

/// Commands of capital and dividends on the company of `SampleSections`, sound and unsound, always the same for the
/// same seed and sections.
class RandomSections : RandomChoices {
public:
    explicit RandomSections(std::uint32_t seed) : RandomChoices(seed) {}

    std::string actor();
    bool changesCapital() { return once(2); }

    CapitalCommand capitalFor(const CapitalState& state);
    DividendCommand dividendFor(const DividendState& state);

private:
    /// An id of one of the records, now and then of none.
    template <class Record>
    std::string idOf(const std::vector<Record>& records)
    {
        return records.empty() || once(30) ? "none" : of(records).id;
    }

    std::int64_t amount();
    std::string account();
    std::string name();
    /// Numbers that add up to 10000, almost always.
    std::vector<int> ratios(std::size_t count);
    void aim(DividendCommand& command, const DividendState& state);
    template <class Command>
    void place(Command& command);
    template <class Command>
    void disturb(Command& command);
};

}

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "LedgerCore/Domain/Records/LedgerTransaction.h"

/// What an exchange gave and received of two currencies, whichever of them was given.
struct ExchangeSides {
    std::string day;
    std::int64_t fromMinor = 0;
    std::int64_t toMinor = 0;

    /// Nothing for an entry with other legs than one of each currency.
    static std::optional<ExchangeSides> of(const LedgerTransaction& entry, std::string_view from, std::string_view to);
};

/// Whether the two amounts imply a rate that is more than a tenth away from that of an earlier exchange.
bool isFarFrom(const ExchangeSides& earlier, std::int64_t fromMinor, std::int64_t toMinor);

#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "LedgerUI/Presentation/Ledger/LedgerBook.h"

/// What a refund of an income begins with: where the money came in, and what has not been paid back yet.
struct LedgerRefund {
    std::string incomeID;
    std::string accountID;
    std::string currency;
    std::int64_t remainingMinor = 0; // above zero

    bool operator==(const LedgerRefund&) const = default;
};

/// Nothing for an entry that the member cannot refund, or that is paid back in full.
std::optional<LedgerRefund> refundOf(const LedgerBook& book, std::uint32_t at);

#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "LedgerUI/Presentation/Ledger/Listing/LedgerFilter.h"

/// What happened on the one account that the ledger is narrowed to: per currency what was there before the period, what
/// came and went, and what was there at its end; and what was there after each entry shown. Transfers count, as they
/// move this account's money.
struct LedgerStatement {
    struct Line {
        std::string currency;
        std::int64_t opening = 0;
        std::int64_t incoming = 0;
        std::int64_t outgoing = 0; // negative or 0
        std::int64_t closing = 0;

        bool operator==(const Line&) const = default;
    };
    struct Balance {
        std::uint32_t currency = 0; // as the book numbers them
        std::int64_t minor = 0;

        bool operator==(const Balance&) const = default;
    };

    std::string accountID;
    std::vector<Line> lines;            // in the order of the currency pickers
    std::vector<std::uint32_t> firstOf; // for each line its first balance, and behind them the end
    std::vector<Balance> balances;      // of the lines, one behind the other
    std::vector<Balance> widest;        // the largest of each currency among them

    [[nodiscard]] std::span<const Balance> after(std::size_t line) const
    {
        return std::span{balances}.subspan(firstOf[line], firstOf[line + 1] - firstOf[line]);
    }
};

/// Nothing unless a single account is chosen and the visible entries explain its balances in every currency. `places`
/// gives each entry of the book its line, or -1; there are `lines` of them.
std::optional<LedgerStatement> statementOf(const LedgerBook& book, const LedgerFilter& filter,
                                           const std::vector<int>& places, std::size_t lines);

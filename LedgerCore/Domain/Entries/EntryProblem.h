#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "LedgerCore/Domain/Entries/EntryValidationError.h"
#include "LedgerCore/Domain/Money/MoneyError.h"

/// The part of the entry form that a message stands under, in the order of the form.
enum class EntryField { account, destination, amount, targetAmount, category, original };

/// What a draft runs into beyond the empty fields: something chosen that no longer holds, or a limit.
enum class EntryObstacle {
    accountUnavailable,
    categoryUnavailable,
    balanceLimit,
    sameCurrency,         // an exchange needs two
    originalRequired,     // a refund names an income or a reference
    originalUnavailable,  // the income named is not refundable
    openingExists,        // one active opening balance an account and currency
    openingUnverifiable,  // the visible history is incomplete
    openingDateUnreadable // the start of the books names no day
};

/// A refund past what its income still allows.
struct RefundLimit {
    std::int64_t remaining = 0; // minor units of `currency`
    std::string currency;
    bool operator==(const RefundLimit&) const = default;
};

/// One thing to put right, and where.
struct EntryProblem {
    EntryField field = EntryField::account;
    std::variant<EntryValidationError, MoneyError, EntryObstacle, RefundLimit> reason;

    bool operator==(const EntryProblem&) const = default;

    [[nodiscard]] std::string message(std::string_view locale) const;
};

#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "LedgerCore/Domain/Entries/EntryField.h"
#include "LedgerCore/Domain/Entries/EntryValidationError.h"
#include "LedgerCore/Domain/Entries/PostingRefusal.h"
#include "LedgerCore/Domain/Money/MoneyError.h"

class WordTable;

/// A refund past what its income still allows.
struct RefundLimit {
    std::int64_t remaining = 0; // minor units of `currency`
    std::string currency;
    bool operator==(const RefundLimit&) const = default;
};

/// One thing to put right, and where.
struct EntryProblem {
    EntryField field = EntryField::account;
    std::variant<EntryValidationError, MoneyError, PostingReason, RefundLimit> reason;

    bool operator==(const EntryProblem&) const = default;

    [[nodiscard]] std::string message(std::string_view locale) const;

    /// What is said about reasons that no other table words.
    static const WordTable& words();
};

#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "LedgerCore/Domain/Entries/Drafts/EntryValidationError.h"
#include "LedgerCore/Domain/Entries/EntryField.h"
#include "LedgerCore/Domain/Entries/Posting/PostingRefusal.h"
#include "LedgerCore/Domain/Money/MoneyError.h"

class WordTable;

/// A refund past what its income still allows.
struct RefundLimit {
    std::int64_t remaining = 0; // minor units of `currency`
    std::string currency;
    bool operator==(const RefundLimit&) const = default;
};

/// An amount, or the balance that it leads to, past what is carried in one currency. The limit is named with it.
struct RangeLimit {
    enum class Of { amount, balance };

    Of of = Of::amount;
    std::string currency;
    bool operator==(const RangeLimit&) const = default;

    [[nodiscard]] std::string message(std::string_view locale) const;
};

/// One thing to put right, and where.
struct EntryProblem {
    EntryField field = EntryField::account;
    std::variant<EntryValidationError, MoneyError, PostingReason, RefundLimit, RangeLimit> reason;

    bool operator==(const EntryProblem&) const = default;

    [[nodiscard]] std::string message(std::string_view locale) const;

    /// What cannot be read as an amount of this currency.
    static EntryProblem unread(EntryField field, MoneyError error, const std::string& currency);

    /// What is said about reasons that no other table words.
    static const WordTable& words();
};

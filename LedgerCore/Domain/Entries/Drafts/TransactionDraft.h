#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <boost/describe.hpp>

/// What a person has entered of one entry so far. Amounts are texts as typed; `idempotencyKey` is made with the draft.
struct TransactionDraft {
    std::string kind; // an `EntryKind`
    std::string date; // "YYYY-MM-DD"; an opening is booked on its own day instead
    std::string note;
    std::optional<std::string> categoryID;
    std::optional<std::string> source; // the account that money leaves
    std::optional<std::string> target; // the account that money arrives on
    std::string currency;
    std::string targetCurrency; // exchange: the currency received
    std::string amount;
    std::string targetAmount;
    std::optional<std::string> originalIncomeID; // refund: the income paid back
    std::string refundReference;
    std::vector<std::string> attachments;
    std::string idempotencyKey;

    bool operator==(const TransactionDraft&) const = default;

    /// Income and openings only arrive: their account is `target`. Every other kind starts from `source`.
    [[nodiscard]] bool onlyArrives() const;
    [[nodiscard]] bool hasCategory() const;    // expense and income
    [[nodiscard]] bool hasDestination() const; // transfer and exchange

    /// The account that the entry is recorded on.
    [[nodiscard]] const std::optional<std::string>& primaryAccount() const { return onlyArrives() ? target : source; }
    [[nodiscard]] std::optional<std::string>& primaryAccount() { return onlyArrives() ? target : source; }
};
BOOST_DESCRIBE_STRUCT(TransactionDraft, (),
                      (kind, date, note, categoryID, source, target, currency, targetCurrency, amount, targetAmount,
                       originalIncomeID, refundReference, attachments, idempotencyKey))

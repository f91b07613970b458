#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <boost/describe.hpp>

/// Body of recording an entry. `idempotencyKey` is made once for a draft and kept across retries.
struct TransactionInput {
    std::string kind;
    std::string date; // "YYYY-MM-DD"
    std::string note;
    std::optional<std::string> categoryID;
    std::optional<std::string> sourceAccountID; // money leaves: expense, transfer, exchange, refund
    std::optional<std::string> targetAccountID; // money arrives: income, opening, transfer, exchange
    std::string currency;
    std::optional<std::string> targetCurrency; // exchange: the currency received
    std::int64_t amountMinor = 0;              // positive, minor units of `currency`
    std::optional<std::int64_t> targetAmountMinor;
    std::vector<std::string> attachmentIDs;
    std::string idempotencyKey;
    std::optional<std::string> originalTransactionID;
    std::optional<std::string> externalReference;
    std::optional<std::string> transferPurpose;

    bool operator==(const TransactionInput&) const = default;
};
BOOST_DESCRIBE_STRUCT(TransactionInput, (),
                      (kind, date, note, categoryID, sourceAccountID, targetAccountID, currency, targetCurrency,
                       amountMinor, targetAmountMinor, attachmentIDs, idempotencyKey, originalTransactionID,
                       externalReference, transferPurpose))

/// Body of reversing an entry. `date` is the day on which the reversal is booked.
struct Reversal {
    std::string reason;
    std::string idempotencyKey;
    std::string date;

    bool operator==(const Reversal&) const = default;
};
BOOST_DESCRIBE_STRUCT(Reversal, (), (reason, idempotencyKey, date))

#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <boost/describe.hpp>

/// The kinds of entry, as they stand on the wire.
namespace EntryKind {
inline constexpr std::string_view income = "income";
inline constexpr std::string_view expense = "expense";
inline constexpr std::string_view transfer = "transfer";
inline constexpr std::string_view exchange = "exchange";
inline constexpr std::string_view refund = "refund";
inline constexpr std::string_view reversal = "reversal";
inline constexpr std::string_view opening = "opening";
inline constexpr std::string_view capital = "capital";   // an owner's contribution
inline constexpr std::string_view dividend = "dividend"; // money of a dividend, paid or returned

inline constexpr std::array<std::string_view, 9> all{income,   expense, transfer, exchange, refund,
                                                     reversal, opening, capital,  dividend};
}

namespace TransferPurpose {
inline constexpr std::string_view funding = "funding";  // from a company account to a member's float
inline constexpr std::string_view returning = "return"; // back to a company account
}

/// One movement of money on an account. Negative leaves the account, positive arrives.
struct LedgerLeg {
    std::string accountID;
    std::string currency;
    std::int64_t amountMinor = 0; // minor units of `currency`

    bool operator==(const LedgerLeg&) const = default;
};
BOOST_DESCRIBE_STRUCT(LedgerLeg, (), (accountID, currency, amountMinor))

/// A posted entry: dated, signed movements. Never edited; undone by a reversal linked both ways.
struct LedgerTransaction {
    std::string id;
    std::string kind; // an `EntryKind`
    std::string date; // accounting day, "YYYY-MM-DD"
    std::string note;
    std::string createdAt;
    std::string memberID; // who recorded it
    std::optional<std::string> categoryID;
    std::vector<LedgerLeg> legs;
    std::vector<std::string> attachmentIDs;
    std::optional<std::string> reversedBy;
    std::optional<std::string> reversalOf;
    std::optional<std::string> originalTransactionID; // on a refund: the income refunded
    std::optional<std::string> externalReference;
    std::optional<std::string> transferPurpose;  // a `TransferPurpose`
    std::optional<std::string> distributionKind; // a `DividendMovementKind`
    std::optional<std::string> participantName;
    std::optional<std::string> dividendMovementID;
    std::optional<std::string> capitalContributionID;

    bool operator==(const LedgerTransaction&) const = default;
};
BOOST_DESCRIBE_STRUCT(LedgerTransaction, (),
                      (id, kind, date, note, createdAt, memberID, categoryID, legs, attachmentIDs, reversedBy,
                       reversalOf, originalTransactionID, externalReference, transferPurpose, distributionKind,
                       participantName, dividendMovementID, capitalContributionID))

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <boost/describe.hpp>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/PartialSnapshot.h"

/// A `LedgerLeg` as reports read it.
struct ReportLeg {
    std::string_view accountID;
    std::string_view currency;
    std::int64_t amountMinor = 0; // minor units of `currency`
};
BOOST_DESCRIBE_STRUCT(ReportLeg, (), (accountID, currency, amountMinor))

/// A `LedgerTransaction` as reports read it, a fifth of its size.
struct ReportEntry {
    using UnreadText = Json::Unread<std::string>;

    std::string_view id;
    std::string_view kind;
    std::string_view date;
    UnreadText note;
    UnreadText createdAt;
    UnreadText memberID;
    std::optional<std::string_view> categoryID;
    std::vector<ReportLeg> legs;
    Json::Unread<std::vector<std::string>> attachmentIDs;
    std::optional<UnreadText> reversedBy;
    std::optional<std::string_view> reversalOf;
    std::optional<std::string_view> originalTransactionID;
    std::optional<UnreadText> externalReference;
    std::optional<UnreadText> transferPurpose;
    std::optional<UnreadText> distributionKind;
    std::optional<UnreadText> participantName;
    std::optional<UnreadText> dividendMovementID;
    std::optional<UnreadText> capitalContributionID;
};
BOOST_DESCRIBE_STRUCT(ReportEntry, (),
                      (id, kind, date, note, createdAt, memberID, categoryID, legs, attachmentIDs, reversedBy,
                       reversalOf, originalTransactionID, externalReference, transferPurpose, distributionKind,
                       participantName, dividendMovementID, capitalContributionID))

/// The part of a snapshot that reports read. Its texts point into the JSON that `Json::view` read it from.
using ReportSource = PartialSnapshot<std::vector<ReportEntry>>;

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <boost/describe.hpp>

/// Who takes part in distributions. `ratioBps` prefills new allocations (10000 = 100 %).
struct DividendParticipant {
    std::string id;
    std::string name;
    std::optional<std::string> memberID;
    int ratioBps = 0;
    bool archived = false; // receives no new allocations

    bool operator==(const DividendParticipant&) const = default;
};
BOOST_DESCRIBE_STRUCT(DividendParticipant, (), (id, name, memberID, ratioBps, archived))

/// One ratio inside an allocation request, in basis points.
struct DividendShare {
    std::string participantID;
    int ratioBps = 0;

    bool operator==(const DividendShare&) const = default;
};
BOOST_DESCRIBE_STRUCT(DividendShare, (), (participantID, ratioBps))

/// One participant's part of a batch, with the ratio it was allocated by.
struct DividendLine {
    std::string participantID;
    std::string participantName;
    int ratioBps = 0;
    std::int64_t amountMinor = 0;

    bool operator==(const DividendLine&) const = default;
};
BOOST_DESCRIBE_STRUCT(DividendLine, (), (participantID, participantName, ratioBps, amountMinor))

/// One allocation; its lines add up to `amountMinor`.
struct DividendBatch {
    std::string id;
    std::string period; // label of the allocation period
    std::string currency;
    std::int64_t amountMinor = 0;
    std::string date;
    std::string createdAt;
    std::vector<DividendLine> lines;
    bool cancelled = false;
    std::optional<std::string> cancelledDate;

    bool operator==(const DividendBatch&) const = default;
};
BOOST_DESCRIBE_STRUCT(DividendBatch, (),
                      (id, period, currency, amountMinor, date, createdAt, lines, cancelled, cancelledDate))

/// The kinds of dividend movement, as they stand on the wire.
namespace DividendMovementKind {
inline constexpr std::string_view payment = "payment";
inline constexpr std::string_view advance = "advance";
inline constexpr std::string_view returning = "return";
inline constexpr std::string_view application = "application"; // an advance set against a line, without cash
inline constexpr std::string_view reversal = "reversal";
}

/// What settles an allocation.
struct DividendMovement {
    std::string id;
    std::string kind; // a `DividendMovementKind`
    std::string participantID;
    std::string currency;
    std::int64_t amountMinor = 0;
    std::string date;
    std::string createdAt;
    std::optional<std::string> batchID;
    std::optional<std::string> advanceID;
    std::optional<std::string> transactionID; // absent where no money moved
    std::optional<std::string> reversedBy;
    std::optional<std::string> reversalOf;

    bool operator==(const DividendMovement&) const = default;
};
BOOST_DESCRIBE_STRUCT(DividendMovement, (),
                      (id, kind, participantID, currency, amountMinor, date, createdAt, batchID, advanceID,
                       transactionID, reversedBy, reversalOf))

/// The dividend section of a company's books.
struct DividendState {
    int revision = 0; // sent back as `expectedRevision` by every command
    bool showInSidebar = false;
    std::vector<DividendParticipant> participants;
    std::vector<DividendBatch> batches;
    std::vector<DividendMovement> movements;
    std::optional<std::vector<std::string>> currencies;

    bool operator==(const DividendState&) const = default;
};
BOOST_DESCRIBE_STRUCT(DividendState, (), (revision, showInSidebar, participants, batches, movements, currencies))

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <boost/describe.hpp>

#include "LedgerCore/Domain/Records/DividendState.h"

/// The actions of a dividend command, as they stand on the wire.
namespace DividendAction {
inline constexpr std::string_view setParticipant = "setParticipant";
inline constexpr std::string_view setVisibility = "setVisibility";
inline constexpr std::string_view allocate = "allocate"; // divides a dividend among participants
inline constexpr std::string_view apply = "apply";       // sets an advance against an unpaid line, without cash
inline constexpr std::string_view cancelBatch = "cancelBatch";
inline constexpr std::string_view advance = "advance";
inline constexpr std::string_view pay = "pay";
inline constexpr std::string_view returnAdvance = "return";
inline constexpr std::string_view reverse = "reverse";
/// Makes the owners' shares in force on the day the default ratios of the participants.
inline constexpr std::string_view fillFromOwnership = "fillFromOwnership";
}

/// Body of every change to the dividend section. Fields that the action does not use stay unset.
struct DividendCommand {
    std::string action;       // a `DividendAction`
    int expectedRevision = 0; // of the section that its author saw
    std::string date;         // bookkeeping day
    std::string idempotencyKey;
    std::optional<std::string> participantID;
    std::optional<std::string> name;
    std::optional<std::string> memberID;
    std::optional<int> ratioBps; // a participant's default ratio
    std::optional<bool> archived;
    std::optional<bool> showInSidebar;
    std::optional<std::string> period; // label of the allocation period
    std::optional<std::string> currency;
    std::optional<std::int64_t> amountMinor; // minor units of `currency`
    std::optional<std::vector<DividendShare>> shares;
    std::optional<std::string> accountID;
    std::optional<std::string> batchID;
    std::optional<std::string> advanceID;
    std::optional<std::string> movementID;
    std::optional<std::string> note;
    std::optional<std::vector<std::string>> attachmentIDs;

    bool operator==(const DividendCommand&) const = default;
};
BOOST_DESCRIBE_STRUCT(DividendCommand, (),
                      (action, expectedRevision, date, idempotencyKey, participantID, name, memberID, ratioBps,
                       archived, showInSidebar, period, currency, amountMinor, shares, accountID, batchID, advanceID,
                       movementID, note, attachmentIDs))

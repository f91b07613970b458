#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <boost/describe.hpp>

#include "LedgerCore/Domain/Records/CapitalState.h"

/// The actions of a capital command, as they stand on the wire.
namespace CapitalAction {
inline constexpr std::string_view setParticipant = "setParticipant"; // creates or changes an owner
inline constexpr std::string_view contribute = "contribute";         // money received from an owner
inline constexpr std::string_view reverse = "reverse";               // undoes a contribution
inline constexpr std::string_view setBaseline = "setBaseline";       // what was paid in before these books
inline constexpr std::string_view setOwnership = "setOwnership";     // the owners' shares from a day on
inline constexpr std::string_view setVisibility = "setVisibility";   // whether the side bar lists the capital screen
}

/// Body of every change to the capital section. Fields that the action does not use stay unset.
struct CapitalCommand {
    std::string action;       // a `CapitalAction`
    int expectedRevision = 0; // of the section that its author saw
    std::string date;         // bookkeeping day; for "setOwnership" the day from which the shares hold
    std::string idempotencyKey;
    std::optional<std::string> participantID;
    std::optional<std::string> name;
    std::optional<std::string> memberID;
    std::optional<bool> archived;
    std::optional<bool> showInSidebar;
    std::optional<std::string> currency;
    std::optional<std::int64_t> amountMinor; // minor units of `currency`
    std::optional<std::string> accountID;    // the account that received the money
    std::optional<std::string> contributionID;
    std::optional<std::string> throughDate; // last day that a baseline covers
    std::optional<std::string> replacesID;  // the baseline superseded
    std::optional<std::vector<CapitalAmountLine>> entries;
    std::optional<std::vector<CapitalOwnershipLine>> ownership;
    std::optional<std::string> note;
    std::optional<std::vector<std::string>> attachmentIDs;

    bool operator==(const CapitalCommand&) const = default;
};
BOOST_DESCRIBE_STRUCT(CapitalCommand, (),
                      (action, expectedRevision, date, idempotencyKey, participantID, name, memberID, archived,
                       showInSidebar, currency, amountMinor, accountID, contributionID, throughDate, replacesID,
                       entries, ownership, note, attachmentIDs))

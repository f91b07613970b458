#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace LedgerService {

class Connection;

/// A one-time code on its way: mailed, then entered for a ticket, then gone with its completion.
struct StoredChallenge {
    std::string id;
    std::string purpose; // an `AccessPurpose`
    std::string email;   // in its normal form
    std::string locale;
    std::optional<std::string> userID;       // who resets the password
    std::optional<std::string> companyID;    // the one that invites
    std::optional<std::string> invitationID; // to join with
    std::string codeHash;
    int tries = 0;                         // of entering the code
    std::optional<std::string> ticketHash; // once the code was entered, which then is used up
    std::string expiresAt;                 // stamp

    /// Whether there is something to complete: codes for addresses that nobody is registered with lead nowhere.
    [[nodiscard]] bool leadsSomewhere() const { return userID || invitationID; }
};

namespace AccessChallengeRepository {

/// Nothing for one that has expired.
std::optional<StoredChallenge> find(Connection& connection, std::string_view id, std::string_view now);

void insert(Connection& connection, const StoredChallenge& challenge);

void countTry(Connection& connection, std::string_view id);

void writeTicket(Connection& connection, std::string_view id, std::string_view ticketHash, std::string_view expiresAt);

/// Ends every challenge that was made for the address.
void removeFor(Connection& connection, std::string_view email);

void removeExpired(Connection& connection, std::string_view now);

void removeAll(Connection& connection);

}

}

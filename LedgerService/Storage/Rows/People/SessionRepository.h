#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace LedgerService {

class Connection;

/// Whom a token speaks for.
struct SessionOwner {
    std::string companyID;
    std::string memberID;
};

/// The sign-ins in force, known by the hash of their token. Stamps are texts that sort in the order of time.
namespace SessionRepository {

void insert(Connection& connection, std::string_view tokenHash, const SessionOwner& owner, std::string_view now,
            std::string_view expiresAt);

/// Nothing for a token that is unknown, expired or revoked.
std::optional<SessionOwner> find(Connection& connection, std::string_view tokenHash, std::string_view now);

void revoke(Connection& connection, std::string_view tokenHash, std::string_view now);

/// Ends every token of the member.
void revokeAll(Connection& connection, const SessionOwner& owner, std::string_view now);

/// Ends every token of the person in all companies but the one with the hash `exceptHash`.
void revokeAllOfPerson(Connection& connection, std::string_view userID, std::string_view now,
                       std::string_view exceptHash = "");

void removeExpired(Connection& connection, std::string_view now);

/// Ends every token of everybody.
void removeAll(Connection& connection);

}

}

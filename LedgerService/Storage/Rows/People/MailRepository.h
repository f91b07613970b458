#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace LedgerService {

class Connection;

/// A letter that is not sent yet.
struct WaitingMail {
    std::string id;
    std::string recipient; // empty: nobody gets it
    std::string locale;
    std::string subject;
    std::string body;
    std::string createdAt; // stamps
    std::string expiresAt;
    std::string nextTryAt;
    int tries = 0;
};

namespace MailRepository {

int count(Connection& connection);

void insert(Connection& connection, const WaitingMail& mail);

/// The letter to be tried next, if its time has come.
std::optional<WaitingMail> due(Connection& connection, std::string_view now);

/// Takes the letter for one try, until that stamp; false when it is gone or somebody else has taken it.
bool take(Connection& connection, const WaitingMail& mail, std::string_view until);

void writeNextTry(Connection& connection, std::string_view id, std::string_view at);

void remove(Connection& connection, std::string_view id);

void removeExpired(Connection& connection, std::string_view now);

void removeAll(Connection& connection);

}

}

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace LedgerService {

class Connection;

/// A person, who may belong to any number of companies, also to none.
struct User {
    std::string id;
    std::string email; // as `normalized` gives it
    std::string name;
    std::string locale;                          // language of mails to the person
    std::optional<std::string> passwordHash;     // nothing: a password has to be set before the person can sign in
    std::string createdAt;                       // stamp
    std::optional<std::string> activatedAt;      // when the person first had a password
    std::optional<std::string> deactivatedAt;    // by the operator; the person can do nothing
    std::optional<std::string> currentCompanyID; // the company of the last sign-in

    /// Whether there is a password, and the operator lets the person in.
    [[nodiscard]] bool canSignIn() const { return passwordHash && !deactivatedAt; }
};

namespace UserRepository {

/// The form in which addresses are kept and compared: no surrounding blanks, ASCII letters in lower case.
std::string normalized(std::string_view email);

std::optional<User> find(Connection& connection, std::string_view userID);

std::optional<User> findByEmail(Connection& connection, std::string_view email);

/// Everyone, by address.
std::vector<User> all(Connection& connection);

void insert(Connection& connection, const User& user);

void writeCurrentCompany(Connection& connection, std::string_view userID, std::string_view companyID);

void writeName(Connection& connection, std::string_view userID, std::string_view name);
void writeLocale(Connection& connection, std::string_view userID, std::string_view locale);

/// Sets the password; `now` is kept as the person's activation when it is the first one.
void writePassword(Connection& connection, std::string_view userID, std::string_view passwordHash,
                   std::string_view now);

/// Takes the password away: a new one has to be set.
void clearPassword(Connection& connection, std::string_view userID);

/// Deactivates the person at that stamp, or lets the person in again with nothing.
void writeDeactivated(Connection& connection, std::string_view userID, const std::optional<std::string>& at);

}

}

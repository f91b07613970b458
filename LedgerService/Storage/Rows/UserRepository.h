#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace LedgerService {

class Connection;

/// A person who can sign in.
struct User {
    std::string id;
    std::string email; // as `normalized` gives it
    std::string passwordHash;
    std::optional<std::string> currentCompanyID; // the company of the last sign-in
};

namespace UserRepository {

/// The form in which addresses are kept and compared: no surrounding blanks, ASCII letters in lower case.
std::string normalized(std::string_view email);

std::optional<User> findByEmail(Connection& connection, std::string_view email);

void insert(Connection& connection, const User& user, std::string_view createdAt);

void writeCurrentCompany(Connection& connection, std::string_view userID, std::string_view companyID);

void writePasswordHash(Connection& connection, std::string_view userID, std::string_view passwordHash);

}

}

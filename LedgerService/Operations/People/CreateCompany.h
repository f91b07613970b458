#pragma once

#include <expected>
#include <optional>
#include <string>
#include <vector>

namespace LedgerService {

class Connection;

/// Founding a company with its owner, as an operator does it for the first one.
namespace CreateCompany {

struct Order {
    std::string companyName;
    std::vector<std::string> countries;  // ISO 3166 codes
    std::optional<std::string> timeZone; // IANA name; nothing: that of the machine
    std::string ownerName;
    std::string ownerEmail;
    std::string password;
    std::string locale; // of the owner's interface
};

/// Writes the company and gives its id, or says in words why not.
std::expected<std::string, std::string> carryOut(Connection& connection, const Order& order);

/// Asks for the password twice on a terminal, or takes one line of standard input otherwise.
std::expected<std::string, std::string> readPassword();

}

}

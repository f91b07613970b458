#pragma once

#include <expected>
#include <optional>
#include <string>
#include <vector>

namespace LedgerService {

class Connection;

/// What the operator does to the companies and the people of the service. Commands open their own transaction, may run
/// beside the service, and say in words why not.
namespace ManagePeople {

using Refused = std::optional<std::string>;

/// A line for each company that is no demonstration, oldest first: id, state, day of founding, name, owners' addresses.
std::vector<std::string> companies(Connection& connection);

/// Opens the company, or keeps its members out, and writes to its owners.
Refused approve(Connection& connection, const std::string& companyID);
Refused reject(Connection& connection, const std::string& companyID);

/// Has the company keep its books by the days of this zone from now on.
Refused setTimeZone(Connection& connection, const std::string& companyID, const std::string& zone);

/// A line for each person: address, state, day of registration, name.
std::vector<std::string> users(Connection& connection);

/// Ends all tokens of the person and the password with them, or sets a new one.
Refused reset(Connection& connection, const std::string& email, const std::optional<std::string>& newPassword);

/// Keeps the person out of all companies and ends all tokens, or lets the person in again.
Refused deactivate(Connection& connection, const std::string& email);
Refused reactivate(Connection& connection, const std::string& email);

}

}

#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/Account.h"

namespace LedgerService {

class Connection;

namespace AccountRepository {

/// The account with its balances, or nothing when the company has no such account.
std::optional<Account> find(Connection& connection, std::string_view companyID, std::string_view accountID);

/// The company's accounts with their balances, in the order of their creation.
std::vector<Account> all(Connection& connection, std::string_view companyID);

/// Adds the account after the company's others; its balances are not written.
void insert(Connection& connection, std::string_view companyID, const Account& account);

/// Writes the account over what stands under its id; its balances and its place stay.
void update(Connection& connection, std::string_view companyID, const Account& account);

void writeBalance(Connection& connection, std::string_view companyID, std::string_view accountID,
                  std::string_view currency, std::int64_t amountMinor);

}

}

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace LedgerService {

class Connection;

/// The demonstration companies that belong to one visitor each.
namespace DemoVisitRepository {

/// The demonstration company becomes that of a visitor who came at this stamp.
void insert(Connection& connection, std::string_view companyID, std::string_view stamp);

/// How many there are.
int count(Connection& connection);

/// Those whose visitor came before this stamp, oldest first.
std::vector<std::string> before(Connection& connection, std::string_view stamp);

/// Removes everything that is kept of such a company, and those of its people who belong
/// to no other company. Files of receipts stay until they are swept.
/// Expects a writing transaction, which is not kept when this says that there is no such company: another process was
/// first.
[[nodiscard]] bool remove(Connection& connection, std::string_view companyID);

}

}

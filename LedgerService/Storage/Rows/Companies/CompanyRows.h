#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace LedgerService {

class Connection;

/// All that a database keeps of one company, table by table, whatever the rows mean.
namespace CompanyRows {

/// The database beside the connection's own that rows are copied from: `Connection::attach`.
inline constexpr std::string_view given = "given";

/// The tables whose rows belong to a company each, by their column `company_id`.
std::vector<std::string> tables(Connection& connection);

/// Those of them that stay where they are when a company is copied: what people are signed in by, and what they are
/// about to prove.
bool stays(std::string_view table);

/// The ids of the companies in the given database.
std::vector<std::string> givenIDs(Connection& connection);

/// Why the people of the company in the given database cannot be people of this one, in words.
std::vector<std::string> collisions(Connection& connection, const std::string& companyID);

/// Copies the company with its people, its books and its audit trail from the given database, which has the same
/// schema; expects a writing transaction and a company that this database does not know. People that both know stay as
/// they are here.
void copyGiven(Connection& connection, const std::string& companyID);

}

}

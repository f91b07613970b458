#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace LedgerService {

class Connection;

/// Whether the audit trail is what it was when it was written, and the books are what it tells.
namespace AuditCheck {

/// Everything in which the records of a scope do not follow from each other, in words.
std::vector<std::string> brokenChain(Connection& connection, std::string_view scope);

/// Every entry of the company that has no record, or is not what its record tells, and every record of an entry that is
/// not there, in words.
std::vector<std::string> brokenEntries(Connection& connection, std::string_view companyID);

}

}

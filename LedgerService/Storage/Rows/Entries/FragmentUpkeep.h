#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace LedgerService {

class Connection;

/// Fragments say again what rows say. Here they are made from the rows, and compared with them.
namespace FragmentUpkeep {

/// Makes the fragments of the companies that have none in this program's shape; expects a writing transaction.
void renewOutdated(Connection& connection);

/// Whether `renewOutdated` has something to do.
bool isNeeded(Connection& connection);

/// Everything in which the company's fragments and their counts differ from its rows, in words.
std::vector<std::string> broken(Connection& connection, std::string_view companyID);

}

}

#pragma once

#include <string>
#include <vector>

namespace LedgerService {

class Connection;

/// Checking all books of a database.
namespace Verify {

struct Report {
    std::size_t companies = 0;
    std::size_t entries = 0;
    std::vector<std::string> problems; // in words, with the company's id
};

/// Recomputes every balance from the legs and tests all that holds in sound books, as one state of the database.
Report run(Connection& connection);

}

}

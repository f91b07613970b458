#pragma once

#include <expected>
#include <string>
#include <vector>

namespace LedgerService {

class Connection;

/// Checking all books of a database.
namespace Verify {

struct Report {
    std::size_t companies = 0;
    std::size_t entries = 0;
    std::size_t receipts = 0;          // with a file
    std::vector<std::string> problems; // in words, with the company's id
};

/// Checks the pages of a file, the schema, the rows, the files of receipts, the audit trail with its seals and all that
/// holds in sound books, as one state of the database. `files`: what receipts and seals are kept beside. What is wrong
/// in one place does not keep the others from being checked.
Report run(Connection& connection, const std::string& files);

/// The same for one of the companies, as the connection's transaction has it.
Report company(Connection& connection, const std::string& files, const std::string& companyID);

/// The same for the database of this name, which is read and never changed; in words when it holds no books of this
/// program. `files` is named for a database that a server keeps.
std::expected<Report, std::string> database(const std::string& name, const std::string& files = {});

}

}

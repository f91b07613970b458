#pragma once

#include <string>
#include <vector>

namespace LedgerService {

class Connection;

namespace SchemaComparison {

/// Tables, columns and indexes that the database lacks, has beside those of this program or has in another form, in
/// words. Nothing for a database whose schema is this program's newest.
std::vector<std::string> differences(Connection& connection);

}

}

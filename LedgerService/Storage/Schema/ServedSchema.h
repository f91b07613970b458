#pragma once

#include <map>
#include <string>

namespace LedgerService {

class Connection;

/// The schema of a database that a server keeps, as texts that can be compared: the server writes statements down in a
/// form of its own.
namespace ServedSchema {

/// What each part consists of, by "table entries"; blanks, brackets and names of types that mean the same are left out.
using Objects = std::map<std::string, std::string>;

/// As this program makes it.
Objects expected(Connection& connection);

/// As it is.
Objects found(Connection& connection);

}

}

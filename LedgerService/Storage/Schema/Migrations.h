#pragma once

#include <expected>
#include <optional>
#include <string>

namespace LedgerService {

class Connection;

/// The schema's history: numbered steps, forward only. A step that has been released is never changed.
namespace Migrations {

/// The newest step that this program knows.
int newest();

/// The newest step that the database has taken, 0 for an empty one; in words when it is no database of this program.
std::expected<int, std::string> version(Connection& connection);

/// Takes the missing steps, all in one transaction. Refuses, in words, a database that a newer program has written.
std::optional<std::string> apply(Connection& connection);

}

}

#pragma once

#include <optional>
#include <string>

namespace LedgerService {

class Connection;

/// The schema's history: numbered steps, forward only. A step that has been released is never changed.
namespace Migrations {

/// The newest step that this program knows.
int newest();

/// Takes the missing steps, all in one transaction. Refuses, in words, a database that a newer program has written.
std::optional<std::string> apply(Connection& connection);

}

}

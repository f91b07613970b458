#pragma once

#include <optional>
#include <string>

namespace LedgerService {

namespace Backup {

/// Copies one consistent state of the books in `file` to the new file `to`, safely on the disk when this returns, or
/// says in words why not. What was there before under that name stays.
std::optional<std::string> take(const std::string& file, const std::string& to);

}

}

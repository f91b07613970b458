#pragma once

#include <optional>
#include <string>

namespace LedgerService {

namespace Restore {

/// Puts what the archive holds in place as the database `file`, with the receipts and seals beside it, after all of it
/// has been verified; or says in words why not, and then nothing is there. Only an empty place is taken.
std::optional<std::string> carryOut(const std::string& archive, const std::string& file);

}

}

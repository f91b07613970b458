#pragma once

#include <optional>
#include <string>

namespace LedgerService {

/// What a command tells the audit trail of itself. Who gave it, when and from where is known without it, and so are the
/// entries that it records.
struct CommandNote {
    std::optional<std::string> record; // what it was done to; unset: what the path names
    std::optional<std::string> before; // how that stood, as JSON
    std::optional<std::string> after;  // how it stands now, as JSON; unset: the command as it was given
    bool isRepetition = false;         // nothing was done: it was carried out before
};

}

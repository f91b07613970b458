#pragma once

#include <optional>
#include <string>
#include <vector>

namespace LedgerService {

/// What a command tells the audit trail of itself. Who gave it, when and from where is known without it.
struct CommandNote {
    struct Entry {
        std::string id;
        std::string digest; // of its JSON as it was recorded
    };

    /// A member's rights as they followed from the command.
    struct Rights {
        std::string memberID;
        std::string before; // JSON
        std::string after;
    };

    std::vector<Entry> entries = {};        // that the command recorded
    std::vector<Rights> rights = {};        // that changed with what the command was given for
    std::optional<std::string> record = {}; // what it was done to; unset: what the path names
    std::optional<std::string> before = {}; // how that stood, as JSON
    std::optional<std::string> after = {};  // how it stands now, as JSON; unset: the command as it was given
    bool isRepetition = false;              // nothing was done: it was carried out before
    bool isPrivate = false;                 // the member's own, no part of the books: nobody else is told of it
    bool isToldElsewhere = false;           // it concerned other companies, whose trails tell of it
};

}

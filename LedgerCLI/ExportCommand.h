#pragma once

#include "LedgerCLI/CommandAnswer.h"
#include "LedgerCore/Domain/Exports/LedgerExportSelection.h"

namespace LedgerCLI {

/// The files that the window's exports write, byte for byte.
namespace ExportCommand {

/// Without a path the file bears its own name and lies in the working directory.
struct Target {
    std::string path;
    std::string today; // names capital and dividend files
};

/// A scope without kinds takes every kind of entry.
CommandResult ledger(const LedgerSnapshot& snapshot, LedgerExportScope scope, const Target& target,
                     std::string_view locale);
CommandResult capital(const LedgerSnapshot& snapshot, const Target& target, std::string_view locale);
CommandResult dividends(const LedgerSnapshot& snapshot, const Target& target, std::string_view locale);

}

}

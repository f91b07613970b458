#pragma once

#include <expected>
#include <optional>
#include <string>
#include <string_view>

#include "LedgerCore/Domain/Records/LedgerTransaction.h"
#include "LedgerCore/Domain/Records/Requests/TransactionInput.h"
#include "LedgerService/Commands/CommandAct.h"
#include "LedgerService/Refusal.h"

namespace LedgerService {

/// Recording entries: reads just the rows that a command names, has the books decide and writes what they decided.
namespace EntryCommands {

using Act = CommandAct;

/// A command whose key is the identifier of a row of an import becomes the entry of that id. When somebody else has
/// sent the row already, the entry that it became is answered, and nothing is recorded. A command whose key is that of
/// a template's due day settles the day, and records nothing when an entry stands for it. The member's
/// draft under the key goes with the recording.
std::expected<LedgerTransaction, Refusal> post(const Act& act, const TransactionInput& input);

/// The entry of a due day that the command, well shaped, would be answered with instead of recording one.
std::optional<std::string> standingFor(const Act& act, const TransactionInput& input);

std::expected<LedgerTransaction, Refusal> reverse(const Act& act, std::string_view originalID, const Reversal& command);

}

}

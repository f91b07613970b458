#pragma once

#include <expected>
#include <string>
#include <string_view>

#include "LedgerCore/Domain/Records/LedgerTransaction.h"
#include "LedgerCore/Domain/Records/Member.h"
#include "LedgerCore/Domain/Records/TransactionInput.h"
#include "LedgerService/Refusal.h"

namespace LedgerService {

class Connection;

/// Recording entries: reads just the rows that a command names, has the books decide and writes what they decided.
/// Expects a writing transaction; with a refusal nothing was written.
namespace EntryCommands {

struct Act {
    Connection& connection;
    const std::string& companyID;
    const Member& member;
    const std::string& today; // the company's day
    const std::string& now;   // stamp
};

/// A command whose key is the identifier of a row of an import becomes the entry of that id. When somebody else has
/// sent the row already, the entry that it became is answered, and nothing is recorded.
std::expected<LedgerTransaction, Refusal> post(const Act& act, const TransactionInput& input);

std::expected<LedgerTransaction, Refusal> reverse(const Act& act, std::string_view originalID, const Reversal& command);

}

}

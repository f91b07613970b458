#pragma once

#include <expected>

#include "LedgerCore/Domain/Records/Requests/DividendCommand.h"
#include "LedgerService/Commands/CommandAct.h"
#include "LedgerService/Refusal.h"

namespace LedgerService {

/// Changes of the dividend section with the entries that book their money.
namespace DividendSubmission {

/// Expects a writing transaction; with a refusal nothing was written.
std::expected<void, Refusal> submit(const CommandAct& act, const DividendCommand& command);

}

}

#pragma once

#include <expected>

#include "LedgerCore/Domain/Records/Requests/CapitalCommand.h"
#include "LedgerService/Commands/CommandAct.h"
#include "LedgerService/Refusal.h"

namespace LedgerService {

/// Changes of the capital section with the entries that book their money.
namespace CapitalSubmission {

/// Expects a writing transaction; with a refusal nothing was written.
std::expected<void, Refusal> submit(const CommandAct& act, const CapitalCommand& command);

}

}

#pragma once

#include <expected>

#include "LedgerCore/Domain/Settings/FinancialSettingsCommand.h"
#include "LedgerService/Commands/CommandAct.h"
#include "LedgerService/Refusal.h"

namespace LedgerService {

/// Changing how a company keeps its books.
namespace FinancialSettingsCommands {

/// The settings after the command.
std::expected<FinancialSettings, Refusal> carryOut(const CommandAct& act, const FinancialSettingsCommand& command);

}

}

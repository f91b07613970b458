#pragma once

#include <optional>

#include "LedgerCore/Domain/Records/Requests/MemberCommands.h"
#include "LedgerCore/Domain/Records/Requests/TransactionColorSelection.h"
#include "LedgerService/Commands/CommandAct.h"
#include "LedgerService/Refusal.h"

namespace LedgerService {

/// How a company presents itself to its members. All expect a writing transaction.
namespace CompanyProfile {

/// The name and the countries are the company's; the locale is the one in which the acting member is written to.
std::optional<Refusal> change(const CommandAct& act, const SettingsUpdate& update);

std::optional<Refusal> chooseColor(const CommandAct& act, const TransactionColorSelection& selection);

}

}

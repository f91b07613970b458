#pragma once

#include <expected>
#include <string_view>

#include "LedgerCore/Domain/Records/Account.h"
#include "LedgerService/Commands/CommandAct.h"
#include "LedgerService/Refusal.h"

namespace LedgerService {

/// Making and changing accounts, with the rights that follow.
namespace AccountCommands {

/// The account; one that is exactly what the command asks for is taken for the outcome of an earlier sending.
std::expected<Account, Refusal> create(const CommandAct& act, const AccountCreate& command);

std::expected<Account, Refusal> update(const CommandAct& act, std::string_view accountID, const AccountUpdate& command);

}

}

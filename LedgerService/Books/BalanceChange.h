#pragma once

#include <expected>
#include <span>
#include <vector>

#include "LedgerCore/Domain/Records/Account.h"
#include "LedgerCore/Domain/Records/LedgerTransaction.h"
#include "LedgerService/Books/EntryChange.h"
#include "LedgerService/Refusal.h"

namespace LedgerService {

/// The balances once the legs are added to what the accounts hold, one for each account and currency in the order of
/// the legs. Refused when an employee fund would be drawn below zero or a balance would leave the supported range.
std::expected<std::vector<BalanceAfter>, Refusal> balancesAfter(std::span<const LedgerLeg> legs,
                                                                std::span<const Account* const> accounts);

}

#pragma once

#include <cstddef>
#include <cstdint>
#include <expected>
#include <span>
#include <string>
#include <vector>

#include "LedgerCore/Domain/Records/Account.h"
#include "LedgerCore/Domain/Records/LedgerTransaction.h"

/// What an account holds in one currency once an entry is recorded.
struct BalanceAfter {
    std::string accountID;
    std::string currency;
    std::int64_t balanceMinor = 0;

    bool operator==(const BalanceAfter&) const = default;
};

/// What movements make of the balances, and which balances cannot be.
namespace BalanceRules {

enum class Reason {
    insufficientFunds, // an employee's account would be drawn below zero
    balanceLimit       // the balance would leave the supported range
};

struct Refusal {
    std::size_t leg = 0; // the first on the account and currency concerned
    Reason reason = Reason::balanceLimit;
};

/// The balances once the legs are added to what the accounts hold, one for each account and currency in the order of
/// the legs. Legs on accounts that are not among `accounts` are left out: nobody here knows what those hold.
std::expected<std::vector<BalanceAfter>, Refusal> after(std::span<const LedgerLeg> legs,
                                                        std::span<const Account* const> accounts);

}

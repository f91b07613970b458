#include "LedgerService/Books/BalanceChange.h"

#include <algorithm>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerService/Books/BookRefusal.h"

namespace LedgerService {

namespace {

const Account& accountOf(const LedgerLeg& leg, std::span<const Account* const> accounts)
{
    const auto found = std::ranges::find(accounts, leg.accountID, &Account::id);
    require(found != accounts.end(), "the accounts of all legs are loaded");
    return **found;
}

BalanceAfter& balanceOf(const LedgerLeg& leg, const Account& account, std::vector<BalanceAfter>& balances)
{
    const auto known = std::ranges::find_if(balances, [&](const BalanceAfter& each) {
        return each.accountID == leg.accountID && each.currency == leg.currency;
    });
    if (known != balances.end())
        return *known;
    return balances.emplace_back(leg.accountID, leg.currency, account.balance(leg.currency));
}

}

std::expected<std::vector<BalanceAfter>, Refusal> balancesAfter(std::span<const LedgerLeg> legs,
                                                                std::span<const Account* const> accounts)
{
    std::vector<BalanceAfter> balances;
    for (const auto& leg : legs) {
        auto& balance = balanceOf(leg, accountOf(leg, accounts), balances);
        const auto sum = Money::add(balance.balanceMinor, leg.amountMinor);
        if (!sum)
            return std::unexpected(BookRefusal::balanceLimit());
        balance.balanceMinor = *sum;
    }
    for (const auto& balance : balances) {
        const auto& account = **std::ranges::find(accounts, balance.accountID, &Account::id);
        const bool drawn = balance.balanceMinor < account.balance(balance.currency);
        if (account.isEmployeeFund() && drawn && balance.balanceMinor < 0)
            return std::unexpected(BookRefusal::insufficientFunds());
        if (!Money::isWithinLimit(balance.balanceMinor))
            return std::unexpected(BookRefusal::balanceLimit());
    }
    return balances;
}

}

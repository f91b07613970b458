#include "LedgerCore/Domain/Entries/BalanceRules.h"

#include <algorithm>
#include <optional>

#include "LedgerCore/Domain/Money/Money.h"

namespace {

using BalanceRules::Reason;

/// One account and currency that the legs touch.
struct Place {
    const Account* account = nullptr;
    std::size_t leg = 0; // the first
    BalanceAfter balance;
};

const Account* accountOf(const LedgerLeg& leg, std::span<const Account* const> accounts)
{
    const auto found = std::ranges::find(accounts, leg.accountID, &Account::id);
    return found == accounts.end() ? nullptr : *found;
}

Place& placeOf(std::size_t at, const LedgerLeg& leg, const Account& account, std::vector<Place>& places)
{
    const auto known = std::ranges::find_if(
        places, [&](const Place& each) { return each.account == &account && each.balance.currency == leg.currency; });
    if (known != places.end())
        return *known;
    return places.emplace_back(&account, at, BalanceAfter{leg.accountID, leg.currency, account.balance(leg.currency)});
}

std::optional<Reason> whyNot(const Place& place)
{
    const auto after = place.balance.balanceMinor;
    const bool drawn = after < place.account->balance(place.balance.currency);
    if (place.account->isEmployeeFund() && drawn && after < 0)
        return Reason::insufficientFunds;
    return Money::isWithinLimit(after) ? std::nullopt : std::optional{Reason::balanceLimit};
}

}

std::expected<std::vector<BalanceAfter>, BalanceRules::Refusal>
BalanceRules::after(std::span<const LedgerLeg> legs, std::span<const Account* const> accounts)
{
    std::vector<Place> places;
    places.reserve(legs.size());
    for (std::size_t at = 0; at < legs.size(); ++at) {
        const auto* const account = accountOf(legs[at], accounts);
        if (!account)
            continue;
        auto& balance = placeOf(at, legs[at], *account, places).balance;
        const auto sum = Money::add(balance.balanceMinor, legs[at].amountMinor);
        if (!sum)
            return std::unexpected(Refusal{at, Reason::balanceLimit});
        balance.balanceMinor = *sum;
    }
    std::vector<BalanceAfter> balances;
    balances.reserve(places.size());
    for (auto& place : places) {
        if (const auto reason = whyNot(place))
            return std::unexpected(Refusal{place.leg, *reason});
        balances.push_back(std::move(place.balance));
    }
    return balances;
}

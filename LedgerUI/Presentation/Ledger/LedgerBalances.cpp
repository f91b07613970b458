#include "LedgerUI/Presentation/Ledger/LedgerBalances.h"

#include <algorithm>
#include <map>
#include <optional>

#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Ledger/LedgerWords.h"

namespace {

constexpr std::string_view groupKeys[] = {"balances.company", "balances.employee", "balances.refund",
                                          "balances.archived"};

std::string_view groupOf(const Account& account)
{
    if (account.archived)
        return groupKeys[3];
    if (account.hasPurpose(AccountPurpose::refund))
        return groupKeys[2];
    return account.isRestricted() ? groupKeys[1] : groupKeys[0];
}

bool isEmpty(const Account& account)
{
    return std::ranges::all_of(account.balances, [](const auto& balance) { return balance.second == 0; });
}

/// A balance has no sign unless it is below zero.
LedgerAmount balance(std::int64_t minor, const std::string& currency, std::string_view locale)
{
    return {QString::fromStdString(currency), QString::fromStdString(Money::formatDigits(minor, currency, locale)),
            LedgerAmount::Tone::plain};
}

/// The currencies that an account holds, then any others that still have money on it.
std::vector<std::string> currenciesOf(const Account& account)
{
    auto codes = account.currencies;
    for (const auto& [code, minor] : account.balances) {
        if (minor != 0 && !account.holds(code))
            codes.push_back(code);
    }
    return codes;
}

using Sums = std::map<std::string, std::optional<std::int64_t>, std::less<>>;

LedgerAccountBalance accountBalance(const Account& account, std::string_view locale, Sums& sums)
{
    LedgerAccountBalance result{account.id, QString::fromStdString(account.name), {}};
    for (const auto& code : currenciesOf(account)) {
        const auto minor = account.balance(code);
        result.amounts.push_back(balance(minor, code, locale));
        auto& sum = sums.try_emplace(code, 0).first->second;
        if (sum)
            sum = Money::add(*sum, minor);
    }
    return result;
}

std::vector<LedgerAmount> totalsOf(const Sums& sums, std::string_view locale)
{
    std::vector<LedgerAmount> totals;
    const auto append = [&](const std::string& code, const std::optional<std::int64_t>& sum) {
        if (sum)
            totals.push_back(balance(*sum, code, locale));
    };
    for (const auto& currency : CurrencyInfo::supported()) {
        if (const auto found = sums.find(currency.code); found != sums.end())
            append(found->first, found->second);
    }
    for (const auto& [code, sum] : sums) {
        if (!CurrencyInfo::isSupported(code))
            append(code, sum);
    }
    return totals;
}

}

LedgerBalances balancesOf(const LedgerSnapshot& snapshot, std::string_view locale)
{
    LedgerBalances result;
    Sums sums;
    for (const auto key : groupKeys) {
        LedgerBalanceGroup group{LedgerWords::text(key, locale), {}};
        for (const auto& account : snapshot.accounts) {
            if (groupOf(account) == key && !(account.archived && isEmpty(account)))
                group.accounts.push_back(accountBalance(account, locale, sums));
        }
        if (!group.accounts.empty())
            result.groups.push_back(std::move(group));
    }
    result.totals = totalsOf(sums, locale);
    return result;
}

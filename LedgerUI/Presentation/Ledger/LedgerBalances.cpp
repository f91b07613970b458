#include "LedgerUI/Presentation/Ledger/LedgerBalances.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Ledger/LedgerWords.h"
#include "LedgerUI/Presentation/Text/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"

namespace {

constexpr std::string_view groupKeys[] = {"balances.company", "balances.employee", "balances.refund",
                                          "balances.archived"};

using Minor = std::optional<std::int64_t>; // unset where it is not known

std::string_view groupOf(const Account& account)
{
    if (account.archived)
        return groupKeys[3];
    if (account.hasPurpose(AccountPurpose::refund))
        return groupKeys[2];
    return account.isRestricted() ? groupKeys[1] : groupKeys[0];
}

void add(Minor& sum, const Minor& amount)
{
    sum = sum && amount ? Money::add(*sum, *amount) : std::nullopt;
}

/// The sums of all visible movements by account and currency: until the end of a day, and altogether.
class Movements {
public:
    Movements(const LedgerBook& book, std::uint32_t lastDay) : m_book(book)
    {
        m_sums.resize(book.accounts().size() * book.currencies().size());
        for (std::uint32_t at = 0; at < book.size(); ++at) {
            const bool counts = book.entry(at).day <= lastDay;
            for (const auto& leg : book.legs(at)) {
                auto& sum = m_sums[leg.account * book.currencies().size() + leg.currency];
                add(sum.all, leg.amountMinor);
                if (counts)
                    add(sum.until, leg.amountMinor);
                sum.isLater = sum.isLater || !counts;
            }
        }
    }

    [[nodiscard]] Minor balance(const Account& account, const std::string& currency) const
    {
        const auto now = account.balance(currency);
        const auto accountAt = m_book.accounts().find(account.id);
        const auto currencyAt = m_book.currencies().find(currency);
        if (!accountAt || !currencyAt)
            return now;
        const auto& sum = m_sums[*accountAt * m_book.currencies().size() + *currencyAt];
        if (!sum.isLater)
            return now;
        return sum.all == now ? sum.until : std::nullopt;
    }

private:
    struct Sum {
        Minor until = 0;
        Minor all = 0;
        bool isLater = false; // some of it is after the day
    };

    const LedgerBook& m_book;
    std::vector<Sum> m_sums;
};

MoneyText written(const Minor& minor, const std::string& currency, std::string_view locale)
{
    return minor ? balanceText(*minor, currency, locale) : unknownMoney(currency);
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

using Sums = std::map<std::string, Minor, std::less<>>;

std::vector<MoneyText> totalsOf(const Sums& sums, std::string_view locale)
{
    std::vector<MoneyText> totals;
    for (const auto& currency : CurrencyInfo::supported()) {
        if (const auto found = sums.find(currency.code); found != sums.end())
            totals.push_back(written(found->second, found->first, locale));
    }
    for (const auto& [code, sum] : sums) {
        if (!CurrencyInfo::isSupported(code))
            totals.push_back(written(sum, code, locale));
    }
    return totals;
}

/// Adds what is on the account to the group and to the sums; an archived one only while something is on it.
void addAccount(LedgerBalanceGroup& group, const Account& account, const Movements& movements, std::string_view locale,
                Sums& sums)
{
    std::vector<std::pair<std::string, Minor>> balances;
    for (const auto& code : currenciesOf(account))
        balances.emplace_back(code, movements.balance(account, code));
    const bool isEmpty = std::ranges::all_of(balances, [](const auto& each) { return each.second == 0; });
    if (account.archived && isEmpty)
        return;
    LedgerAccountBalance shown{account.id, QString::fromStdString(account.name), {}};
    for (const auto& [code, minor] : balances) {
        shown.amounts.push_back(written(minor, code, locale));
        add(sums.try_emplace(code, 0).first->second, minor);
    }
    group.accounts.push_back(std::move(shown));
}

}

std::chrono::year_month_day balanceDay(const LedgerBook& book, const Period& period, std::chrono::year_month_day today)
{
    const auto last = book.counts().horizon(today);
    return period.isAllTime() ? last : std::min(period.lastDay(), last);
}

LedgerBalances balancesOn(const LedgerBook& book, std::chrono::year_month_day day)
{
    const auto& locale = book.locale();
    const Movements movements{book, dayNumber(day)};
    LedgerBalances result;
    result.day =
        wordIn(locale, ledgerWords(), "balances.on", {DayText::longDay(LedgerDay::format(day), locale).toStdString()});
    Sums sums;
    for (const auto key : groupKeys) {
        LedgerBalanceGroup group{wordIn(locale, ledgerWords(), key), {}};
        for (const auto& account : book.snapshot().accounts) {
            if (groupOf(account) == key)
                addAccount(group, account, movements, locale, sums);
        }
        if (!group.accounts.empty())
            result.groups.push_back(std::move(group));
    }
    result.totals = totalsOf(sums, locale);
    const bool isKnown = std::ranges::all_of(sums, [](const auto& each) { return each.second.has_value(); });
    if (!isKnown)
        result.hint = wordIn(locale, ledgerWords(), "balances.unknown");
    return result;
}

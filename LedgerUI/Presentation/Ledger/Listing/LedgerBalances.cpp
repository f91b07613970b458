#include "LedgerUI/Presentation/Ledger/Listing/LedgerBalances.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Ledger/AccountGroup.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Values/MoneySums.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

using Minor = MoneySums::Minor;

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

/// Adds what is on the account to the group and to the sums; an archived one only while something is on it.
void addAccount(LedgerBalanceGroup& group, const Account& account, const Movements& movements, std::string_view locale,
                MoneySums& sums)
{
    std::vector<std::pair<std::string, Minor>> balances;
    for (const auto& code : currenciesOf(account))
        balances.emplace_back(code, movements.balance(account, code));
    const bool isEmpty = std::ranges::all_of(balances, [](const auto& each) { return each.second == 0; });
    if (account.archived && isEmpty)
        return;
    LedgerAccountBalance shown{account.id, QString::fromStdString(account.name), {}};
    for (const auto& [code, minor] : balances) {
        shown.amounts.push_back(balanceText(minor, code, locale));
        sums.add(code, minor);
    }
    group.accounts.push_back(std::move(shown));
}

}

std::vector<std::string> currenciesOf(const Account& account)
{
    auto codes = account.currencies;
    for (const auto& [code, minor] : account.balances) {
        if (minor != 0 && !account.holds(code))
            codes.push_back(code);
    }
    return codes;
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
    MoneySums sums;
    for (const auto each : accountGroups) {
        LedgerBalanceGroup group{accountGroupTitle(each, locale), {}};
        for (const auto& account : book.snapshot().accounts) {
            if (accountGroupOf(account) == each)
                addAccount(group, account, movements, locale, sums);
        }
        if (!group.accounts.empty())
            result.groups.push_back(std::move(group));
    }
    result.totals = sums.texts(locale);
    if (!sums.isKnown())
        result.hint = wordIn(locale, ledgerWords(), "balances.unknown");
    return result;
}

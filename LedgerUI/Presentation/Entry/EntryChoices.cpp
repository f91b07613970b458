#include "LedgerUI/Presentation/Entry/EntryChoices.h"

#include <algorithm>
#include <array>
#include <iterator>

#include <QStringList>

#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

using EntryChoices::Group;

constexpr std::array groups{Group::company, Group::employee, Group::refund};

Group groupOf(const Account& account)
{
    if (account.hasPurpose(AccountPurpose::refund))
        return Group::refund;
    return account.isRestricted() ? Group::employee : Group::company;
}

QString headOf(Group group, std::string_view locale)
{
    switch (group) {
    case Group::company:
        return wordIn(locale, ledgerWords(), "balances.company");
    case Group::employee:
        return wordIn(locale, ledgerWords(), "balances.employee");
    case Group::refund:
        return wordIn(locale, ledgerWords(), "balances.refund");
    }
    return {};
}

QString glyphOf(Group group)
{
    switch (group) {
    case Group::company:
        return QStringLiteral("bank");
    case Group::employee:
        return QStringLiteral("person");
    case Group::refund:
        return QStringLiteral("arrow-return-left");
    }
    return {};
}

}

/// The number of an amount and its code never part at the end of a line.
QString EntryChoices::money(std::int64_t minor, std::string_view currency, std::string_view locale)
{
    return qString(Money::format(minor, currency, locale)).replace(QLatin1Char{' '}, QChar::Nbsp);
}

AccountChoice EntryChoices::account(const std::string& id, const std::string& name, Group group,
                                    std::string_view locale)
{
    return {id, qString(name), {}, headOf(group, locale), glyphOf(group)};
}

AccountChoice EntryChoices::account(const Account& held, std::string_view locale)
{
    auto choice = account(held.id, held.name, groupOf(held), locale);
    QStringList balances;
    for (const auto& code : held.currencies)
        balances << money(held.balance(code), code, locale);
    choice.balances = balances.join(QStringLiteral("   "));
    return choice;
}

std::vector<AccountChoice> EntryChoices::grouped(const std::vector<AccountChoice>& choices, std::string_view locale)
{
    std::vector<AccountChoice> together;
    for (const auto group : groups)
        std::ranges::copy_if(choices, std::back_inserter(together),
                             [head = headOf(group, locale)](const auto& each) { return each.group == head; });
    return together;
}

std::vector<CurrencyChoice> EntryChoices::currencies(const std::vector<std::string>& codes, std::string_view locale,
                                                     std::string_view without)
{
    std::vector<CurrencyChoice> rows;
    for (const auto& currency : CurrencyInfo::supported()) {
        if (currency.code != without && std::ranges::find(codes, currency.code) != codes.end())
            rows.push_back({currency.code, qString(EntryWords::currency(currency.code, locale))});
    }
    return rows;
}

#include "LedgerCLI/BalancesCommand.h"

#include <array>

#include "LedgerCLI/CommandWords.h"
#include "LedgerCLI/TextTable.h"
#include "LedgerCore/Domain/Csv/CsvDocument.h"
#include "LedgerCore/Domain/Money/Money.h"

namespace LedgerCLI {

namespace {

struct Balance {
    std::string accountID;
    std::string account;
    std::string currency;
    std::int64_t balanceMinor = 0;
};
BOOST_DESCRIBE_STRUCT(Balance, (), (accountID, account, currency, balanceMinor))

std::vector<Balance> balancesOf(const std::vector<Account>& accounts)
{
    std::vector<Balance> balances;
    for (const auto& account : accounts) {
        for (const auto& currency : account.currencies)
            balances.push_back({account.id, account.name, currency, account.balance(currency)});
        for (const auto& [currency, minor] : account.balances) { // money in a currency no longer listed is still money
            if (!account.holds(currency))
                balances.push_back({account.id, account.name, currency, minor});
        }
    }
    return balances;
}

std::string csv(const std::vector<Balance>& balances)
{
    constexpr std::array<std::string_view, 5> columns{"account_id", "account", "currency", "balance", "balance_minor"};
    CsvDocument document{columns};
    for (const auto& each : balances)
        document.record({each.accountID, each.account, each.currency,
                         Money::decimalString(each.balanceMinor, each.currency), std::to_string(each.balanceMinor)});
    return document.take();
}

std::string text(const std::vector<Balance>& balances, std::string_view locale)
{
    TextTable table{{{std::string{CommandWords::text("account", locale)}},
                     {std::string{CommandWords::text("currency", locale)}},
                     {std::string{CommandWords::text("balance", locale)}, TextTable::Alignment::right}}};
    for (const auto& each : balances)
        table.add({each.account, each.currency, Money::formatDigits(each.balanceMinor, each.currency, locale)});
    return table.text();
}

}

CommandAnswer BalancesCommand::run(const Source& source, const OutputStyle& style)
{
    const auto balances = balancesOf(source.accounts);
    switch (style.format) {
    case OutputFormat::json:
        return {Json::encode(balances) + "\n"};
    case OutputFormat::csv:
        return {csv(balances)};
    case OutputFormat::text:
        break;
    }
    return {text(balances, style.locale)};
}

}

#include "LedgerService/Storage/Rows/AccountRepository.h"

#include <unordered_map>

#include "LedgerService/Storage/Sql/JsonColumn.h"
#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

constexpr auto selectAccount = R"sql(
    SELECT id, name, currencies, owner_member_id, archived, purpose, operator_member_id, return_account_id
    FROM accounts WHERE company_id = :company AND id = :account
)sql";

constexpr auto selectAccounts = R"sql(
    SELECT id, name, currencies, owner_member_id, archived, purpose, operator_member_id, return_account_id
    FROM accounts WHERE company_id = :company ORDER BY position
)sql";

constexpr auto selectAccountBalances = R"sql(
    SELECT account_id, currency, amount_minor FROM balances WHERE company_id = :company AND account_id = :account
)sql";

constexpr auto selectBalances = R"sql(
    SELECT account_id, currency, amount_minor FROM balances WHERE company_id = :company
)sql";

constexpr auto insertAccount = R"sql(
    INSERT INTO accounts (company_id, id, position, name, currencies, owner_member_id, operator_member_id, purpose,
                          return_account_id, archived)
    VALUES (:company, :id, (SELECT COUNT(*) FROM accounts WHERE company_id = :company), :name, :currencies, :owner,
            :operator, :purpose, :return_account, :archived)
)sql";

constexpr auto upsertBalance = R"sql(
    INSERT INTO balances (company_id, account_id, currency, amount_minor)
    VALUES (:company, :account, :currency, :amount)
    ON CONFLICT (company_id, account_id, currency) DO UPDATE SET amount_minor = excluded.amount_minor
)sql";

/// The accounts of a query with the columns of `selectAccount`, without balances.
std::vector<Account> accountsOf(Query& query)
{
    std::vector<Account> accounts;
    Account each;
    std::string currencies;
    query.into(each.id).into(each.name).into(currencies).into(each.ownerMemberID).into(each.archived);
    query.into(each.purpose).into(each.operatorMemberID).into(each.returnAccountID);
    while (query.next()) {
        each.currencies = JsonColumn::read<std::vector<std::string>>(currencies);
        accounts.push_back(each);
    }
    return accounts;
}

void fillBalances(Query& query, std::vector<Account>& accounts)
{
    std::unordered_map<std::string_view, Account*> byID;
    for (auto& account : accounts)
        byID.emplace(account.id, &account);
    std::string accountID;
    std::string currency;
    std::int64_t amount = 0;
    query.into(accountID).into(currency).into(amount);
    while (query.next()) {
        if (const auto found = byID.find(accountID); found != byID.end())
            found->second->balances[currency] = amount;
    }
}

}

std::optional<Account> AccountRepository::find(Connection& connection, std::string_view companyID,
                                               std::string_view accountID)
{
    Query query{connection, selectAccount};
    query.bind("company", companyID).bind("account", accountID);
    auto accounts = accountsOf(query);
    if (accounts.empty())
        return std::nullopt;
    Query balances{connection, selectAccountBalances};
    balances.bind("company", companyID).bind("account", accountID);
    fillBalances(balances, accounts);
    return std::move(accounts.front());
}

std::vector<Account> AccountRepository::all(Connection& connection, std::string_view companyID)
{
    Query query{connection, selectAccounts};
    query.bind("company", companyID);
    auto accounts = accountsOf(query);
    Query balances{connection, selectBalances};
    balances.bind("company", companyID);
    fillBalances(balances, accounts);
    return accounts;
}

void AccountRepository::insert(Connection& connection, std::string_view companyID, const Account& account)
{
    Query{connection, insertAccount}
        .bind("company", companyID)
        .bind("id", account.id)
        .bind("name", account.name)
        .bind("currencies", Json::encode(account.currencies))
        .bind("owner", account.ownerMemberID)
        .bind("operator", account.operatorMemberID)
        .bind("purpose", account.purpose)
        .bind("return_account", account.returnAccountID)
        .bind("archived", account.archived)
        .run();
}

void AccountRepository::writeBalance(Connection& connection, std::string_view companyID, std::string_view accountID,
                                     std::string_view currency, std::int64_t amountMinor)
{
    Query{connection, upsertBalance}
        .bind("company", companyID)
        .bind("account", accountID)
        .bind("currency", currency)
        .bind("amount", amountMinor)
        .run();
}

}

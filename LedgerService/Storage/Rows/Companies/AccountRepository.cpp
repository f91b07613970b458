#include "LedgerService/Storage/Rows/Companies/AccountRepository.h"

#include <unordered_map>

#include "LedgerService/Storage/Sql/Columns.h"

namespace LedgerService {

namespace {

constexpr Columns columns{column("id", &Account::id),
                          column("name", &Account::name),
                          column("currencies", &Account::currencies),
                          column("owner_member_id", &Account::ownerMemberID),
                          column("archived", &Account::archived),
                          column("purpose", &Account::purpose),
                          column("operator_member_id", &Account::operatorMemberID),
                          column("return_account_id", &Account::returnAccountID)};

const auto selectAccount = columns.select("FROM accounts WHERE company_id = :company AND id = :account");
const auto selectAccounts = columns.select("FROM accounts WHERE company_id = :company ORDER BY position");
const auto insertAccount =
    columns.insert("accounts", {{"company_id", ":company"},
                                {"position", "(SELECT COUNT(*) FROM accounts WHERE company_id = :company)"}});
const auto updateAccount = columns.update("accounts", "company_id = :company AND id = :id");

constexpr auto selectAccountBalances = R"sql(
    SELECT account_id, currency, amount_minor FROM balances WHERE company_id = :company AND account_id = :account
)sql";

constexpr auto selectBalances = R"sql(
    SELECT account_id, currency, amount_minor FROM balances WHERE company_id = :company
)sql";

constexpr auto upsertBalance = R"sql(
    INSERT INTO balances (company_id, account_id, currency, amount_minor)
    VALUES (:company, :account, :currency, :amount)
    ON CONFLICT (company_id, account_id, currency) DO UPDATE SET amount_minor = excluded.amount_minor
)sql";

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
    auto accounts = recordsOf<Account>(query, columns);
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
    auto accounts = recordsOf<Account>(query, columns);
    Query balances{connection, selectBalances};
    balances.bind("company", companyID);
    fillBalances(balances, accounts);
    return accounts;
}

void AccountRepository::insert(Connection& connection, std::string_view companyID, const Account& account)
{
    Query query{connection, insertAccount};
    columns.bind(query.bind("company", companyID), account);
    query.run();
}

void AccountRepository::update(Connection& connection, std::string_view companyID, const Account& account)
{
    Query query{connection, updateAccount};
    columns.bind(query.bind("company", companyID), account);
    query.run();
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

#include "LedgerService/Storage/Rows/Entries/AccountSetRepository.h"

#include <set>

#include "LedgerService/Storage/Sql/Columns.h"

namespace LedgerService {

namespace {

constexpr auto selectSet = R"sql(
    SELECT id FROM account_sets WHERE company_id = :company AND account_ids = :accounts
)sql";

constexpr auto insertSet = R"sql(
    INSERT INTO account_sets (company_id, id, account_ids, entry_count, receipt_count)
    VALUES (:company, (SELECT COUNT(*) + 1 FROM account_sets WHERE company_id = :company), :accounts, 0, 0)
)sql";

constexpr auto addToSet = R"sql(
    UPDATE account_sets SET entry_count = entry_count + :entries, receipt_count = receipt_count + :receipts
    WHERE company_id = :company AND id = :id
)sql";

constexpr Columns columns{column("id", &AccountSet::id), column("account_ids", &AccountSet::accountIDs),
                          column("entry_count", &AccountSet::entryCount),
                          column("receipt_count", &AccountSet::receiptCount)};

const auto selectOne = columns.select("FROM account_sets WHERE company_id = :company AND id = :id");
const auto selectSets = columns.select("FROM account_sets WHERE company_id = :company");

constexpr auto deleteSets = R"sql(
    DELETE FROM account_sets WHERE company_id = :company
)sql";

int find(Connection& connection, std::string_view companyID, std::string_view accounts)
{
    int id = 0;
    Query query{connection, selectSet};
    query.bind("company", companyID).bind("accounts", accounts).into(id).next();
    return id;
}

}

int AccountSetRepository::idOf(Connection& connection, std::string_view companyID, const LedgerTransaction& entry)
{
    std::set<std::string> ids;
    for (const auto& leg : entry.legs)
        ids.insert(leg.accountID);
    const auto accounts = Json::encode(std::vector<std::string>{ids.begin(), ids.end()});
    if (const auto known = find(connection, companyID, accounts); known != 0)
        return known;
    Query{connection, insertSet}.bind("company", companyID).bind("accounts", accounts).run();
    return find(connection, companyID, accounts);
}

void AccountSetRepository::count(Connection& connection, std::string_view companyID, int setID, int entries,
                                 std::size_t receipts)
{
    Query{connection, addToSet}
        .bind("company", companyID)
        .bind("id", setID)
        .bind("entries", entries)
        .bind("receipts", static_cast<std::int64_t>(receipts))
        .run();
}

std::vector<AccountSet> AccountSetRepository::all(Connection& connection, std::string_view companyID)
{
    Query query{connection, selectSets};
    query.bind("company", companyID);
    return recordsOf<AccountSet>(query, columns);
}

std::vector<std::string> AccountSetRepository::accountIDs(Connection& connection, std::string_view companyID, int setID)
{
    Query query{connection, selectOne};
    query.bind("company", companyID).bind("id", setID);
    auto set = recordOf<AccountSet>(query, columns);
    return set ? std::move(set->accountIDs) : std::vector<std::string>{};
}

void AccountSetRepository::removeAll(Connection& connection, std::string_view companyID)
{
    Query{connection, deleteSets}.bind("company", companyID).run();
}

}

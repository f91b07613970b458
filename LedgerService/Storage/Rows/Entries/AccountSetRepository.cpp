#include "LedgerService/Storage/Rows/Entries/AccountSetRepository.h"

#include <set>

#include "LedgerService/Storage/Sql/Columns.h"

namespace LedgerService {

namespace {

constexpr auto selectSet = R"sql(
    SELECT id FROM account_sets WHERE company_id = :company AND account_ids = :accounts
)sql";

constexpr auto addToSet = R"sql(
    UPDATE account_sets SET entry_count = entry_count + :entries, receipt_count = receipt_count + :receipts
    WHERE company_id = :company AND id = :id
)sql";

constexpr auto insertSet = R"sql(
    INSERT INTO account_sets (company_id, id, account_ids, entry_count, receipt_count)
    VALUES (:company, (SELECT COUNT(*) + 1 FROM account_sets WHERE company_id = :company), :accounts, :entries,
        :receipts)
    RETURNING id
)sql";

constexpr Columns columns{column("id", &AccountSet::id), column("account_ids", &AccountSet::accountIDs),
                          column("entry_count", &AccountSet::entryCount),
                          column("receipt_count", &AccountSet::receiptCount)};

const auto selectOne = columns.select("FROM account_sets WHERE company_id = :company AND id = :id");
const auto selectSets = columns.select("FROM account_sets WHERE company_id = :company");

constexpr auto deleteSets = R"sql(
    DELETE FROM account_sets WHERE company_id = :company
)sql";

/// The accounts that the entry touches, as a set is recognised by them.
std::string accountsOf(const LedgerTransaction& entry)
{
    std::set<std::string> ids;
    for (const auto& leg : entry.legs)
        ids.insert(leg.accountID);
    return Json::encode(std::vector<std::string>{ids.begin(), ids.end()});
}

}

int AccountSetRepository::count(Connection& connection, std::string_view companyID, const LedgerTransaction& entry,
                                Counted counted)
{
    const auto accounts = accountsOf(entry);
    const auto receipts = static_cast<std::int64_t>(counted.receipts);
    int id = 0;
    const bool known =
        Query{connection, selectSet}.bind("company", companyID).bind("accounts", accounts).into(id).next();
    Query query{connection, known ? addToSet : insertSet};
    query.bind("company", companyID).bind("entries", counted.entries).bind("receipts", receipts);
    if (known)
        query.bind("id", id).run();
    else
        query.bind("accounts", accounts).into(id).next();
    return id;
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

#include "LedgerService/Storage/Schema/KeyedTablesStep.h"

#include <string>
#include <string_view>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerService/Storage/Schema/StrictTables.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Dialect.h"
#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

constexpr auto selectTable = R"sql(
    SELECT sql FROM sqlite_master WHERE type = 'table' AND name = :table
)sql";

constexpr std::string_view everyReversal = "UNIQUE (company_id, reversal_of),";

constexpr auto onlyReversals = R"sql(
    CREATE UNIQUE INDEX entries_by_reversal ON entries (company_id, reversal_of) WHERE reversal_of IS NOT NULL)sql";

std::string statementOf(Connection& connection, std::string_view table)
{
    std::string statement;
    Query query{connection, selectTable};
    query.bind("table", table).into(statement);
    require(query.next(), "the first schema has made it");
    return statement;
}

void layOutByKeys(Connection& connection)
{
    auto entries = statementOf(connection, "entries");
    const auto at = entries.find(everyReversal);
    require(at != std::string::npos, "an entry is undone once");
    entries.erase(at, everyReversal.size());
    StrictTables::makeByKey(connection, "entries", entries);
    StrictTables::makeByKey(connection, "legs", statementOf(connection, "legs"));
    StrictTables::makeByKey(connection, "commands", statementOf(connection, "commands"));
}

}

void KeyedTablesStep::apply(Connection& connection)
{
    connection.execute("DROP INDEX legs_by_account");
    if (connection.dialect().isFile())
        layOutByKeys(connection);
    else
        connection.execute("ALTER TABLE entries DROP CONSTRAINT entries_company_id_reversal_of_key");
    connection.execute(onlyReversals);
}

}

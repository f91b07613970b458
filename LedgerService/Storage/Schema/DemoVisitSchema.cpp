#include "LedgerService/Storage/Schema/DemoVisitSchema.h"

#include <string>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerService/Storage/Schema/StrictTables.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

constexpr auto selectTable = R"sql(
    SELECT sql FROM sqlite_master WHERE type = 'table' AND name = 'companies'
)sql";

constexpr auto selectTrigger = R"sql(
    SELECT sql FROM sqlite_master WHERE type = 'trigger' AND name = 'audit_records_last'
)sql";

std::string statementOf(Connection& connection, const char* select)
{
    std::string statement;
    Query query{connection, select};
    query.into(statement);
    require(query.next(), "an earlier step has made it");
    return statement;
}

}

void DemoVisitSchema::apply(Connection& connection)
{
    const auto trigger = statementOf(connection, selectTrigger);
    auto table = statementOf(connection, selectTable);
    constexpr std::string_view unique = "demo_locale TEXT UNIQUE";
    const auto at = table.find(unique);
    require(at != std::string::npos, "one company for each language was all there could be");
    table.replace(at, unique.size(), "demo_locale TEXT");
    connection.execute("DROP TRIGGER audit_records_last"); // it names the table that is made anew
    StrictTables::makeAnew(connection, "companies", table);
    connection.execute(trigger);
    connection.execute("ALTER TABLE companies ADD COLUMN demo_visitor_at TEXT");
}

}

#include "LedgerService/Storage/Schema/StrictTables.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <fmt/core.h>
#include <fmt/ranges.h>

#include "LedgerService/Storage/Schema/TableText.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

constexpr auto selectTables = R"sql(
    SELECT name, sql FROM sqlite_master
    WHERE type = 'table' AND name NOT LIKE 'sqlite\_%' ESCAPE '\' AND sql NOT LIKE '%) STRICT'
)sql";

constexpr auto selectIndexes = R"sql(
    SELECT name, sql FROM sqlite_master WHERE type = 'index' AND tbl_name = :table AND sql IS NOT NULL
)sql";

using NamedStatement = std::pair<std::string, std::string>;

std::vector<NamedStatement> statementsOf(Query& query)
{
    std::vector<NamedStatement> statements;
    NamedStatement each;
    query.into(each.first).into(each.second);
    while (query.next())
        statements.push_back(each);
    return statements;
}

/// Strict tables know one whole number.
std::string withKnownTypes(std::string columns)
{
    constexpr std::string_view wide = "BIGINT";
    for (auto at = columns.find(wide); at != std::string::npos; at = columns.find(wide, at))
        columns.replace(at, wide.size(), "INTEGER");
    return columns;
}

std::vector<NamedStatement> indexesOf(Connection& connection, const std::string& table)
{
    Query query{connection, selectIndexes};
    query.bind("table", table);
    return statementsOf(query);
}

struct Layout {
    std::string_view options; // behind the columns
    std::string order;        // in which rows are put in
};

void replace(Connection& connection, const std::string& table, const std::string& statement, const Layout& layout)
{
    const auto indexes = indexesOf(connection, table);
    const auto begin = statement.find('(');
    const auto columns = withKnownTypes(statement.substr(begin, statement.rfind(')') + 1 - begin));
    connection.execute(fmt::format("CREATE TABLE strict_{} {} {}", table, columns, layout.options));
    connection.execute(fmt::format("INSERT INTO strict_{0} SELECT * FROM {0} {1}", table, layout.order));
    connection.execute(fmt::format("DROP TABLE {}", table));
    connection.execute(fmt::format("ALTER TABLE strict_{0} RENAME TO {0}", table));
    for (const auto& [name, index] : indexes)
        connection.execute(index);
}

}

void StrictTables::makeAnew(Connection& connection, const std::string& table, const std::string& statement)
{
    replace(connection, table, statement, {.options = "STRICT", .order = ""});
}

void StrictTables::makeByKey(Connection& connection, const std::string& table, const std::string& statement)
{
    const auto order = fmt::format("ORDER BY {}", fmt::join(TableText::key(statement), ", "));
    replace(connection, table, statement, {.options = "STRICT, WITHOUT ROWID", .order = order});
}

void StrictTables::makeAll(Connection& connection)
{
    std::vector<NamedStatement> tables;
    {
        Query query{connection, selectTables};
        tables = statementsOf(query);
    }
    for (const auto& [table, statement] : tables)
        makeAnew(connection, table, statement);
}

}

#include "LedgerService/Storage/Schema/SchemaComparison.h"

#include <map>

#include <fmt/core.h>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerService/Storage/Schema/Migrations.h"
#include "LedgerService/Storage/Schema/ServedSchema.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Dialect.h"
#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

constexpr auto selectObjects = R"sql(
    SELECT type || ' ' || name, COALESCE(sql, '') FROM sqlite_master WHERE name NOT LIKE 'sqlite\_%' ESCAPE '\'
)sql";

/// Statements by "table entries", without blanks: they may be laid out in any way.
using Objects = std::map<std::string, std::string>;

Objects objectsOf(Connection& connection)
{
    if (!connection.dialect().isFile())
        return ServedSchema::found(connection);
    Objects objects;
    std::string name;
    std::string statement;
    Query query{connection, selectObjects};
    query.into(name).into(statement);
    while (query.next()) {
        std::erase_if(statement, [](char each) { return each == ' ' || each == '\n' || each == '\t'; });
        objects.emplace(name, statement);
    }
    return objects;
}

Objects expectedOf(Connection& connection)
{
    if (!connection.dialect().isFile())
        return ServedSchema::expected(connection);
    Connection fresh{":memory:"};
    const auto refused = Migrations::apply(fresh);
    require(!refused, "the schema can be made");
    return objectsOf(fresh);
}

}

std::vector<std::string> SchemaComparison::differences(Connection& connection)
{
    const auto expected = expectedOf(connection);
    const auto found = objectsOf(connection);
    std::vector<std::string> words;
    for (const auto& [name, statement] : expected) {
        const auto same = found.find(name);
        if (same == found.end())
            words.push_back(fmt::format("schema: the {} is missing", name));
        else if (same->second != statement)
            words.push_back(fmt::format("schema: the {} is not as this program makes it", name));
    }
    for (const auto& [name, statement] : found) {
        if (!expected.contains(name))
            words.push_back(fmt::format("schema: the {} is none of this program", name));
    }
    return words;
}

}

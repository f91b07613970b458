#include "LedgerService/Storage/Schema/NewestSchema.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerService/Storage/Schema/AuditStep.h"
#include "LedgerService/Storage/Schema/Migrations.h"
#include "LedgerService/Storage/Schema/TableText.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Dialect.h"
#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

using NewestSchema::Part;

constexpr auto selectParts = R"sql(
    SELECT type, name, sql FROM sqlite_master
    WHERE type = :type AND sql IS NOT NULL AND name NOT LIKE 'sqlite\_%' ESCAPE '\'
    ORDER BY name
)sql";

/// What all steps together come to, in a database of the moment.
std::vector<Part> madeBySteps(const char* type)
{
    Connection fresh{":memory:"};
    const auto refused = Migrations::apply(fresh);
    require(!refused, "the schema can be made");
    std::vector<Part> parts;
    Part each;
    Query query{fresh, selectParts};
    query.bind("type", type).into(each.kind).into(each.name).into(each.statement);
    while (query.next())
        parts.push_back(each);
    return parts;
}

/// Whether rows of the table refer to rows of another one that is still to come.
bool waitsFor(const Part& table, const std::vector<Part>& others)
{
    return std::ranges::any_of(others, [&](const Part& other) {
        const auto refersTo = [&](const std::string& name) {
            return table.statement.find("REFERENCES " + name) != std::string::npos;
        };
        return other.name != table.name && (refersTo(other.name + " (") || refersTo("\"" + other.name + "\""));
    });
}

std::vector<Part> orderedTables()
{
    auto waiting = madeBySteps("table");
    std::vector<Part> ordered;
    while (!waiting.empty()) {
        const auto next = std::ranges::find_if(waiting, [&](const Part& each) { return !waitsFor(each, waiting); });
        require(next != waiting.end(), "tables do not refer to each other in a circle");
        ordered.push_back(std::move(*next));
        waiting.erase(next);
    }
    return ordered;
}

}

std::vector<NewestSchema::Part> NewestSchema::parts(const Dialect& dialect)
{
    auto parts = orderedTables();
    std::ranges::move(madeBySteps("index"), std::back_inserter(parts));
    for (auto& each : parts)
        each.statement = dialect.making(each.statement);
    for (const auto& [kind, name, statement] : auditGuards)
        parts.push_back({kind, name, statement});
    parts.push_back({"table", "writing_turn", "CREATE TABLE writing_turn (taken BIGINT NOT NULL)"});
    return parts;
}

const std::vector<NewestSchema::Table>& NewestSchema::tables()
{
    static const auto all = [] {
        std::vector<Table> tables;
        for (auto& [kind, name, statement] : orderedTables())
            tables.push_back({std::move(name), TableText::columns(statement), TableText::key(statement)});
        return tables;
    }();
    return all;
}

}

#include "LedgerService/Storage/Rows/Companies/CompanyRows.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include <fmt/core.h>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerService/Storage/Rows/Entries/CompanyHistory.h"
#include "LedgerService/Storage/Rows/Entries/FragmentRepository.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

constexpr auto selectTables = R"sql(
    SELECT t.name FROM sqlite_master t WHERE t.type = 'table'
        AND EXISTS (SELECT 1 FROM pragma_table_info(t.name) c WHERE c.name = 'company_id')
    ORDER BY t.name
)sql";

constexpr auto selectColumns = R"sql(
    SELECT group_concat(name, ', ') FROM pragma_table_info(:table) WHERE name <> :without
)sql";

constexpr auto selectOtherIDs = R"sql(
    SELECT g.email FROM given.users g JOIN main.users m ON m.email = g.email AND m.id <> g.id
    WHERE g.id IN (SELECT user_id FROM given.members WHERE company_id = :company) ORDER BY g.email
)sql";

constexpr auto selectOtherEmails = R"sql(
    SELECT g.email || ' has the id of ' || m.email FROM given.users g
    JOIN main.users m ON m.id = g.id AND m.email <> g.email
    WHERE g.id IN (SELECT user_id FROM given.members WHERE company_id = :company) ORDER BY g.email
)sql";

constexpr auto selectGiven = R"sql(
    SELECT id FROM given.companies ORDER BY id
)sql";

constexpr auto selectNumber = R"sql(
    SELECT number FROM given.companies WHERE id = :company
)sql";

constexpr auto staying = std::to_array<std::string_view>({"sessions", "access_challenges"});

std::vector<std::string> textsOf(Query& query)
{
    std::vector<std::string> texts;
    std::string text;
    query.into(text);
    while (query.next())
        texts.push_back(text);
    return texts;
}

std::string columnsOf(Connection& connection, std::string_view table, std::string_view without = "")
{
    std::string columns;
    Query query{connection, selectColumns};
    query.bind("table", table).bind("without", without).into(columns).next();
    return columns;
}

/// Copies the rows of the table that the condition finds. `renamed`: a column with what its value is to be here.
struct Renamed {
    std::string_view column;
    std::string_view value;
};
void copy(Connection& connection, const std::string& companyID, std::string_view table, std::string_view where,
          const Renamed& renamed = {})
{
    auto columns = columnsOf(connection, table, renamed.column);
    auto values = columns;
    if (!renamed.column.empty()) {
        columns += fmt::format(", {}", renamed.column);
        values += fmt::format(", {}", renamed.value);
    }
    const auto statement =
        fmt::format("INSERT INTO main.{0} ({1}) SELECT {2} FROM given.{0} WHERE {3}", table, columns, values, where);
    Query{connection, statement}.bind("company", companyID).run();
}

}

std::vector<std::string> CompanyRows::tables(Connection& connection)
{
    Query query{connection, selectTables};
    return textsOf(query);
}

bool CompanyRows::stays(std::string_view table)
{
    return std::ranges::find(staying, table) != staying.end();
}

std::vector<std::string> CompanyRows::givenIDs(Connection& connection)
{
    Query query{connection, selectGiven};
    return textsOf(query);
}

std::vector<std::string> CompanyRows::collisions(Connection& connection, const std::string& companyID)
{
    std::vector<std::string> words;
    {
        Query query{connection, selectOtherIDs};
        for (const auto& email : textsOf(query.bind("company", companyID)))
            words.push_back(fmt::format("{} is the address of another person there", email));
    }
    Query query{connection, selectOtherEmails};
    for (const auto& each : textsOf(query.bind("company", companyID)))
        words.push_back(fmt::format("{} there", each));
    return words;
}

void CompanyRows::copyGiven(Connection& connection, const std::string& companyID)
{
    connection.execute("PRAGMA defer_foreign_keys = ON"); // rows of many tables refer to each other; until the commit
    copy(connection, companyID, "users",
         "id IN (SELECT user_id FROM given.members WHERE company_id = :company) AND id NOT IN (SELECT id FROM "
         "main.users)",
         {"current_company_id", "CASE current_company_id WHEN :company THEN current_company_id END"});
    copy(connection, companyID, "companies", "id = :company",
         {"number", "(SELECT COALESCE(MAX(number), 0) + 1 FROM main.companies)"});
    for (const auto& table : tables(connection)) {
        if (table == "company_requests") // of people who have left the company, too
            copy(connection, companyID, table, "company_id = :company AND user_id IN (SELECT id FROM main.users)");
        else if (!stays(table))
            copy(connection, companyID, table, "company_id = :company");
    }
    copy(connection, companyID, "audit_records", "scope = :company");
    std::int64_t number = 0;
    Query{connection, selectNumber}.bind("company", companyID).into(number).next();
    const auto here = CompanyHistory::state(connection, companyID);
    require(here.has_value(), "the company was copied");
    FragmentRepository::copyGiven(connection, number, *here);
}

}

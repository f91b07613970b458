#include "LedgerService/Storage/Rows/Companies/DemoVisitRepository.h"

#include <ranges>

#include <fmt/core.h>

#include "LedgerService/Storage/Rows/Companies/CompanyRows.h"
#include "LedgerService/Storage/Rows/Entries/CompanyHistory.h"
#include "LedgerService/Storage/Rows/Entries/FragmentRepository.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

constexpr auto updateVisit = R"sql(
    UPDATE companies SET demo_visitor_at = :stamp WHERE id = :company AND demo_locale IS NOT NULL
)sql";

constexpr auto countVisits = R"sql(
    SELECT COUNT(*) FROM companies WHERE demo_visitor_at IS NOT NULL
)sql";

constexpr auto selectBefore = R"sql(
    SELECT id FROM companies WHERE demo_visitor_at < :stamp ORDER BY demo_visitor_at
)sql";

constexpr auto selectPeople = R"sql(
    SELECT user_id FROM members WHERE company_id = :company
        AND user_id NOT IN (SELECT user_id FROM members WHERE company_id <> :company)
)sql";

constexpr auto leaveCompany = R"sql(
    UPDATE users SET current_company_id = NULL WHERE current_company_id = :company
)sql";

constexpr auto deleteCompany = R"sql(
    DELETE FROM companies WHERE id = :company AND demo_visitor_at IS NOT NULL
)sql";

constexpr auto deleteTrail = R"sql(
    DELETE FROM audit_records WHERE scope = :company
)sql";

constexpr auto deletePlaces = R"sql(
    DELETE FROM known_places WHERE user_id = :person
)sql";

constexpr auto deletePerson = R"sql(
    DELETE FROM users WHERE id = :person
)sql";

std::vector<std::string> textsOf(Query& query)
{
    std::vector<std::string> texts;
    std::string text;
    query.into(text);
    while (query.next())
        texts.push_back(text);
    return texts;
}

std::vector<std::string> ofCompany(Connection& connection, const char* select, std::string_view companyID)
{
    Query query{connection, select};
    return textsOf(query.bind("company", companyID));
}

}

void DemoVisitRepository::insert(Connection& connection, std::string_view companyID, std::string_view stamp)
{
    Query{connection, updateVisit}.bind("stamp", stamp).bind("company", companyID).run();
}

int DemoVisitRepository::count(Connection& connection)
{
    int count = 0;
    Query query{connection, countVisits};
    query.into(count).next();
    return count;
}

std::vector<std::string> DemoVisitRepository::before(Connection& connection, std::string_view stamp)
{
    Query query{connection, selectBefore};
    return textsOf(query.bind("stamp", stamp));
}

bool DemoVisitRepository::remove(Connection& connection, std::string_view companyID)
{
    const auto state = CompanyHistory::state(connection, companyID);
    if (!state)
        return false;
    const auto people = ofCompany(connection, selectPeople, companyID);
    FragmentRepository::removeAll(connection, companyID, *state);
    for (const auto& table : CompanyRows::tables() | std::views::reverse) { // rows before those that they refer to
        const auto statement = fmt::format("DELETE FROM {} WHERE company_id = :company", table);
        Query{connection, statement}.bind("company", companyID).run();
    }
    Query{connection, leaveCompany}.bind("company", companyID).run();
    for (const auto& person : people) {
        Query{connection, deletePlaces}.bind("person", person).run();
        Query{connection, deletePerson}.bind("person", person).run();
    }
    if (Query{connection, deleteCompany}.bind("company", companyID).run() != 1)
        return false;
    Query{connection, deleteTrail}.bind("company", companyID).run();
    return true;
}

}

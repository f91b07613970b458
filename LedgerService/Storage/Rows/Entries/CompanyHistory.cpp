#include "LedgerService/Storage/Rows/Entries/CompanyHistory.h"

#include "LedgerCore/Domain/Contract.h"
#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

constexpr auto selectState = R"sql(
    SELECT number, last_sequence, settings_revision FROM companies WHERE id = :company
)sql";

constexpr auto advanceChange = R"sql(
    UPDATE companies SET last_sequence = last_sequence + 1 WHERE id = :company
    RETURNING number, last_sequence, settings_revision
)sql";

constexpr auto advanceForEntry = R"sql(
    UPDATE companies SET last_sequence = last_sequence + 1,
        earliest_day = CASE WHEN earliest_day <= :day THEN earliest_day ELSE :day END
    WHERE id = :company
    RETURNING number, last_sequence, settings_revision
)sql";

constexpr auto advanceFrom = R"sql(
    UPDATE companies SET last_sequence = last_sequence + 1 WHERE id = :company AND last_sequence = :last
)sql";

CompanyState advanced(Query& query)
{
    CompanyState state;
    query.into(state.number).into(state.lastChange).into(state.settingsRevision);
    require(query.next(), "only a company that exists changes");
    return state;
}

}

std::optional<CompanyState> CompanyHistory::state(Connection& connection, std::string_view companyID)
{
    CompanyState state;
    Query query{connection, selectState};
    query.bind("company", companyID).into(state.number).into(state.lastChange).into(state.settingsRevision);
    return query.next() ? std::optional{state} : std::nullopt;
}

CompanyState CompanyHistory::advance(Connection& connection, std::string_view companyID)
{
    Query query{connection, advanceChange};
    return advanced(query.bind("company", companyID));
}

CompanyState CompanyHistory::advanceByEntry(Connection& connection, std::string_view companyID, std::string_view day)
{
    Query query{connection, advanceForEntry};
    return advanced(query.bind("company", companyID).bind("day", day));
}

void CompanyHistory::ensureAdvanced(Connection& connection, std::string_view companyID, std::int64_t lastChange)
{
    Query{connection, advanceFrom}.bind("company", companyID).bind("last", lastChange).run();
}

}

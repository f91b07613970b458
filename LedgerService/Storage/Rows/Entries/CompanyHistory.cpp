#include "LedgerService/Storage/Rows/Entries/CompanyHistory.h"

#include <functional>

#include <fmt/core.h>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Dialect.h"
#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

constexpr auto selectState = R"sql(
    SELECT number, last_sequence, settings_revision FROM companies WHERE id = :company
)sql";

constexpr std::string_view advanceChange = R"sql(
    UPDATE companies SET last_sequence = last_sequence + 1 WHERE id = :company
)sql";

constexpr std::string_view advanceForEntry = R"sql(
    UPDATE companies SET last_sequence = last_sequence + 1,
        earliest_day = CASE WHEN earliest_day <= :day THEN earliest_day ELSE :day END
    WHERE id = :company
)sql";

constexpr std::string_view returnState = "RETURNING number, last_sequence, settings_revision";
const auto advanceChangeReturning = fmt::format("{}{}", advanceChange, returnState);
const auto advanceForEntryReturning = fmt::format("{}{}", advanceForEntry, returnState);

constexpr auto advanceFrom = R"sql(
    UPDATE companies SET last_sequence = last_sequence + 1 WHERE id = :company AND last_sequence = :last
)sql";

/// Runs the statement that advances the company and tells where the company stands then. A server is asked once; a file
/// is quicker asked again than told to gather what it changes.
CompanyState advanced(Connection& connection, std::string_view companyID, std::string_view statement,
                      std::string_view returning, const std::function<void(Query&)>& bind)
{
    CompanyState state;
    if (connection.dialect().isFile()) {
        {
            Query query{connection, statement};
            bind(query);
            query.run();
        }
        return promised(CompanyHistory::state(connection, companyID), "only a company that exists changes");
    }
    Query query{connection, returning};
    bind(query);
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
    return advanced(connection, companyID, advanceChange, advanceChangeReturning,
                    [&](Query& query) { query.bind("company", companyID); });
}

CompanyState CompanyHistory::advanceByEntry(Connection& connection, std::string_view companyID, std::string_view day)
{
    return advanced(connection, companyID, advanceForEntry, advanceForEntryReturning,
                    [&](Query& query) { query.bind("company", companyID).bind("day", day); });
}

void CompanyHistory::ensureAdvanced(Connection& connection, std::string_view companyID, std::int64_t lastChange)
{
    Query{connection, advanceFrom}.bind("company", companyID).bind("last", lastChange).run();
}

}

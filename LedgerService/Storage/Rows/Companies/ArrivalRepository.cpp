#include "LedgerService/Storage/Rows/Companies/ArrivalRepository.h"

#include <algorithm>
#include <ranges>
#include <utility>

#include <fmt/core.h>
#include <fmt/ranges.h>

#include "LedgerService/ArrivingCompany.h"
#include "LedgerService/Storage/Rows/Companies/CompanyRows.h"
#include "LedgerService/Storage/Rows/Entries/CompanyHistory.h"
#include "LedgerService/Storage/Rows/Entries/FragmentRepository.h"
#include "LedgerService/Storage/Schema/NewestSchema.h"
#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

constexpr auto selectArriving = R"sql(
    SELECT id, approval_status FROM companies WHERE approval_status LIKE 'arriving %' ORDER BY id
)sql";

constexpr auto replaceStatus = R"sql(
    UPDATE companies SET approval_status = :now WHERE id = :company AND substr(approval_status, 1, length(:before)) = :before
)sql";

constexpr auto writeStatus = R"sql(
    UPDATE companies SET approval_status = :status WHERE id = :company
)sql";

constexpr auto openPeople = R"sql(
    UPDATE users SET deactivated_at = NULLIF(substr(deactivated_at, length(:mark) + 1), '')
    WHERE substr(deactivated_at, 1, length(:mark)) = :mark
)sql";

constexpr auto deleteFragments = R"sql(
    DELETE FROM entry_fragments WHERE key IN
        (SELECT key FROM entry_fragments WHERE key BETWEEN :first AND :last ORDER BY key DESC LIMIT :rows)
)sql";

constexpr auto leaveCompany = R"sql(
    UPDATE users SET current_company_id = NULL WHERE current_company_id = :company
)sql";

constexpr auto deletePeople = R"sql(
    DELETE FROM users WHERE substr(deactivated_at, 1, length(:mark)) = :mark
)sql";

constexpr auto deleteCompany = R"sql(
    DELETE FROM companies WHERE id = :company AND substr(approval_status, 1, length(:hold)) = :hold
)sql";

constexpr auto deleteTrail = R"sql(
    DELETE FROM audit_records WHERE scope = :company AND number IN
        (SELECT number FROM audit_records WHERE scope = :company ORDER BY number DESC LIMIT :rows)
)sql";

/// "arriving HANDS STAMP", its words.
std::pair<std::string, std::string> wordsOf(std::string_view status)
{
    const auto rest = status.substr(std::min(status.size(), ArrivingCompany::state.size() + 1));
    const auto blank = std::min(rest.size(), rest.find(' '));
    return {std::string{rest.substr(0, blank)}, std::string{rest.substr(std::min(rest.size(), blank + 1))}};
}

bool removeFragments(Connection& connection, const std::string& companyID, std::size_t rows)
{
    const auto state = CompanyHistory::state(connection, companyID);
    if (!state)
        return false;
    const auto keys = FragmentRepository::keysOf(state->number);
    Query query{connection, deleteFragments};
    return query.bind("first", keys.first).bind("last", keys.last).bind("rows", static_cast<int>(rows)).run() > 0;
}

/// The last rows of the table: none that stays refers to them.
bool removeRows(Connection& connection, const NewestSchema::Table& table, const std::string& companyID,
                std::size_t rows)
{
    const auto keys = fmt::format("{}", fmt::join(table.key, ", "));
    const auto statement = fmt::format("DELETE FROM {0} WHERE company_id = :company AND ({1}) IN (SELECT {1} FROM {0} "
                                       "WHERE company_id = :company ORDER BY {2} DESC LIMIT {3})",
                                       table.name, keys, fmt::join(table.key, " DESC, "), rows);
    return Query{connection, statement}.bind("company", companyID).run() > 0;
}

}

std::string Arrival::status() const
{
    return hold() + stamp;
}

std::string Arrival::hold() const
{
    return fmt::format("{} {} ", ArrivingCompany::state, hands);
}

std::string Arrival::markOfPeople() const
{
    return fmt::format("{} {} ", ArrivingCompany::state, companyID);
}

std::vector<Arrival> ArrivalRepository::all(Connection& connection)
{
    std::vector<Arrival> arrivals;
    std::string companyID;
    std::string status;
    Query query{connection, selectArriving};
    query.into(companyID).into(status);
    while (query.next()) {
        auto [hands, stamp] = wordsOf(status);
        arrivals.push_back({.companyID = companyID, .hands = std::move(hands), .stamp = std::move(stamp)});
    }
    return arrivals;
}

bool ArrivalRepository::replace(Connection& connection, const Arrival& before, const Arrival& now)
{
    Query query{connection, replaceStatus};
    return query.bind("now", now.status()).bind("company", now.companyID).bind("before", before.hold()).run() == 1;
}

void ArrivalRepository::open(Connection& connection, const Arrival& arrival,
                             const std::optional<std::string>& approvalStatus)
{
    Query{connection, writeStatus}.bind("status", approvalStatus).bind("company", arrival.companyID).run();
    Query{connection, openPeople}.bind("mark", arrival.markOfPeople()).run();
}

bool ArrivalRepository::removePart(Connection& connection, const Arrival& arrival, std::size_t rows)
{
    if (removeFragments(connection, arrival.companyID, rows))
        return true;
    const auto& tables = NewestSchema::tables();
    for (const auto& table : tables | std::views::reverse) { // rows before those that they refer to
        if (std::ranges::find(table.columns, "company_id") != table.columns.end() &&
            removeRows(connection, table, arrival.companyID, rows))
            return true;
    }
    Query{connection, leaveCompany}.bind("company", arrival.companyID).run();
    Query{connection, deletePeople}.bind("mark", arrival.markOfPeople()).run();
    Query{connection, deleteCompany}.bind("company", arrival.companyID).bind("hold", arrival.hold()).run();
    return false;
}

bool ArrivalRepository::removePartOfTrail(Connection& connection, std::string_view companyID, std::size_t rows)
{
    Query query{connection, deleteTrail};
    return query.bind("company", companyID).bind("rows", static_cast<int>(rows)).run() > 0;
}

}

#include "LedgerService/Storage/Rows/People/AttemptRepository.h"

#include "LedgerService/Storage/Sql/Columns.h"

namespace LedgerService {

namespace {

constexpr Columns columns{column("count", &AttemptCount::count), column("window_ends_at", &AttemptCount::windowEndsAt)};

const auto selectCurrent = columns.select("FROM attempts WHERE scope = :scope AND window_ends_at > :now");

constexpr auto countAttempt = R"sql(
    INSERT INTO attempts (scope, window_ends_at, count) VALUES (:scope, :ends, 1)
    ON CONFLICT (scope) DO UPDATE SET
        count = CASE WHEN attempts.window_ends_at <= :now THEN 1 ELSE attempts.count + 1 END,
        window_ends_at = CASE WHEN attempts.window_ends_at <= :now THEN excluded.window_ends_at
                              ELSE attempts.window_ends_at END
)sql";

constexpr auto countLess = R"sql(
    UPDATE attempts SET count = count - 1 WHERE scope = :scope AND count > 0
)sql";

constexpr auto deleteScope = R"sql(
    DELETE FROM attempts WHERE scope = :scope
)sql";

// More than one attempt adds, so that the table shrinks after a flood.
constexpr auto deleteSomeEnded = R"sql(
    DELETE FROM attempts WHERE scope IN
        (SELECT scope FROM attempts WHERE window_ends_at <= :now ORDER BY window_ends_at LIMIT 16)
)sql";

}

AttemptCount AttemptRepository::current(Connection& connection, std::string_view scope, std::string_view now)
{
    Query query{connection, selectCurrent};
    return recordOf<AttemptCount>(query.bind("scope", scope).bind("now", now), columns).value_or(AttemptCount{});
}

void AttemptRepository::count(Connection& connection, std::string_view scope, std::string_view now,
                              std::string_view windowEndsAt)
{
    Query{connection, countAttempt}.bind("scope", scope).bind("ends", windowEndsAt).bind("now", now).run();
}

void AttemptRepository::takeBack(Connection& connection, std::string_view scope)
{
    Query{connection, countLess}.bind("scope", scope).run();
}

void AttemptRepository::forget(Connection& connection, std::string_view scope)
{
    Query{connection, deleteScope}.bind("scope", scope).run();
}

void AttemptRepository::removeSomeEnded(Connection& connection, std::string_view now)
{
    Query{connection, deleteSomeEnded}.bind("now", now).run();
}

}

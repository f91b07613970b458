#include "LedgerService/Storage/Rows/AttemptRepository.h"

#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

constexpr auto countAttempt = R"sql(
    INSERT INTO attempts (scope, window_ends_at, count) VALUES (:scope, :ends, 1)
    ON CONFLICT (scope) DO UPDATE SET
        count = CASE WHEN attempts.window_ends_at <= :now THEN 1 ELSE attempts.count + 1 END,
        window_ends_at = CASE WHEN attempts.window_ends_at <= :now THEN excluded.window_ends_at
                              ELSE attempts.window_ends_at END
)sql";

constexpr auto selectCount = R"sql(
    SELECT count FROM attempts WHERE scope = :scope
)sql";

constexpr auto deleteScope = R"sql(
    DELETE FROM attempts WHERE scope = :scope
)sql";

constexpr auto deleteEnded = R"sql(
    DELETE FROM attempts WHERE window_ends_at <= :now
)sql";

}

int AttemptRepository::count(Connection& connection, std::string_view scope, std::string_view now,
                             std::string_view windowEndsAt)
{
    Query{connection, countAttempt}.bind("scope", scope).bind("ends", windowEndsAt).bind("now", now).run();
    int counted = 0;
    Query query{connection, selectCount};
    query.bind("scope", scope).into(counted).next();
    return counted;
}

void AttemptRepository::forget(Connection& connection, std::string_view scope)
{
    Query{connection, deleteScope}.bind("scope", scope).run();
}

void AttemptRepository::removeEnded(Connection& connection, std::string_view now)
{
    Query{connection, deleteEnded}.bind("now", now).run();
}

}

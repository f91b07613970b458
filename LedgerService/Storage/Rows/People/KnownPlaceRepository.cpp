#include "LedgerService/Storage/Rows/People/KnownPlaceRepository.h"

#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

constexpr auto selectPlace = R"sql(
    SELECT 1 FROM known_places WHERE user_id = :user AND place = :place AND last_used_at >= :since
)sql";

constexpr auto writePlace = R"sql(
    INSERT INTO known_places (user_id, place, last_used_at) VALUES (:user, :place, :now)
    ON CONFLICT (user_id, place) DO UPDATE SET last_used_at = excluded.last_used_at
)sql";

constexpr auto deleteOldest = R"sql(
    DELETE FROM known_places WHERE user_id = :user AND place NOT IN
        (SELECT place FROM known_places WHERE user_id = :user ORDER BY last_used_at DESC, place LIMIT 16)
)sql";

}

bool KnownPlaceRepository::isKnown(Connection& connection, std::string_view userID, std::string_view place,
                                   std::string_view since)
{
    int found = 0;
    Query query{connection, selectPlace};
    query.bind("user", userID).bind("place", place).bind("since", since).into(found);
    return query.next();
}

void KnownPlaceRepository::remember(Connection& connection, std::string_view userID, std::string_view place,
                                    std::string_view now)
{
    Query{connection, writePlace}.bind("user", userID).bind("place", place).bind("now", now).run();
    Query{connection, deleteOldest}.bind("user", userID).run();
}

}

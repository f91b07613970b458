#include "LedgerService/Storage/Rows/People/SessionRepository.h"

#include "LedgerService/Storage/Sql/Columns.h"
#include "LedgerService/Storage/Sql/Connection.h"

namespace LedgerService {

namespace {

constexpr Columns ownerColumns{column("company_id", &SessionOwner::companyID),
                               column("member_id", &SessionOwner::memberID)};

const auto insertSession =
    ownerColumns.insert("sessions", {{"token_hash", ":hash"}, {"created_at", ":now"}, {"expires_at", ":expires"}});

const auto selectSession =
    ownerColumns.select("FROM sessions WHERE token_hash = :hash AND revoked_at IS NULL AND expires_at > :now");

constexpr auto revokeSession = R"sql(
    UPDATE sessions SET revoked_at = :now WHERE token_hash = :hash AND revoked_at IS NULL
)sql";

constexpr auto revokeOwned = R"sql(
    UPDATE sessions SET revoked_at = :now WHERE company_id = :company AND member_id = :member AND revoked_at IS NULL
)sql";

constexpr auto revokePersons = R"sql(
    UPDATE sessions SET revoked_at = :now
    WHERE revoked_at IS NULL AND token_hash <> :except AND (company_id, member_id) IN
        (SELECT company_id, id FROM members WHERE user_id = :user)
)sql";

constexpr auto deleteExpired = R"sql(
    DELETE FROM sessions WHERE expires_at <= :now
)sql";

}

void SessionRepository::insert(Connection& connection, std::string_view tokenHash, const SessionOwner& owner,
                               std::string_view now, std::string_view expiresAt)
{
    Query query{connection, insertSession};
    ownerColumns.bind(query.bind("hash", tokenHash).bind("now", now).bind("expires", expiresAt), owner);
    query.run();
}

std::optional<SessionOwner> SessionRepository::find(Connection& connection, std::string_view tokenHash,
                                                    std::string_view now)
{
    Query query{connection, selectSession};
    return recordOf<SessionOwner>(query.bind("hash", tokenHash).bind("now", now), ownerColumns);
}

void SessionRepository::revoke(Connection& connection, std::string_view tokenHash, std::string_view now)
{
    Query{connection, revokeSession}.bind("now", now).bind("hash", tokenHash).run();
}

void SessionRepository::revokeAll(Connection& connection, const SessionOwner& owner, std::string_view now)
{
    Query query{connection, revokeOwned};
    query.bind("now", now).bind("company", owner.companyID).bind("member", owner.memberID).run();
}

void SessionRepository::revokeAllOfPerson(Connection& connection, std::string_view userID, std::string_view now,
                                          std::string_view exceptHash)
{
    Query{connection, revokePersons}.bind("now", now).bind("except", exceptHash).bind("user", userID).run();
}

void SessionRepository::removeExpired(Connection& connection, std::string_view now)
{
    Query{connection, deleteExpired}.bind("now", now).run();
}

void SessionRepository::removeAll(Connection& connection)
{
    connection.execute("DELETE FROM sessions");
}

}

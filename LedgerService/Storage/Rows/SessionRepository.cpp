#include "LedgerService/Storage/Rows/SessionRepository.h"

#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

constexpr auto insertSession = R"sql(
    INSERT INTO sessions (token_hash, company_id, member_id, created_at, expires_at)
    VALUES (:hash, :company, :member, :now, :expires)
)sql";

constexpr auto selectSession = R"sql(
    SELECT company_id, member_id FROM sessions
    WHERE token_hash = :hash AND revoked_at IS NULL AND expires_at > :now
)sql";

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
    Query{connection, insertSession}
        .bind("hash", tokenHash)
        .bind("company", owner.companyID)
        .bind("member", owner.memberID)
        .bind("now", now)
        .bind("expires", expiresAt)
        .run();
}

std::optional<SessionOwner> SessionRepository::find(Connection& connection, std::string_view tokenHash,
                                                    std::string_view now)
{
    SessionOwner owner;
    Query query{connection, selectSession};
    query.bind("hash", tokenHash).bind("now", now).into(owner.companyID).into(owner.memberID);
    return query.next() ? std::optional{owner} : std::nullopt;
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

}

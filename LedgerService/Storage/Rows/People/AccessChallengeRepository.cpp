#include "LedgerService/Storage/Rows/People/AccessChallengeRepository.h"

#include "LedgerService/Storage/Sql/Columns.h"
#include "LedgerService/Storage/Sql/Connection.h"

namespace LedgerService {

namespace {

constexpr Columns columns{column("id", &StoredChallenge::id),
                          column("purpose", &StoredChallenge::purpose),
                          column("email", &StoredChallenge::email),
                          column("locale", &StoredChallenge::locale),
                          column("user_id", &StoredChallenge::userID),
                          column("company_id", &StoredChallenge::companyID),
                          column("invitation_id", &StoredChallenge::invitationID),
                          column("code_hash", &StoredChallenge::codeHash),
                          column("tries", &StoredChallenge::tries),
                          column("ticket_hash", &StoredChallenge::ticketHash),
                          column("expires_at", &StoredChallenge::expiresAt)};

const auto selectChallenge = columns.select("FROM access_challenges WHERE id = :id AND expires_at > :now");
const auto insertChallenge = columns.insert("access_challenges", {});

constexpr auto updateTries = R"sql(
    UPDATE access_challenges SET tries = tries + 1 WHERE id = :id
)sql";

constexpr auto updateTicket = R"sql(
    UPDATE access_challenges SET ticket_hash = :ticket, expires_at = :expires WHERE id = :id
)sql";

constexpr auto deleteByEmail = R"sql(
    DELETE FROM access_challenges WHERE email = :email
)sql";

constexpr auto deleteExpired = R"sql(
    DELETE FROM access_challenges WHERE expires_at <= :now
)sql";

}

std::optional<StoredChallenge> AccessChallengeRepository::find(Connection& connection, std::string_view id,
                                                               std::string_view now)
{
    Query query{connection, selectChallenge};
    return recordOf<StoredChallenge>(query.bind("id", id).bind("now", now), columns);
}

void AccessChallengeRepository::insert(Connection& connection, const StoredChallenge& challenge)
{
    Query query{connection, insertChallenge};
    columns.bind(query, challenge);
    query.run();
}

void AccessChallengeRepository::countTry(Connection& connection, std::string_view id)
{
    Query{connection, updateTries}.bind("id", id).run();
}

void AccessChallengeRepository::writeTicket(Connection& connection, std::string_view id, std::string_view ticketHash,
                                            std::string_view expiresAt)
{
    Query{connection, updateTicket}.bind("ticket", ticketHash).bind("expires", expiresAt).bind("id", id).run();
}

void AccessChallengeRepository::removeFor(Connection& connection, std::string_view email)
{
    Query{connection, deleteByEmail}.bind("email", email).run();
}

void AccessChallengeRepository::removeExpired(Connection& connection, std::string_view now)
{
    Query{connection, deleteExpired}.bind("now", now).run();
}

void AccessChallengeRepository::removeAll(Connection& connection)
{
    connection.execute("DELETE FROM access_challenges");
}

}

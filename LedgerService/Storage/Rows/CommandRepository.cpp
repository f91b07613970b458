#include "LedgerService/Storage/Rows/CommandRepository.h"

#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

constexpr auto selectCommand = R"sql(
    SELECT fingerprint, outcome FROM commands
    WHERE company_id = :company AND member_id = :member AND idempotency_key = :key
)sql";

constexpr auto insertCommand = R"sql(
    INSERT INTO commands (company_id, member_id, idempotency_key, fingerprint, outcome, created_at)
    VALUES (:company, :member, :key, :fingerprint, :outcome, :now)
)sql";

}

std::optional<RecordedCommand> CommandRepository::find(Connection& connection, const SessionOwner& member,
                                                       std::string_view key)
{
    RecordedCommand command;
    Query query{connection, selectCommand};
    query.bind("company", member.companyID).bind("member", member.memberID).bind("key", key);
    query.into(command.fingerprint).into(command.outcome);
    return query.next() ? std::optional{command} : std::nullopt;
}

void CommandRepository::insert(Connection& connection, const SessionOwner& member, std::string_view key,
                               const RecordedCommand& command, std::string_view now)
{
    Query{connection, insertCommand}
        .bind("company", member.companyID)
        .bind("member", member.memberID)
        .bind("key", key)
        .bind("fingerprint", command.fingerprint)
        .bind("outcome", command.outcome)
        .bind("now", now)
        .run();
}

}

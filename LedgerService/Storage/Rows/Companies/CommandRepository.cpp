#include "LedgerService/Storage/Rows/Companies/CommandRepository.h"

#include "LedgerService/Storage/Sql/Columns.h"

namespace LedgerService {

namespace {

constexpr Columns columns{column("fingerprint", &RecordedCommand::fingerprint),
                          column("outcome", &RecordedCommand::outcome)};

const auto selectCommand =
    columns.select("FROM commands WHERE company_id = :company AND member_id = :member AND idempotency_key = :key");
const auto insertCommand = columns.insert(
    "commands",
    {{"company_id", ":company"}, {"member_id", ":member"}, {"idempotency_key", ":key"}, {"created_at", ":now"}});

}

std::optional<RecordedCommand> CommandRepository::find(Connection& connection, const SessionOwner& member,
                                                       std::string_view key)
{
    Query query{connection, selectCommand};
    query.bind("company", member.companyID).bind("member", member.memberID).bind("key", key);
    return recordOf<RecordedCommand>(query, columns);
}

void CommandRepository::insert(Connection& connection, const SessionOwner& member, std::string_view key,
                               const RecordedCommand& command, std::string_view now)
{
    Query query{connection, insertCommand};
    columns.bind(query.bind("company", member.companyID).bind("member", member.memberID), command);
    query.bind("key", key).bind("now", now).run();
}

}

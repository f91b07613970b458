#include "LedgerService/Http/Routes/RouteKit.h"

#include "LedgerService/Storage/Sql/JsonColumn.h"

namespace LedgerService {

SnapshotReply sessionReply(const IssuedSession& session)
{
    return {.reader = session.owner,
            .asked = {},
            .beside = std::pair{std::string{"token"}, session.token},
            .opensSession = true};
}

std::expected<NewSnapshot, Refusal> snapshotUnless(std::optional<Refusal> refusal)
{
    if (refusal)
        return std::unexpected(*std::move(refusal));
    return NewSnapshot{};
}

Outcome Answer<NewSnapshot>::reply(const MemberCall& call, const NewSnapshot& result)
{
    SnapshotReply reply{.reader = call.owner(), .asked = {}, .beside = {}};
    if (!result.key.empty())
        reply.beside = {result.key, result.value};
    return reply;
}

Outcome Answer<NewSnapshot>::repeated(const MemberCall& call, const std::string& kept)
{
    const bool beside = kept.starts_with('{'); // earlier programs kept other texts here
    return reply(call, beside ? JsonColumn::read<NewSnapshot>(kept) : NewSnapshot{});
}

}

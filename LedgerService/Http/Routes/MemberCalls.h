#pragma once

#include "LedgerService/Http/RouteKit.h"
#include "LedgerService/Identity/MemberAct.h"

namespace LedgerService {

inline MemberAct memberActOf(const MemberCall& call)
{
    return {.connection = call.connection, .companyID = call.companyID, .member = call.member, .now = call.now};
}

/// The reply to a command that succeeded or was refused: the new snapshot.
inline std::expected<NewSnapshot, Refusal> snapshotUnless(std::optional<Refusal> refusal)
{
    if (refusal)
        return std::unexpected(*std::move(refusal));
    return NewSnapshot{};
}

}

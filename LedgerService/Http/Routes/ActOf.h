#pragma once

#include "LedgerService/Commands/CommandAct.h"
#include "LedgerService/Http/Route.h"
#include "LedgerService/Storage/Database.h"

namespace LedgerService {

/// The call as a command sees it; a view of it.
inline CommandAct actOf(const MemberCall& call)
{
    return {.connection = call.connection,
            .companyID = call.companyID,
            .member = call.member,
            .today = call.today,
            .now = call.now,
            .origin = call.request.remote,
            .note = call.note,
            .sections = call.service.database.sections()};
}

}

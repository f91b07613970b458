#pragma once

#include "LedgerService/Http/Route.h"

namespace LedgerService {

namespace CommandAudit {

/// Leaves the record of a command that was carried out, and one for each entry that it recorded; expects the command's
/// own transaction.
void keep(const MemberCall& call, const Route& route);

}

}

#pragma once

#include <string>
#include <string_view>

namespace LedgerService {

class Connection;

/// What is done to a person and not to one company: every company of the person learns of it.
namespace PersonAudit {

/// Leaves a record in the trail of each company of the person, or in that of no company when there is none. `origin`
/// is the client's address, from which the person did it, or `AuditOrigin::operating`. Expects the writing transaction
/// of what it tells.
void tell(Connection& connection, std::string_view userID, std::string_view kind, std::string_view origin,
          std::string_view now);

}

}

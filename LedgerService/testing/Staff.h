#pragma once

#include <string>
#include <vector>

#include "LedgerService/testing/TestService.h"

namespace LedgerService {

/// The sample's members in other roles than those that they have in the sample.
namespace Staff {

/// Gives an existing member this role, these permissions and these grants, active.
void set(TestService& service, const std::string& memberID, const std::string& role,
         std::vector<std::string> permissions, std::vector<AccountGrant> grants = {});

/// Makes the person a member of another company too, with the same id.
void joinTo(TestService& service, const std::string& memberID, const std::string& companyID, const std::string& role);

/// Every action on the account.
AccountGrant every(const std::string& accountID);

/// "mira" becomes an owner who holds everything but the sight of "hidden", "guest" an administrator of members who
/// sees "bank" alone.
void appoint(TestService& service);

}

}

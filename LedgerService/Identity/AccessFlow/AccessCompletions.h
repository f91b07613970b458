#pragma once

#include <expected>
#include <string_view>

#include "LedgerCore/Domain/Records/Requests/AccessCommands.h"
#include "LedgerService/Identity/Sessions/Authentication.h"
#include "LedgerService/Refusal.h"
#include "LedgerService/Service.h"

namespace LedgerService {

/// The last step of activating an account or of setting a password anew, once.
namespace AccessCompletions {

/// Signs in whoever holds the ticket: with a new password, which ends all other tokens of the person, or as a new
/// member of the company that invited. A person who has a password joins with it and keeps it.
std::expected<IssuedSession, Refusal> complete(const Service& service, const AccessCompletion& completion,
                                               std::string_view remote);

}

}

#pragma once

#include <optional>
#include <string_view>

#include "LedgerCore/Domain/Records/Requests/AccessCommands.h"
#include "LedgerService/Refusal.h"
#include "LedgerService/Service.h"

namespace LedgerService {

namespace PasswordChanging {

/// Gives the person behind the token another password and ends all other tokens of that person, or says why not. A
/// wrong current password counts as a guess.
std::optional<Refusal> change(const Service& service, std::string_view token, const PasswordChange& change,
                              std::string_view remote);

}

}

#pragma once

#include <expected>
#include <string>
#include <string_view>

#include "LedgerService/Identity/Authentication.h"
#include "LedgerService/Refusal.h"
#include "LedgerService/Service.h"

namespace LedgerService {

/// Signing in with an address and a password.
namespace SignIn {

/// Signs the person in to the company of the last sign-in, else to the first one that is open to the person.
/// `remote` is the client's network address, for limits only.
std::expected<IssuedSession, Refusal> withPassword(const Service& service, std::string_view email,
                                                   std::string_view password, std::string_view remote);

}

}

#pragma once

#include <expected>
#include <string_view>

#include "LedgerService/Identity/Sessions/Authentication.h"

namespace LedgerService {

/// The demonstration: one company for each language, made at its first use, open to everyone.
namespace DemoSignIn {

/// Signs in as the demonstration member of this profile (a `DemoIdentity` one). `remote` is for limits only.
std::expected<IssuedSession, Refusal> as(const Service& service, std::string_view locale, std::string_view profile,
                                         std::string_view remote);

}

}

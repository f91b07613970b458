#pragma once

#include <expected>
#include <string>
#include <string_view>

#include "LedgerService/Identity/Sessions/Authentication.h"
#include "LedgerService/Refusal.h"
#include "LedgerService/Service.h"

namespace LedgerService {

class Connection;
struct User;

/// Signing in with an address and a password, and what every other way of signing in ends with.
namespace SignIn {

/// Signs the person in to the company of the last sign-in, else to the first one that is open to the person.
/// `remote` is the client's network address, for limits only.
std::expected<IssuedSession, Refusal> withPassword(const Service& service, std::string_view email,
                                                   std::string_view password, std::string_view remote);

/// Lets in a person who has proved to be the one, and takes `remote` for a place of that person from now on. Expects
/// a writing transaction.
std::expected<IssuedSession, Refusal> enter(Connection& connection, const Service& service, const User& person,
                                            std::string_view remote);

}

}

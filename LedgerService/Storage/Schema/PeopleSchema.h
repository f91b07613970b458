#pragma once

#include <span>

namespace LedgerService {

/// Steps of the schema about people apart from companies.
namespace PeopleSchema {

/// Persons of their own: with a name and a language, perhaps without a password, perhaps deactivated; and the places
/// from which they have signed in.
std::span<const char* const> persons();

/// Mail that waits to be sent, and one-time codes that wait to be entered.
std::span<const char* const> correspondence();

}

}

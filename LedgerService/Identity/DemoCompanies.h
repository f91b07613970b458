#pragma once

#include <string>
#include <string_view>

#include "LedgerService/Service.h"

namespace LedgerService {

class Connection;

/// The companies that demonstrate the program: one a language, made at its first use.
namespace DemoCompanies {

/// The company of this language (a tag of `AppLanguage`), made now if need be, with books that end today. Expects no
/// transaction to be open.
std::string ensure(const Service& service, std::string_view locale);

/// Makes the company that the address belongs to, if it is one of a demonstration member, so that whoever knows the
/// address can sign in before anyone has entered.
void ensureForEmail(const Service& service, std::string_view email);

}

}

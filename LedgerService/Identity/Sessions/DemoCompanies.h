#pragma once

#include <chrono>
#include <expected>
#include <string>
#include <string_view>

#include "LedgerService/Refusal.h"
#include "LedgerService/Service.h"

namespace LedgerService {

class Connection;

/// The companies that demonstrate the program: one for each language, made at its first use.
namespace DemoCompanies {

/// The company of this language (a tag of `AppLanguage`), made now if need be, with books that end today. Expects no
/// transaction to be open.
std::string ensure(const Service& service, std::string_view locale);

/// How long a visitor has a demonstration company.
inline constexpr std::chrono::hours visit{24};

/// Founds a demonstration company for one visitor, unless there are too many already. Nobody can sign in to it by
/// password.
std::expected<std::string, Refusal> foundForVisitor(const Service& service, std::string_view locale);

/// Removes the companies whose visit is over; how many those were.
int sweep(Database& database, std::chrono::system_clock::time_point now);

/// Makes the company that the address belongs to, if it is one of a demonstration member, so that whoever knows the
/// address can sign in before anyone has entered.
void ensureForEmail(const Service& service, std::string_view email);

}

}

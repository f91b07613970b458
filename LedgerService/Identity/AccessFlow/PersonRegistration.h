#pragma once

#include <expected>
#include <string_view>
#include <variant>

#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"
#include "LedgerService/Identity/Sessions/Authentication.h"
#include "LedgerService/Refusal.h"
#include "LedgerService/Service.h"

namespace LedgerService {

/// People who are new to the service, with a company of their own or with an invitation to one.
namespace PersonRegistration {

/// Signed in, or waiting: for the operator's review, or with an invitation for the code that was mailed, whose
/// challenge the application then is.
using Registered = std::variant<IssuedSession, PendingCompanyRegistration>;

/// The most applications that may wait for a review.
inline constexpr int mostPending = 1000;

std::expected<Registered, Refusal> carryOut(const Service& service, const Registration& registration,
                                            std::string_view remote);

/// The language to write to somebody in of whom only the countries are known.
std::string_view localeOf(const std::vector<std::string>& countries);

}

}

#pragma once

#include <chrono>
#include <expected>
#include <string_view>

#include "LedgerCore/Domain/Records/Requests/AccessCommands.h"
#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"
#include "LedgerService/Refusal.h"
#include "LedgerService/Service.h"

namespace LedgerService {

/// One-time codes by mail, which prove that somebody reads the mail of an address. Nothing here tells whether anybody
/// is registered with an address: not the answers, not the limits, not the work that is done for them.
namespace AccessChallenges {

inline constexpr std::chrono::minutes lifetime{15};
inline constexpr int mostTries = 5;

/// Mails a code, for a reset only to somebody who is registered.
std::expected<AccessChallenge, Refusal> start(const Service& service, const AccessStart& start,
                                              std::string_view remote);

/// Takes the code for a ticket. The code is used up then, and after the fifth wrong one.
std::expected<AccessVerification, Refusal> verify(const Service& service, const AccessCode& code,
                                                  std::string_view remote);

/// What the service keeps of a ticket.
bool isTicket(std::string_view ticket, std::string_view hash);

/// One refusal for whatever is wrong with a code or a ticket.
Refusal invalid();

}

}

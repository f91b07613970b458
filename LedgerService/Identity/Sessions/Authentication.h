#pragma once

#include <expected>
#include <memory>
#include <string>
#include <string_view>

#include "LedgerService/Identity/Sessions/KnownTokens.h"
#include "LedgerService/Refusal.h"
#include "LedgerService/Service.h"
#include "LedgerService/Storage/Rows/People/SessionRepository.h"

namespace LedgerService {

class Connection;

/// A sign-in just made. The token leaves the service once, in the reply.
struct IssuedSession {
    std::string token;
    SessionOwner owner;
};

/// Tokens: issuing them, and who speaks when one comes back.
namespace Authentication {

/// The member behind a token, with the rights of this moment: those that the connection's transaction sees.
std::expected<TokenHolder, Refusal> signedInMember(Connection& connection, std::string_view token, std::string_view now,
                                                   const ServicePolicy& policy, KnownTokens& known);

/// Whom the token spoke for when it was last looked at; nothing when it was not in force or not seen lately.
std::shared_ptr<const TokenHolder> known(std::string_view token, const KnownTokens& known);

/// Makes and stores a token for the member; expects a writing transaction.
IssuedSession issue(Connection& connection, const SessionOwner& owner, const Service& service);

/// What the state of its review keeps a company's members from, or nothing once it is approved.
std::optional<Refusal> whyNotOpen(const std::optional<std::string>& approvalStatus);

Refusal unauthorized();

}

}

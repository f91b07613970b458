#pragma once

#include <expected>
#include <string>
#include <string_view>

#include "LedgerCore/Domain/Records/Member.h"
#include "LedgerService/Refusal.h"
#include "LedgerService/Service.h"
#include "LedgerService/Storage/Rows/SessionRepository.h"

namespace LedgerService {

class Connection;

/// The member behind a token, with the rights of this moment.
struct SignedInMember {
    std::string companyID;
    Member member;
};

/// A sign-in just made. The token leaves the service once, in the reply.
struct IssuedSession {
    std::string token;
    SessionOwner owner;
};

/// Tokens: issuing them, and who speaks when one comes back.
namespace Authentication {

std::expected<SignedInMember, Refusal> signedInMember(Connection& connection, std::string_view token,
                                                      std::string_view now, const ServicePolicy& policy);

/// Makes and stores a token for the member; expects a writing transaction.
IssuedSession issue(Connection& connection, const SessionOwner& owner, const Service& service);

/// What the state of its review keeps a company's members from, or nothing once it is approved.
std::optional<Refusal> whyNotOpen(const std::optional<std::string>& approvalStatus);

Refusal unauthorized();

}

}

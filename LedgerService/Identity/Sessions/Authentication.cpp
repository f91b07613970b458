#include "LedgerService/Identity/Sessions/Authentication.h"

#include <memory>
#include <optional>
#include <utility>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Records/Company.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerService/Audit/AuditTrail.h"
#include "LedgerService/Identity/Token.h"

namespace LedgerService {

namespace {

std::optional<Refusal> whyNotServed(const std::optional<TokenHolder>& holder, const ServicePolicy& policy)
{
    if (!holder || (holder->demonstration && !policy.offersDemonstration()))
        return Authentication::unauthorized();
    if (!holder->member->active)
        return Refusal::of(ServiceCode::inactiveMember, "The member is deactivated.");
    return Authentication::whyNotOpen(holder->approvalStatus);
}

}

std::expected<TokenHolder, Refusal> Authentication::signedInMember(Connection& connection, std::string_view token,
                                                                   std::string_view now, const ServicePolicy& policy,
                                                                   KnownTokens& known)
{
    if (token.empty())
        return std::unexpected(unauthorized());
    const auto hash = Token::hash(token);
    const auto before = known.find(hash);
    auto holder = MemberRepository::byToken(connection, hash, now, before.get());
    if (auto refusal = whyNotServed(holder, policy)) {
        known.forget(hash);
        return std::unexpected(*std::move(refusal));
    }
    if (!before || before->member != holder->member)
        known.remember(hash, std::make_shared<const TokenHolder>(*holder));
    return *std::move(holder);
}

std::shared_ptr<const TokenHolder> Authentication::known(std::string_view token, const KnownTokens& known)
{
    return token.empty() ? nullptr : known.find(Token::hash(token));
}

IssuedSession Authentication::issue(Connection& connection, const SessionOwner& owner, const Service& service)
{
    const auto instant = service.clock();
    const auto now = LedgerDay::stamp(instant);
    auto token = Token::issue();
    SessionRepository::removeExpired(connection, now);
    SessionRepository::insert(connection, Token::hash(token), owner, now,
                              LedgerDay::stamp(instant + service.policy.sessionLifetime));
    AuditRecord record;
    record.at = now;
    record.memberID = owner.memberID;
    record.origin = service.origin;
    record.kind = AuditKind::signIn;
    AuditTrail::append(connection, owner.companyID, std::move(record));
    return {.token = std::move(token), .owner = owner};
}

std::optional<Refusal> Authentication::whyNotOpen(const std::optional<std::string>& approvalStatus)
{
    if (!approvalStatus || *approvalStatus == ApprovalStatus::approved)
        return std::nullopt;
    if (*approvalStatus == ApprovalStatus::rejected)
        return Refusal::of(ServiceCode::companyRejected, "The company was not approved.");
    return Refusal::of(ServiceCode::companyPending, "The company awaits approval.");
}

Refusal Authentication::unauthorized()
{
    return Refusal::of(ServiceCode::unauthorized, "The token or the sign-in details are not valid.");
}

}

#include "LedgerService/Identity/Authentication.h"

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Records/ServiceCode.h"
#include "LedgerService/Audit/AuditTrail.h"
#include "LedgerService/Identity/Token.h"
#include "LedgerService/Storage/Rows/CompanyRepository.h"
#include "LedgerService/Storage/Rows/MemberRepository.h"

namespace LedgerService {

std::expected<SignedInMember, Refusal> Authentication::signedInMember(Connection& connection, std::string_view token,
                                                                      std::string_view now, const ServicePolicy& policy)
{
    if (token.empty())
        return std::unexpected(unauthorized());
    const auto owner = SessionRepository::find(connection, Token::hash(token), now);
    if (!owner)
        return std::unexpected(unauthorized());
    auto member = MemberRepository::find(connection, owner->companyID, owner->memberID);
    const auto company = CompanyRepository::find(connection, owner->companyID);
    if (!member || !company || (company->demo && !policy.demonstration))
        return std::unexpected(unauthorized());
    if (!member->active)
        return std::unexpected(Refusal::of(ServiceCode::inactiveMember, "The member is deactivated."));
    if (auto refusal = whyNotOpen(company->approvalStatus))
        return std::unexpected(*std::move(refusal));
    return SignedInMember{owner->companyID, *std::move(member)};
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

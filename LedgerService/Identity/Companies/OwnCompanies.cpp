#include "LedgerService/Identity/Companies/OwnCompanies.h"

#include <algorithm>

#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerService/Identity/Members/Invitations.h"
#include "LedgerService/Storage/Rows/Companies/CompanyRepository.h"
#include "LedgerService/Storage/Rows/People/MemberRepository.h"
#include "LedgerService/Storage/Rows/People/UserRepository.h"

namespace LedgerService {

namespace {

/// Why the person cannot work in the company now.
std::optional<Refusal> whyNotOpen(const Membership& membership, const ServicePolicy& policy)
{
    if (membership.demonstration && !policy.offersDemonstration())
        return Refusal::of(ServiceCode::notFound, "There is no such company.");
    if (!membership.active)
        return Refusal::of(ServiceCode::inactiveMember, "The member is deactivated.");
    return Authentication::whyNotOpen(membership.approvalStatus);
}

/// The company that is entered tells of it in its trail. The one that the person comes from has nothing to tell before
/// the token for it is handed back.
IssuedSession open(const OwnCompanies::Visit& visit, const SessionOwner& owner)
{
    const auto& act = visit.act;
    act.note.isToldElsewhere = true;
    UserRepository::writeCurrentCompany(act.connection, act.member.userID, owner.companyID);
    return Authentication::issue(act.connection, owner, visit.service);
}

}

CompanyChoices OwnCompanies::choices(const CommandAct& act, const ServicePolicy& policy)
{
    CompanyChoices choices;
    for (const auto& each : MemberRepository::memberships(act.connection, act.member.userID)) {
        if (whyNotOpen(each, policy))
            continue;
        const auto company = CompanyRepository::find(act.connection, each.companyID);
        const auto member = MemberRepository::find(act.connection, each.companyID, each.memberID);
        if (!company || !member)
            continue;
        choices.companies.push_back({company->id, company->name});
        choices.ownedCompanyCount += member->role == MemberRole::owner ? 1 : 0;
    }
    return choices;
}

std::expected<IssuedSession, Refusal> OwnCompanies::enter(const Visit& visit, std::string_view companyID)
{
    const auto memberships = MemberRepository::memberships(visit.act.connection, visit.act.member.userID);
    const auto found = std::ranges::find(memberships, companyID, &Membership::companyID);
    if (found == memberships.end())
        return std::unexpected(Refusal::of(ServiceCode::notFound, "There is no such company."));
    if (auto refusal = whyNotOpen(*found, visit.service.policy))
        return std::unexpected(*std::move(refusal));
    return open(visit, {found->companyID, found->memberID});
}

std::expected<IssuedSession, Refusal> OwnCompanies::join(const Visit& visit, std::string_view code,
                                                         std::string_view locale)
{
    const auto& act = visit.act;
    const auto invitation = Invitations::find(act.connection, code, act.member.email, act.now);
    if (!invitation) {
        if (const auto joined = Invitations::joined(act.connection, code, act.member))
            return enter(visit, joined->companyID);
        return std::unexpected(invitation.error());
    }
    const Invitations::Person person{
        .userID = act.member.userID, .name = act.member.name, .locale = std::string{locale}};
    const auto owner = Invitations::join(act.connection, *invitation, person, {act.now, act.origin});
    if (!owner)
        return std::unexpected(owner.error());
    return open(visit, *owner);
}

}

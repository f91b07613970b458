#include "LedgerService/Identity/Members/Invitations.h"

#include <algorithm>
#include <optional>

#include <fmt/core.h>

#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Access/MembershipRules.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/DemoIdentity.h"
#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerCore/Domain/Text/Naming.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerService/Audit/AuditTrail.h"
#include "LedgerService/Identity/Members/InvitationCode.h"
#include "LedgerService/Identity/Members/MembershipRefusal.h"
#include "LedgerService/Identity/Sessions/Authentication.h"
#include "LedgerService/Mail/MailTexts.h"
#include "LedgerService/Mail/Outbox.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Rows/Companies/AccountRepository.h"
#include "LedgerService/Storage/Rows/Companies/CompanyRepository.h"
#include "LedgerService/Storage/Rows/Entries/CompanyHistory.h"
#include "LedgerService/Storage/Rows/People/MemberRepository.h"
#include "LedgerService/Storage/Rows/People/UserRepository.h"

namespace LedgerService {

namespace {

constexpr std::chrono::hours day{24};

Refusal invalid()
{
    return Refusal::of(ServiceCode::invalidInvitation, "The code opens no invitation to this person.");
}

std::string later(std::string_view stamp, std::chrono::hours by)
{
    const auto instant = LedgerDay::parseStamp(stamp).value_or(std::chrono::system_clock::time_point{});
    return LedgerDay::stamp(instant + by);
}

/// The terms as they are kept: what counts for nothing is left out.
Invite tidied(const Invite& invite)
{
    const auto member = MembershipRules::invited(invite);
    return {.name = std::string{TextFold::trimmed(invite.name)},
            .email = UserRepository::normalized(invite.email),
            .role = invite.role,
            .accountIDs = member.accountIDs,
            .permissions = member.permissions.value_or(std::vector<std::string>{}),
            .accountGrants = member.accountGrants.value_or(std::vector<AccountGrant>{})};
}

std::optional<Refusal> whyNotGive(Connection& connection, std::string_view companyID, const Invite& terms,
                                  const Member& giver)
{
    const auto members = MemberRepository::all(connection, companyID);
    const auto accounts = AccountRepository::all(connection, companyID);
    const auto refused = MembershipRules::whyNotInvite(terms, giver, {members, accounts});
    return refused ? std::optional{MembershipRefusal::of(*refused)} : std::nullopt;
}

std::optional<Refusal> whyNotInvite(const CommandAct& act, const Invite& terms)
{
    if (auto refusal = whyNotGive(act.connection, act.companyID, terms, act.member))
        return refusal;
    if (!Naming::isName(terms.name) || !Naming::isEmail(terms.email) || DemoIdentity::isAddress(terms.email))
        return Refusal::of(ServiceCode::validationError, "The name or the e-mail address is not one.");
    if (MemberRepository::findByEmail(act.connection, act.companyID, terms.email))
        return Refusal::of(ServiceCode::emailExists, "The person is a member of the company.");
    if (InvitationRepository::countSince(act.connection, act.companyID, later(act.now, -day)) >= Invitations::mostADay)
        return Refusal::of(ServiceCode::rateLimited,
                           fmt::format("A company invites at most {} people in a day.", Invitations::mostADay), day);
    return std::nullopt;
}

PendingInvitation described(const Invitation& invitation, std::string_view now)
{
    const auto& terms = invitation.terms;
    return {.id = invitation.id,
            .name = terms.name,
            .email = terms.email,
            .role = terms.role,
            .permissions = terms.permissions,
            .accountGrants = terms.accountGrants,
            .createdAt = invitation.createdAt,
            .expiresAt = invitation.expiresAt,
            .status = std::string{invitation.isExpired(now) ? InvitationStatus::expired : InvitationStatus::pending}};
}

/// The invitation if it still is what this person was given.
std::expected<Invitation, Refusal> usable(Connection& connection, std::optional<Invitation> invitation,
                                          std::string_view email, std::string_view now)
{
    if (!invitation || !invitation->isOpen() || invitation->isExpired(now) ||
        invitation->terms.email != UserRepository::normalized(email) ||
        DemoIdentity::isAddress(invitation->terms.email))
        return std::unexpected(invalid());
    const auto company = CompanyRepository::find(connection, invitation->companyID);
    if (!company || company->demo || Authentication::whyNotOpen(company->approvalStatus))
        return std::unexpected(invalid());
    const auto giver = MemberRepository::find(connection, invitation->companyID, invitation->invitedBy);
    if (!giver || whyNotGive(connection, invitation->companyID, invitation->terms, *giver))
        return std::unexpected(invalid());
    return *std::move(invitation);
}

/// Writes to the invited person, in the person's language where it is known; the code comes from the inviter.
void inform(const CommandAct& act, const Invite& terms)
{
    const auto person = UserRepository::findByEmail(act.connection, terms.email);
    const auto company = CompanyRepository::find(act.connection, act.companyID).value_or(Company{});
    if (company.demo) // which anybody enters
        return;
    const MailTexts::Reader reader{terms.email, person ? person->locale : act.member.locale};
    Outbox::put(act.connection, MailTexts::invitation(reader, company.name, act.member.name),
                LedgerDay::parseStamp(act.now).value_or(Outbox::Instant{}));
}

bool isMember(Connection& connection, std::string_view userID, std::string_view companyID)
{
    const auto memberships = MemberRepository::memberships(connection, userID);
    return std::ranges::find(memberships, companyID, &Membership::companyID) != memberships.end();
}

void tellJoined(Connection& connection, const Invitation& invitation, const Member& member,
                const Invitations::Moment& moment)
{
    AuditRecord record;
    record.at = moment.now;
    record.memberID = member.id;
    record.origin = moment.origin;
    record.kind = AuditKind::memberJoined;
    record.record = member.id;
    record.after = Json::encode(member);
    AuditTrail::append(connection, invitation.companyID, std::move(record));
}

}

std::expected<Invitations::Made, Refusal> Invitations::invite(const CommandAct& act, const Invite& invite)
{
    if (!MemberRights::canManage(act.member)) // before anything that grows with the command
        return std::unexpected(MembershipRefusal::of(MembershipRules::Refusal::notManager));
    auto terms = tidied(invite);
    if (auto refusal = whyNotInvite(act, terms))
        return std::unexpected(*std::move(refusal));
    InvitationRepository::revokeFor(act.connection, act.companyID, terms.email, act.now);
    Made made{.code = InvitationCode::make(),
              .invitation = {.companyID = act.companyID,
                             .id = Random::identifier(),
                             .invitedBy = act.member.id,
                             .terms = std::move(terms),
                             .createdAt = act.now,
                             .expiresAt = later(act.now, lifetime),
                             .acceptedAt = {},
                             .revokedAt = {}}};
    InvitationRepository::insert(act.connection, made.invitation, InvitationCode::hash(made.code));
    inform(act, made.invitation.terms);
    return made;
}

std::expected<InvitationListResponse, Refusal> Invitations::pending(const CommandAct& act)
{
    if (!MemberRights::canManage(act.member))
        return std::unexpected(MembershipRefusal::of(MembershipRules::Refusal::notManager));
    InvitationListResponse list;
    for (const auto& each : InvitationRepository::open(act.connection, act.companyID))
        list.invitations.push_back(described(each, act.now));
    return list;
}

std::expected<InvitationListResponse, Refusal> Invitations::revoke(const CommandAct& act, std::string_view id)
{
    if (!MemberRights::canManage(act.member))
        return std::unexpected(MembershipRefusal::of(MembershipRules::Refusal::notManager));
    const auto invitation = InvitationRepository::find(act.connection, act.companyID, id);
    if (!invitation)
        return std::unexpected(Refusal::of(ServiceCode::notFound, "There is no such invitation."));
    if (invitation->acceptedAt)
        return std::unexpected(Refusal::of(ServiceCode::invitationUsed, "The invitation was accepted."));
    if (invitation->isOpen())
        InvitationRepository::writeRevoked(act.connection, *invitation, act.now);
    return pending(act);
}

std::expected<Invitation, Refusal> Invitations::find(Connection& connection, std::string_view code,
                                                     std::string_view email, std::string_view now)
{
    return usable(connection, InvitationRepository::findByCode(connection, InvitationCode::hash(code)), email, now);
}

std::expected<Invitation, Refusal> Invitations::findAgain(Connection& connection, std::string_view companyID,
                                                          std::string_view id, std::string_view email,
                                                          std::string_view now)
{
    return usable(connection, InvitationRepository::find(connection, companyID, id), email, now);
}

std::optional<Invitation> Invitations::joined(Connection& connection, std::string_view code, const Member& person)
{
    auto invitation = InvitationRepository::findByCode(connection, InvitationCode::hash(code));
    if (!invitation || !invitation->acceptedAt || invitation->terms.email != UserRepository::normalized(person.email) ||
        !isMember(connection, person.userID, invitation->companyID))
        return std::nullopt;
    return invitation;
}

std::expected<SessionOwner, Refusal> Invitations::join(Connection& connection, const Invitation& invitation,
                                                       const Person& person, const Moment& moment)
{
    if (isMember(connection, person.userID, invitation.companyID))
        return std::unexpected(Refusal::of(ServiceCode::emailExists, "The person is a member of the company."));
    auto member = MembershipRules::invited(invitation.terms);
    member.id = Random::identifier();
    member.userID = person.userID;
    member.name = person.name;
    member.locale = AppLanguage::locale(person.locale);
    MemberRepository::insert(connection, invitation.companyID, member, std::nullopt, moment.now);
    InvitationRepository::writeAccepted(connection, invitation, moment.now);
    tellJoined(connection, invitation, member, moment);
    CompanyHistory::advance(connection, invitation.companyID);
    return SessionOwner{invitation.companyID, member.id};
}

}

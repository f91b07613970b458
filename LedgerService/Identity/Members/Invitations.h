#pragma once

#include <chrono>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"
#include "LedgerCore/Domain/Records/Requests/MemberCommands.h"
#include "LedgerService/Commands/CommandAct.h"
#include "LedgerService/Refusal.h"
#include "LedgerService/Storage/Rows/People/InvitationRepository.h"
#include "LedgerService/Storage/Rows/People/SessionRepository.h"

namespace LedgerService {

/// Inviting people to a company, and their joining it. What changes anything expects a writing transaction.
namespace Invitations {

inline constexpr std::chrono::hours lifetime{14 * 24};
/// The most that a company may make within a day, whatever becomes of them.
inline constexpr int mostADay = 100;

/// An invitation just made. The code leaves the service once, to be handed to the invited person.
struct Made {
    std::string code;
    Invitation invitation;
};

/// What was open for the same address is revoked.
std::expected<Made, Refusal> invite(const CommandAct& act, const Invite& invite);

/// What was neither accepted nor revoked, for those who manage the company.
std::expected<InvitationListResponse, Refusal> pending(const CommandAct& act);

/// Replies what is left. Revoking twice does no harm.
std::expected<InvitationListResponse, Refusal> revoke(const CommandAct& act, std::string_view id);

/// The invitation that this code opens to the person with this address. One and the same refusal for a code that does
/// not exist, was used, revoked, has expired, was given to somebody else, or came from somebody who could not give it
/// any more.
std::expected<Invitation, Refusal> find(Connection& connection, std::string_view code, std::string_view email,
                                        std::string_view now);

/// The same for an invitation that this code has opened before.
std::expected<Invitation, Refusal> findAgain(Connection& connection, std::string_view companyID, std::string_view id,
                                             std::string_view email, std::string_view now);

/// The invitation by which the person has joined with this code, as a member of any company: whoever lost the reply
/// asks again. Nothing for a code that did not make this person a member.
std::optional<Invitation> joined(Connection& connection, std::string_view code, const Member& person);

/// Who joins.
struct Person {
    std::string userID;
    std::string name;
    std::string locale;
};

/// When somebody joins, and from which address.
struct Moment {
    std::string_view now; // stamp
    std::string_view origin;
};

/// Makes the person a member with the rights that `find` found. The company's trail tells of it.
std::expected<SessionOwner, Refusal> join(Connection& connection, const Invitation& invitation, const Person& person,
                                          const Moment& moment);

}

}

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/Requests/MemberCommands.h"

namespace LedgerService {

class Connection;

/// An invitation to a company. It is open until it is accepted or revoked; an open one may have expired.
struct Invitation {
    std::string companyID;
    std::string id;
    std::string invitedBy; // a member of the company
    Invite terms;          // with the address in its normal form
    std::string createdAt;
    std::string expiresAt;
    std::optional<std::string> acceptedAt;
    std::optional<std::string> revokedAt;

    [[nodiscard]] bool isOpen() const { return !acceptedAt && !revokedAt; }
    [[nodiscard]] bool isExpired(std::string_view now) const { return expiresAt <= now; }
};

/// The invitations of all companies, known by the hash of their code. Stamps are texts that sort in the order of time.
namespace InvitationRepository {

std::optional<Invitation> find(Connection& connection, std::string_view companyID, std::string_view id);
std::optional<Invitation> findByCode(Connection& connection, std::string_view codeHash);

/// The company's open invitations, oldest first.
std::vector<Invitation> open(Connection& connection, std::string_view companyID);

/// How many were made since then, whatever became of them.
int countSince(Connection& connection, std::string_view companyID, std::string_view since);

void insert(Connection& connection, const Invitation& invitation, std::string_view codeHash);

void writeAccepted(Connection& connection, const Invitation& invitation, std::string_view now);
void writeRevoked(Connection& connection, const Invitation& invitation, std::string_view now);

/// Revokes what is open for this address.
void revokeFor(Connection& connection, std::string_view companyID, std::string_view email, std::string_view now);

}

}

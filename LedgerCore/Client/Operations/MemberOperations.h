#pragma once

#include <string>
#include <vector>

#include <QCoro/QCoroTask>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"
#include "LedgerCore/Domain/Records/Requests/AuditTrailPage.h"
#include "LedgerCore/Domain/Records/Requests/MemberCommands.h"

class OperationRunner;

/// What the store can have done to the members of the company, to the signed-in person and to the company itself.
class MemberOperations {
public:
    QCoro::Task<Result<InviteResponse>> invite(Invite invitation, bool publishError);
    QCoro::Task<Result<std::vector<PendingInvitation>>> loadInvitations(bool publishError);
    /// Beside whatever a person does, and given up for it.
    QCoro::Task<Result<std::vector<PendingInvitation>>> loadInvitationsQuietly();
    /// Gives the invitations that are left.
    QCoro::Task<Result<std::vector<PendingInvitation>>> revokeInvitation(std::string id, bool publishError);
    /// Only the fields that are set change.
    QCoro::Task<Result<void>> updateMember(std::string id, MemberUpdate update, bool publishError);
    QCoro::Task<Result<void>> updateProfile(std::string name, bool publishError);
    QCoro::Task<Result<void>> updateSettings(SettingsUpdate update);
    /// The part of the company's audit trail that the question asks for, the latest first. For owners.
    QCoro::Task<Result<AuditTrailPage>> loadAudit(AuditQuestion question, bool publishError);

protected:
    explicit MemberOperations(OperationRunner& runner) : m_runner{runner} {}
    ~MemberOperations() = default;

private:
    OperationRunner& m_runner;
};

#include "LedgerCore/Client/Operations/MemberOperations.h"

#include <utility>

#include "LedgerCore/Client/Operations/OperationRunner.h"

namespace {

QCoro::Task<Result<std::vector<PendingInvitation>>> listed(QCoro::Task<Result<InvitationListResponse>> asking)
{
    auto reply = co_await asking;
    if (!reply)
        co_return std::unexpected(reply.error());
    co_return std::move(reply->invitations);
}

std::vector<QueryField> queryOf(const AuditQuestion& question)
{
    std::vector<QueryField> query;
    const auto ask = [&query](std::string name, const std::string& value) {
        if (!value.empty())
            query.push_back({.name = std::move(name), .value = value});
    };
    ask("person", question.person);
    ask("kind", question.kind);
    ask("record", question.record);
    ask("day", question.day);
    if (question.below)
        ask("below", std::to_string(*question.below));
    return query;
}

}

QCoro::Task<Result<InviteResponse>> MemberOperations::invite(Invite invitation, bool publishError)
{
    return m_runner.ask<InviteResponse>({.method = "POST", .path = "v1/invites", .body = Json::encode(invitation)},
                                        OperationRunner::publishing(publishError));
}

QCoro::Task<Result<std::vector<PendingInvitation>>> MemberOperations::loadInvitations(bool publishError)
{
    return listed(
        m_runner.ask<InvitationListResponse>({.path = "v1/invites"}, OperationRunner::publishing(publishError)));
}

QCoro::Task<Result<std::vector<PendingInvitation>>> MemberOperations::loadInvitationsQuietly()
{
    return listed(m_runner.askQuietly<InvitationListResponse>({.path = "v1/invites"}));
}

QCoro::Task<Result<std::vector<PendingInvitation>>> MemberOperations::revokeInvitation(std::string id,
                                                                                       bool publishError)
{
    return listed(m_runner.ask<InvitationListResponse>({.method = "POST", .path = "v1/invites/" + id + "/revoke"},
                                                       OperationRunner::publishing(publishError)));
}

QCoro::Task<Result<void>> MemberOperations::updateMember(std::string id, MemberUpdate update, bool publishError)
{
    return m_runner.change({.method = "PATCH", .path = "v1/members/" + id, .body = Json::encode(update)},
                           OperationRunner::publishing(publishError));
}

QCoro::Task<Result<void>> MemberOperations::updateProfile(std::string name, bool publishError)
{
    const ProfileUpdate update{.name = std::move(name)};
    return m_runner.change({.method = "PATCH", .path = "v1/me/profile", .body = Json::encode(update)},
                           OperationRunner::publishing(publishError));
}

QCoro::Task<Result<void>> MemberOperations::updateSettings(SettingsUpdate update)
{
    return m_runner.change({.method = "PATCH", .path = "v1/settings", .body = Json::encode(update)},
                           OperationRunner::Publishing::on);
}

QCoro::Task<Result<AuditTrailPage>> MemberOperations::loadAudit(AuditQuestion question, bool publishError)
{
    return m_runner.ask<AuditTrailPage>({.path = "v1/audit", .query = queryOf(question)},
                                        OperationRunner::publishing(publishError));
}

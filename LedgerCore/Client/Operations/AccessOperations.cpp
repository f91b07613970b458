#include "LedgerCore/Client/Operations/AccessOperations.h"

#include <utility>

#include "LedgerCore/Client/Operations/SessionRunner.h"
#include "LedgerCore/Domain/Records/Requests/AccessCommands.h"
#include "LedgerCore/Domain/Records/Requests/Replies.h"

using enum OperationRunner::Publishing;
using enum SessionRunner::Session;

namespace {

APIRequest acceptance(std::string code, std::string locale)
{
    const InvitationAcceptance acceptance{.code = std::move(code), .locale = std::move(locale)};
    return {.method = "POST", .path = "v1/invites/accept", .body = Json::encode(acceptance)};
}

QCoro::Task<Result<void>> confirmed(QCoro::Task<Result<OK>> asking)
{
    const auto reply = co_await asking;
    if (!reply)
        co_return std::unexpected(reply.error());
    co_return reply->ok ? Result<void>{} : std::unexpected(clientError(ClientCode::invalidResponse));
}

}

QCoro::Task<Result<void>> AccessOperations::login(std::string email, std::string password)
{
    const Login login{.email = std::move(email), .password = std::move(password)};
    return m_runner.signIn("v1/auth/login", Json::encode(login), regular);
}

QCoro::Task<Result<void>> AccessOperations::registerCompany(Registration registration)
{
    return m_runner.signIn("v1/auth/register", Json::encode(registration), regular);
}

QCoro::Task<Result<AccessChallenge>> AccessOperations::startAccess(std::string email, std::string code,
                                                                   std::string purpose)
{
    const AccessStart start{.email = std::move(email),
                            .invitationCode = std::move(code),
                            .purpose = std::move(purpose),
                            .locale = m_runner.locale()};
    return m_runner.askSignedOut<AccessChallenge>("v1/auth/access/start", Json::encode(start));
}

QCoro::Task<Result<AccessVerification>> AccessOperations::verifyAccess(std::string challengeID, std::string code)
{
    const AccessCode handedIn{.challengeID = std::move(challengeID), .code = std::move(code)};
    return m_runner.askSignedOut<AccessVerification>("v1/auth/access/verify", Json::encode(handedIn));
}

QCoro::Task<Result<void>> AccessOperations::completeAccess(std::string challengeID, std::string ticket,
                                                           std::string name, std::string password)
{
    const AccessCompletion completion{.challengeID = std::move(challengeID),
                                      .ticket = std::move(ticket),
                                      .name = std::move(name),
                                      .password = std::move(password),
                                      .locale = m_runner.locale()};
    return m_runner.signIn("v1/auth/access/complete", Json::encode(completion), regular);
}

QCoro::Task<Result<void>> AccessOperations::loginAndAcceptInvitation(std::string email, std::string password,
                                                                     std::string code)
{
    const Login login{.email = std::move(email), .password = std::move(password)};
    return m_runner.signInAndEnter(Json::encode(login), acceptance(std::move(code), m_runner.locale()));
}

QCoro::Task<Result<void>> AccessOperations::startDemo(std::optional<std::string> locale, std::string profile)
{
    const DemoRequest demo{.locale = std::move(locale), .profile = std::move(profile)};
    return m_runner.signIn("v1/demo", Json::encode(demo), demonstration);
}

QCoro::Task<Result<void>> AccessOperations::changePassword(std::string current, std::string chosen)
{
    const PasswordChange change{.currentPassword = std::move(current), .newPassword = std::move(chosen)};
    return confirmed(m_runner.ask<OK>({.method = "POST", .path = "v1/me/password", .body = Json::encode(change)}, on));
}

QCoro::Task<Result<CompanyChoices>> AccessOperations::listCompanies()
{
    return m_runner.ask<CompanyChoices>({.path = "v1/me/companies"}, on);
}

QCoro::Task<Result<void>> AccessOperations::switchCompany(std::string id)
{
    const CompanySwitch wanted{.companyID = std::move(id)};
    return m_runner.enter({.method = "POST", .path = "v1/me/companies/switch", .body = Json::encode(wanted)});
}

QCoro::Task<Result<PendingCompanyRegistration>> AccessOperations::createAnotherCompany(std::string name,
                                                                                       std::string requestID)
{
    const CompanyApplication application{.companyName = std::move(name), .requestID = std::move(requestID)};
    return m_runner.apply({.method = "POST", .path = "v1/me/companies", .body = Json::encode(application)});
}

QCoro::Task<Result<InvitationPreview>> AccessOperations::previewInvitation(std::string code)
{
    const InvitationLookup lookup{.code = std::move(code)};
    return m_runner.ask<InvitationPreview>({.method = "POST", .path = "v1/me/invitation", .body = Json::encode(lookup)},
                                           on);
}

QCoro::Task<Result<void>> AccessOperations::acceptCompanyInvitation(std::string code)
{
    return m_runner.enter(acceptance(std::move(code), m_runner.locale()));
}

QCoro::Task<Result<void>> AccessOperations::acceptInvitation(std::string code)
{
    return acceptCompanyInvitation(std::move(code));
}

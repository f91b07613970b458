#pragma once

#include <optional>
#include <string>

#include <QCoro/QCoroTask>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"

class SessionRunner;

/// The ways into a company: signing in, being invited, applying for one, and going over to another.
class AccessOperations {
public:
    QCoro::Task<Result<void>> login(std::string email, std::string password);
    QCoro::Task<Result<void>> registerCompany(Registration registration);
    QCoro::Task<Result<AccessChallenge>> startAccess(std::string email, std::string code, std::string purpose);
    QCoro::Task<Result<AccessVerification>> verifyAccess(std::string challengeID, std::string code);
    /// Signs in. `name` is empty where the account exists already.
    QCoro::Task<Result<void>> completeAccess(std::string challengeID, std::string ticket, std::string name,
                                             std::string password);
    /// Signs in to the company of the invitation, or not at all.
    QCoro::Task<Result<void>> loginAndAcceptInvitation(std::string email, std::string password, std::string code);
    QCoro::Task<Result<void>> startDemo(std::optional<std::string> locale, std::string profile);

    /// Sets another password of the signed-in person, whose sessions elsewhere end.
    QCoro::Task<Result<void>> changePassword(std::string current, std::string chosen);

    QCoro::Task<Result<CompanyChoices>> listCompanies();
    QCoro::Task<Result<void>> switchCompany(std::string id);
    /// `requestID` stays the same however often one form is sent.
    QCoro::Task<Result<PendingCompanyRegistration>> createAnotherCompany(std::string name, std::string requestID);
    QCoro::Task<Result<InvitationPreview>> previewInvitation(std::string code);
    /// Goes over to the company of the invitation.
    QCoro::Task<Result<void>> acceptCompanyInvitation(std::string code);
    QCoro::Task<Result<void>> acceptInvitation(std::string code);

protected:
    explicit AccessOperations(SessionRunner& runner) : m_runner{runner} {}
    ~AccessOperations() = default;

private:
    SessionRunner& m_runner;
};

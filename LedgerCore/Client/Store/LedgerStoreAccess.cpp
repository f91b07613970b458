#include <utility>

#include <QPointer>

#include "LedgerCore/Client/Http/APIClient.h"
#include "LedgerCore/Client/Session/SessionCredentialStore.h"
#include "LedgerCore/Client/Snapshots/AccessReply.h"
#include "LedgerCore/Client/Store/BooksReading.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Client/Store/StoreOperation.h"
#include "LedgerCore/Domain/Records/AccessCommands.h"

QCoro::Task<Result<void>> LedgerStore::registerCompany(Registration registration)
{
    return operation(Publishing::on, [this, body = Json::encode(registration)] {
        return authenticate("v1/auth/register", body, Session::regular);
    });
}

QCoro::Task<Result<AccessChallenge>> LedgerStore::startAccess(std::string email, std::string code, std::string purpose)
{
    const AccessStart start{.email = std::move(email),
                            .invitationCode = std::move(code),
                            .purpose = std::move(purpose),
                            .locale = locale()};
    return askSignedOut<AccessChallenge>("v1/auth/access/start", Json::encode(start));
}

QCoro::Task<Result<AccessVerification>> LedgerStore::verifyAccess(std::string challengeID, std::string code)
{
    const AccessCode handedIn{.challengeID = std::move(challengeID), .code = std::move(code)};
    return askSignedOut<AccessVerification>("v1/auth/access/verify", Json::encode(handedIn));
}

QCoro::Task<Result<void>> LedgerStore::completeAccess(std::string challengeID, std::string ticket, std::string name,
                                                      std::string password)
{
    const AccessCompletion completion{.challengeID = std::move(challengeID),
                                      .ticket = std::move(ticket),
                                      .name = std::move(name),
                                      .password = std::move(password),
                                      .locale = locale()};
    return operation(Publishing::on, [this, body = Json::encode(completion)] {
        return authenticate("v1/auth/access/complete", body, Session::regular);
    });
}

QCoro::Task<Result<CompanyChoices>> LedgerStore::listCompanies()
{
    return ask<CompanyChoices>({.path = "v1/me/companies"}, Publishing::on);
}

QCoro::Task<Result<InvitationPreview>> LedgerStore::previewInvitation(std::string code)
{
    const InvitationLookup lookup{.code = std::move(code)};
    return ask<InvitationPreview>({.method = "POST", .path = "v1/me/invitation", .body = Json::encode(lookup)},
                                  Publishing::on);
}

QCoro::Task<Result<void>> LedgerStore::switchCompany(std::string id)
{
    const CompanySwitch wanted{.companyID = std::move(id)};
    return operation(Publishing::on, [this, body = Json::encode(wanted)] {
        return enterCompany({.method = "POST", .path = "v1/me/companies/switch", .body = body});
    });
}

QCoro::Task<Result<void>> LedgerStore::acceptCompanyInvitation(std::string code)
{
    const InvitationAcceptance acceptance{.code = std::move(code), .locale = locale()};
    return operation(Publishing::on, [this, body = Json::encode(acceptance)] {
        return enterCompany({.method = "POST", .path = "v1/invites/accept", .body = body});
    });
}

QCoro::Task<Result<PendingCompanyRegistration>> LedgerStore::createAnotherCompany(std::string name,
                                                                                  std::string requestID)
{
    const CompanyApplication application{.companyName = std::move(name), .requestID = std::move(requestID)};
    const QPointer<LedgerStore> self = this;
    auto asking = ask<PendingCompanyRegistration>(
        {.method = "POST", .path = "v1/me/companies", .body = Json::encode(application)}, Publishing::on);
    auto pending = co_await asking;
    if (self && pending)
        holdApplication(*pending);
    co_return pending;
}

QCoro::Task<Result<void>> LedgerStore::loginAndAcceptInvitation(std::string email, std::string password,
                                                                std::string code)
{
    const Login login{.email = std::move(email), .password = std::move(password)};
    const InvitationAcceptance acceptance{.code = std::move(code), .locale = locale()};
    return operation(Publishing::on, [this, signIn = Json::encode(login), accept = Json::encode(acceptance)] {
        return signInAndAccept(signIn, accept);
    });
}

QCoro::Task<Result<void>> LedgerStore::enterCompany(APIRequest request)
{
    auto prepared = authorized(std::move(request));
    if (!prepared)
        co_return std::unexpected(prepared.error());
    const SavedSession session{.token = *m_token, .isDemo = m_isDemo};
    auto sent = exchangeForBooks(std::move(*prepared));
    auto reply = co_await sent;
    if (!reply)
        co_return std::unexpected(reply.error());
    auto opening = openCompany(std::move(*reply), session);
    co_return co_await opening;
}

QCoro::Task<Result<void>> LedgerStore::openCompany(BooksReply reply, SavedSession session)
{
    auto tag = std::string{reply.head.header("etag")};
    auto reading = read<AuthResponse>(std::move(reply), [token = session.token](SplitReply split) {
        return AccessReply::decodeOpened(std::move(split), token);
    });
    auto opened = co_await reading;
    if (!opened)
        co_return std::unexpected(opened.error());
    auto opening = open(std::move(*opened), session.isDemo, std::move(tag));
    co_return co_await opening;
}

QCoro::Task<Result<void>> LedgerStore::signInAndAccept(std::string login, std::string acceptance)
{
    if (m_token)
        co_return std::unexpected(clientError(ClientCode::alreadyAuthenticated));
    auto signingIn = signIn("v1/auth/login", std::move(login));
    auto signedIn = co_await signingIn;
    if (!signedIn)
        co_return std::unexpected(signedIn.error());
    if (auto* pending = std::get_if<PendingCompanyRegistration>(&signedIn->response)) {
        awaitReview(std::move(*pending));
        co_return Result<void>{};
    }

    const SavedSession session{.token = std::get<AuthResponse>(signedIn->response).token, .isDemo = false};
    const QPointer<LedgerStore> self = this;
    auto accepting = exchangeForBooks(
        {.method = "POST", .path = "v1/invites/accept", .token = session.token, .body = std::move(acceptance)});
    auto accepted = co_await accepting;
    Result<void> outcome;
    if (accepted) {
        auto opening = openCompany(std::move(*accepted), session);
        outcome = co_await opening;
    } else {
        outcome = std::unexpected(accepted.error());
    }
    // Nobody is left signed in to a company that was not asked for.
    if (self && !outcome)
        std::ignore =
            exchange({.method = "POST", .path = "v1/auth/logout", .token = session.token, .errand = Errand::farewell});
    co_return outcome;
}

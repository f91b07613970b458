#include <utility>

#include <QPointer>

#include "LedgerCore/Client/Session/Approval.h"
#include "LedgerCore/Client/Session/SessionCredentialStore.h"
#include "LedgerCore/Client/Snapshots/AccessReply.h"
#include "LedgerCore/Client/Snapshots/BooksReply.h"
#include "LedgerCore/Client/Snapshots/ReleasedByWorker.h"
#include "LedgerCore/Client/Snapshots/SnapshotLoading.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Client/Store/StoreOperation.h"
#include "LedgerCore/Domain/Records/Company.h"
#include "LedgerCore/Domain/Records/ServiceCode.h"

/// What a way of signing in was answered with.
struct LedgerStore::SignInReply {
    CompanyRegistrationResponse response;
    std::string tag; // of the snapshot
};

QCoro::Task<Result<void>> LedgerStore::signIn(std::string path, std::string body, Session session)
{
    return operation(Publishing::on, [this, path = std::move(path), body = std::move(body), session] {
        return authenticate(path, body, session);
    });
}

QCoro::Task<Result<void>> LedgerStore::signInAndEnter(std::string login, APIRequest entering)
{
    return operation(Publishing::on, [this, login = std::move(login), entering = std::move(entering)] {
        return authenticateAndEnter(login, entering);
    });
}

QCoro::Task<Result<void>> LedgerStore::enter(APIRequest request)
{
    return operation(Publishing::on, [this, request = std::move(request)] { return enterCompany(request); });
}

QCoro::Task<Result<PendingCompanyRegistration>> LedgerStore::apply(APIRequest request)
{
    const QPointer<LedgerStore> self = this;
    auto asking = ask<PendingCompanyRegistration>(std::move(request), Publishing::on);
    auto pending = co_await asking;
    if (!self || !pending)
        co_return pending;
    // A service that reviews nothing has opened the company already.
    if (pending->status == ApprovalStatus::approved)
        holdApplication(*pending);
    else
        awaitReview(*pending);
    co_return pending;
}

QCoro::Task<Result<LedgerStore::SignInReply>> LedgerStore::askToSignIn(std::string path, std::string body)
{
    assign(m_pendingCompanyRegistration, {}, &LedgerStore::pendingCompanyRegistrationChanged);
    assign(m_noticeMessage, {}, &LedgerStore::noticeMessageChanged);
    auto sent = BooksReply::asked(&m_connection, {.method = "POST", .path = std::move(path), .body = std::move(body)},
                                  m_snapshot);
    auto answered = co_await sent;
    if (!answered)
        co_return std::unexpected(answered.error());
    auto tag = answered->tag();
    auto reading = BooksReply::read<CompanyRegistrationResponse>(std::move(*answered), AccessReply::decode);
    auto response = co_await reading;
    if (!response)
        co_return std::unexpected(response.error());
    co_return SignInReply{.response = std::move(*response), .tag = std::move(tag)};
}

QCoro::Task<Result<void>> LedgerStore::authenticate(std::string path, std::string body, Session session)
{
    if (m_connection.token())
        co_return std::unexpected(clientError(ClientCode::alreadyAuthenticated));
    auto signingIn = askToSignIn(std::move(path), std::move(body));
    auto signedIn = co_await signingIn;
    if (!signedIn)
        co_return std::unexpected(signedIn.error());
    if (auto* pending = std::get_if<PendingCompanyRegistration>(&signedIn->response)) {
        awaitReview(std::move(*pending));
        co_return Result<void>{};
    }
    auto opening = open(std::move(std::get<AuthResponse>(signedIn->response)), session == Session::demonstration,
                        std::move(signedIn->tag));
    co_return co_await opening;
}

QCoro::Task<Result<void>> LedgerStore::open(AuthResponse opened, bool isDemo, std::string tag)
{
    if (const auto refused = Approval::whyNot(opened.snapshot.company))
        co_return std::unexpected(*refused);
    const SavedSession kept{.token = opened.token, .isDemo = isDemo};
    m_connection.setToken(kept.token);
    m_isSessionKept = false;
    assign(m_isDemo, kept.isDemo, &LedgerStore::isDemoChanged);
    replaceSnapshot(
        {.fresh = releasedByWorker<LedgerSnapshot>(std::move(opened.snapshot)), .held = {}, .tag = std::move(tag)});
    auto keeping = keepSession(kept);
    co_return co_await keeping;
}

void LedgerStore::awaitReview(PendingCompanyRegistration pending)
{
    holdApplication(std::move(pending));
    assign(m_noticeMessage, std::optional{friendly(clientError(ServiceCode::companyPending))},
           &LedgerStore::noticeMessageChanged);
}

void LedgerStore::holdApplication(PendingCompanyRegistration pending)
{
    assign(m_pendingCompanyRegistration,
           std::shared_ptr<const PendingCompanyRegistration>{
               std::make_shared<PendingCompanyRegistration>(std::move(pending))},
           &LedgerStore::pendingCompanyRegistrationChanged);
}

QCoro::Task<Result<void>> LedgerStore::enterCompany(APIRequest request)
{
    auto prepared = m_connection.authorized(std::move(request));
    if (!prepared)
        co_return std::unexpected(prepared.error());
    const SavedSession session{.token = m_connection.token().value_or(std::string{}), .isDemo = m_isDemo};
    auto sent = BooksReply::asked(&m_connection, std::move(*prepared), m_snapshot);
    auto reply = co_await sent;
    if (!reply)
        co_return std::unexpected(reply.error());
    auto opening = openCompany(std::move(*reply), session);
    co_return co_await opening;
}

QCoro::Task<Result<void>> LedgerStore::openCompany(BooksReply reply, SavedSession session)
{
    auto tag = reply.tag();
    auto reading = BooksReply::read<AuthResponse>(std::move(reply), [token = session.token](SplitReply split) {
        return AccessReply::decodeOpened(std::move(split), token);
    });
    auto opened = co_await reading;
    if (!opened)
        co_return std::unexpected(opened.error());
    const QPointer<LedgerStore> self = this;
    const bool isLeft = opened->token != session.token && !m_connection.sharesSession();
    auto opening = open(std::move(*opened), session.isDemo, std::move(tag));
    auto outcome = co_await opening;
    if (self && outcome && isLeft)
        m_connection.endSession(session.token);
    co_return outcome;
}

QCoro::Task<Result<void>> LedgerStore::authenticateAndEnter(std::string login, APIRequest entering)
{
    if (m_connection.token())
        co_return std::unexpected(clientError(ClientCode::alreadyAuthenticated));
    auto signingIn = askToSignIn("v1/auth/login", std::move(login));
    auto signedIn = co_await signingIn;
    if (!signedIn)
        co_return std::unexpected(signedIn.error());
    if (auto* pending = std::get_if<PendingCompanyRegistration>(&signedIn->response)) {
        awaitReview(std::move(*pending));
        co_return Result<void>{};
    }

    const SavedSession session{.token = std::get<AuthResponse>(signedIn->response).token, .isDemo = false};
    const QPointer<LedgerStore> self = this;
    entering.token = session.token;
    auto asking = BooksReply::asked(&m_connection, std::move(entering), m_snapshot);
    auto entered = co_await asking;
    Result<void> outcome;
    if (entered) {
        auto opening = openCompany(std::move(*entered), session);
        outcome = co_await opening;
    } else {
        outcome = std::unexpected(entered.error());
    }
    // Nobody is left signed in to a company that was not asked for.
    if (self && !outcome)
        m_connection.endSession(session.token);
    co_return outcome;
}

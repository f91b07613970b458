#include <utility>

#include <QPointer>

#include "LedgerCore/Client/Session/Approval.h"
#include "LedgerCore/Client/Session/SessionCredentialStore.h"
#include "LedgerCore/Client/Snapshots/AccessReply.h"
#include "LedgerCore/Client/Snapshots/ReleasedByWorker.h"
#include "LedgerCore/Client/Snapshots/SnapshotLoading.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Client/Store/StoreOperation.h"
#include "LedgerCore/Domain/Records/Company.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"

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
        tellOfReview(*pending);
    co_return pending;
}

QCoro::Task<Result<SessionOpening::Reply>> LedgerStore::askToSignIn(std::string path, std::string body)
{
    assign(m_pendingCompanyRegistration, {}, &LedgerStore::pendingCompanyRegistrationChanged);
    assign(m_noticeMessage, {}, &LedgerStore::noticeMessageChanged);
    return m_opening.ask({.method = "POST", .path = std::move(path), .body = std::move(body)}, m_snapshot,
                         AccessReply::decode);
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
        tellOfReview(std::move(*pending));
        co_return Result<void>{};
    }
    auto opening = open(std::move(*signedIn), session == Session::demonstration, {});
    co_return co_await opening;
}

QCoro::Task<Result<void>> LedgerStore::open(SessionOpening::Reply reply, bool isDemo, std::optional<std::string> left)
{
    auto& opened = std::get<AuthResponse>(reply.response);
    const SavedSession kept{.token = opened.token, .isDemo = isDemo};
    if (const auto refused = Approval::whyNot(opened.snapshot.company)) {
        if (kept.token != left)
            m_connection.endSession(kept.token);
        co_return std::unexpected(*refused);
    }
    m_connection.setToken(kept.token);
    m_isSessionKept = false;
    assign(m_isDemo, kept.isDemo, &LedgerStore::isDemoChanged);
    replaceSnapshot({.fresh = releasedByWorker<LedgerSnapshot>(std::move(opened.snapshot)),
                     .held = {},
                     .tag = std::move(reply.tag)});
    auto keeping = keepSession(kept, std::move(left));
    co_return co_await keeping;
}

void LedgerStore::tellOfReview(PendingCompanyRegistration pending)
{
    const bool isRejected = pending.status == ApprovalStatus::rejected;
    const auto& held = m_pendingCompanyRegistration;
    if (!isRejected)
        holdApplication(std::move(pending));
    else if (held && held->applicationID == pending.applicationID)
        assign(m_pendingCompanyRegistration, {}, &LedgerStore::pendingCompanyRegistrationChanged);
    const auto code = isRejected ? ServiceCode::companyRejected : ServiceCode::companyPending;
    assign(m_noticeMessage, std::optional{friendly(clientError(code))}, &LedgerStore::noticeMessageChanged);
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
    const auto token = m_connection.token();
    if (!token)
        co_return std::unexpected(clientError(ClientCode::noSession));
    auto entering = enterFrom({.token = *token, .isDemo = m_isDemo}, std::move(request));
    co_return co_await entering;
}

QCoro::Task<Result<void>> LedgerStore::enterFrom(SavedSession left, APIRequest request)
{
    request.token = left.token;
    auto asking = m_opening.ask(std::move(request), m_snapshot, [token = left.token](SplitReply split) {
        return AccessReply::decodeOpened(std::move(split), token);
    });
    auto entered = co_await asking;
    if (!entered)
        co_return std::unexpected(entered.error());
    auto opening = open(std::move(*entered), left.isDemo, left.token);
    co_return co_await opening;
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
        tellOfReview(std::move(*pending));
        co_return Result<void>{};
    }

    const SavedSession session{.token = std::get<AuthResponse>(signedIn->response).token, .isDemo = false};
    const QPointer<LedgerStore> self = this;
    auto going = enterFrom(session, std::move(entering));
    auto outcome = co_await going;
    // Nobody is left signed in to a company that was not asked for.
    if (self && !outcome)
        m_connection.endSession(session.token);
    co_return outcome;
}

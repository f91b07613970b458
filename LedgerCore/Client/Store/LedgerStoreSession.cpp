#include <tuple>
#include <utility>

#include <QPointer>

#include "LedgerCore/Client/Http/APIClient.h"
#include "LedgerCore/Client/Receipts/AttachmentCache.h"
#include "LedgerCore/Client/Session/Approval.h"
#include "LedgerCore/Client/Session/Clock.h"
#include "LedgerCore/Client/Session/SessionCredentialStore.h"
#include "LedgerCore/Client/Snapshots/AccessReply.h"
#include "LedgerCore/Client/Snapshots/ReleasedByWorker.h"
#include "LedgerCore/Client/Store/BooksReading.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Records/ServiceCode.h"

QCoro::Task<Result<void>> LedgerStore::login(std::string email, std::string password)
{
    auto body = Json::encode(Login{.email = std::move(email), .password = std::move(password)});
    return operation(Publishing::on,
                     [this, body = std::move(body)] { return authenticate("v1/auth/login", body, Session::regular); });
}

QCoro::Task<Result<void>> LedgerStore::startDemo(std::optional<std::string> locale, std::string profile)
{
    auto body = Json::encode(DemoRequest{.locale = std::move(locale), .profile = std::move(profile)});
    return operation(Publishing::on,
                     [this, body = std::move(body)] { return authenticate("v1/demo", body, Session::demonstration); });
}

QCoro::Task<Result<void>> LedgerStore::restoreSession()
{
    if (std::exchange(m_restored, true))
        co_return Result<void>{};
    auto running = operation(Publishing::on, [this] { return restore(); });
    auto outcome = co_await running;
    co_return outcome;
}

QCoro::Task<Result<void>> LedgerStore::logout()
{
    return operation(Publishing::on, [this] { return endSession(); });
}

QCoro::Task<Result<LedgerStore::SignInReply>> LedgerStore::signIn(std::string path, std::string body)
{
    assign(m_pendingCompanyRegistration, {}, &LedgerStore::pendingCompanyRegistrationChanged);
    assign(m_noticeMessage, {}, &LedgerStore::noticeMessageChanged);
    auto sent = exchangeForBooks({.method = "POST", .path = std::move(path), .body = std::move(body)});
    auto answered = co_await sent;
    if (!answered)
        co_return std::unexpected(answered.error());
    auto tag = std::string{answered->head.header("etag")};
    auto reading = read<CompanyRegistrationResponse>(std::move(*answered), AccessReply::decode);
    auto response = co_await reading;
    if (!response)
        co_return std::unexpected(response.error());
    co_return SignInReply{.response = std::move(*response), .tag = std::move(tag)};
}

QCoro::Task<Result<void>> LedgerStore::authenticate(std::string path, std::string body, Session session)
{
    if (m_token)
        co_return std::unexpected(clientError(ClientCode::alreadyAuthenticated));
    auto signingIn = signIn(std::move(path), std::move(body));
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
    m_token = kept.token;
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

QCoro::Task<Result<void>> LedgerStore::keepSession(SavedSession session)
{
    const QPointer<LedgerStore> self = this;
    auto saving = m_environment.credentials.saveSession(std::move(session), m_endpoint);
    const auto saved = co_await saving;
    if (!self)
        co_return Result<void>{};
    m_isSessionKept = saved.has_value();
    // The session goes on in memory; the user learns that it will not outlast the program.
    if (!saved)
        publish(saved.error());
    co_return Result<void>{};
}

QCoro::Task<Result<void>> LedgerStore::restore()
{
    const QPointer<LedgerStore> self = this;
    auto readingSaved = m_environment.credentials.readSession(m_endpoint);
    const auto saved = co_await readingSaved;
    if (!self)
        co_return std::unexpected(Cancelled{});
    if (!saved) {
        clearMemory();
        co_return std::unexpected(clientError(ClientCode::keychainRestoreUnavailable));
    }
    const auto& session = *saved;
    if (!session)
        co_return Result<void>{};

    m_token = session->token;
    m_isSessionKept = true;
    assign(m_isDemo, session->isDemo, &LedgerStore::isDemoChanged);
    auto loading = load();
    auto loaded = co_await loading;
    if (!self || loaded)
        co_return loaded;
    auto clearing = clearExpiredSession(loaded.error());
    co_await clearing;
    if (self)
        clearMemory();
    co_return loaded;
}

QCoro::Task<Result<void>> LedgerStore::endSession()
{
    const QPointer<LedgerStore> self = this;
    // Nobody waits for the service to take notice.
    if (auto request = authorized({.method = "POST", .path = "v1/auth/logout", .errand = Errand::farewell}))
        std::ignore = exchange(std::move(*request));
    clearMemory();
    auto deleting = m_environment.credentials.deleteSession(m_endpoint);
    const auto deleted = co_await deleting;
    if (!self)
        co_return std::unexpected(Cancelled{});
    if (deleted)
        assign(m_errorMessage, {}, &LedgerStore::errorMessageChanged);
    else
        publish(clientError(ClientCode::keychainLogoutUnavailable));
    co_return Result<void>{};
}

QCoro::Task<void> LedgerStore::leave()
{
    auto request = authorized({.method = "POST", .path = "v1/auth/logout", .errand = Errand::farewell});
    if (m_isSessionKept || !request)
        co_return;
    auto telling = exchange(std::move(*request));
    co_await telling;
}

QCoro::Task<Result<void>> LedgerStore::clearExpiredSession(Failure failure)
{
    if (!m_token || !endsSession(failure))
        co_return Result<void>{};
    clearMemory();
    auto deleting = m_environment.credentials.deleteSession(m_endpoint);
    co_await deleting;
    co_return Result<void>{};
}

void LedgerStore::clearMemory()
{
    m_token.reset();
    m_kept.endSession();
    m_uploadedAttachmentMetadata.clear();
    m_attachmentCache.reset();
    refreshAttachmentCacheSize();
    assign(m_pendingCompanyRegistration, {}, &LedgerStore::pendingCompanyRegistrationChanged);
    assign(m_isDemo, false, &LedgerStore::isDemoChanged);
    assign(m_noticeMessage, {}, &LedgerStore::noticeMessageChanged);
    assign(m_lastRefresh, {}, &LedgerStore::lastRefreshChanged);
    noteStale(false);
    setSnapshot(nullptr);
}

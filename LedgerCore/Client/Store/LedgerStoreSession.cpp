#include <set>
#include <utility>

#include <QPointer>

#include "LedgerCore/Client/Receipts/AttachmentCache.h"
#include "LedgerCore/Client/Session/Clock.h"
#include "LedgerCore/Client/Session/SessionCredentialStore.h"
#include "LedgerCore/Client/Store/EntryDrafts.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Client/Store/StoreOperation.h"

namespace {

/// Whether what is kept is no longer this token: another window keeps its session in the same place, or has signed out.
bool holdsAnother(const std::optional<SavedSession>& saved, const std::string& token)
{
    return !saved || saved->token != token;
}

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

QCoro::Task<Result<void>> LedgerStore::keepSession(SavedSession session, std::optional<std::string> left)
{
    const QPointer<LedgerStore> self = this;
    auto looking = savedSession();
    const auto replaced = co_await looking;
    if (!self)
        co_return Result<void>{};
    auto saving = m_environment.credentials.saveSession(session, m_connection.address());
    const auto saved = co_await saving;
    if (!self)
        co_return Result<void>{};
    m_isSessionKept = saved.has_value();
    // The session goes on in memory; the user learns that it will not outlast the program.
    if (!saved)
        publish(saved.error());
    auto unreachable = left ? std::set{*left} : std::set<std::string>{};
    if (saved && replaced && *replaced)
        unreachable.insert((*replaced)->token);
    unreachable.erase(session.token);
    for (const auto& token : unreachable) {
        if (!m_connection.isUsed(token))
            m_connection.endSession(token);
    }
    co_return Result<void>{};
}

QCoro::Task<Result<void>> LedgerStore::restore()
{
    const QPointer<LedgerStore> self = this;
    auto readingSaved = m_environment.credentials.readSession(m_connection.address());
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

    m_connection.setToken(session->token);
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
    if (const auto token = m_connection.token())
        m_connection.endSession(*token);
    clearMemory();
    auto deleting = m_environment.credentials.deleteSession(m_connection.address());
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
    const QPointer<LedgerStore> self = this;
    m_opening.giveUp();
    if (m_drafts) {
        auto keeping = m_drafts->flush();
        co_await keeping;
        if (!self)
            co_return;
    }
    if (const auto token = m_connection.token()) {
        auto looking = savedSession();
        const auto saved = co_await looking;
        if (!self)
            co_return;
        const bool isLost = !m_isSessionKept || (saved && holdsAnother(*saved, *token));
        if (isLost && !m_connection.sharesSession())
            m_connection.endSession(*token);
    }
    auto ending = m_connection.sessionsEnded();
    co_await ending;
}

QCoro::Task<Result<std::optional<SavedSession>>> LedgerStore::savedSession()
{
    return m_environment.credentials.readSession(m_connection.address());
}

QCoro::Task<Result<void>> LedgerStore::clearExpiredSession(Failure failure)
{
    const auto expired = m_connection.token();
    if (!expired || !endsSession(failure))
        co_return Result<void>{};
    clearMemory();
    const QPointer<LedgerStore> self = this;
    auto looking = savedSession();
    const auto saved = co_await looking;
    if (!self || (saved && holdsAnother(*saved, *expired)))
        co_return Result<void>{};
    auto deleting = m_environment.credentials.deleteSession(m_connection.address());
    co_await deleting;
    co_return Result<void>{};
}

void LedgerStore::clearMemory()
{
    m_connection.setToken({});
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

#include "LedgerCore/Client/Session/SessionKeychain.h"

#include <utility>

#include <QCoro/QCoroFuture>

#include "LedgerCore/Client/Session/KeychainLock.h"
#include "LedgerCore/Client/Session/KeychainThread.h"
#include "LedgerCore/Domain/Json/Json.h"

namespace {

Failure unavailable()
{
    return clientError(ClientCode::keychainUnavailable);
}

/// A job on the item of the service address.
template <class Job>
Job* jobFor(const QString& account)
{
    auto* job = new Job(QString::fromLatin1(KeychainLock::service));
    job->setKey(account);
    return job;
}

}

QCoro::Task<Result<std::optional<SavedSession>>> SessionKeychain::readSession(std::string server)
{
    const auto account = QString::fromStdString(server);
    auto running =
        KeychainThread::run([account] { return jobFor<QKeychain::ReadPasswordJob>(account); }, account, m_patience);
    const auto answer = co_await running;
    if (answer.error == QKeychain::EntryNotFound)
        co_return std::optional<SavedSession>{};
    if (answer.error != QKeychain::NoError)
        co_return std::unexpected(unavailable());
    const auto session = Json::decode<SavedSession>(answer.text.toStdString());
    if (!session)
        co_return std::unexpected(unavailable());
    co_return std::optional{*session};
}

QCoro::Task<Result<void>> SessionKeychain::saveSession(SavedSession session, std::string server)
{
    const auto account = QString::fromStdString(server);
    const auto text = QString::fromStdString(Json::encode(session));
    auto running = KeychainThread::run(
        [account, text] {
            auto* job = jobFor<QKeychain::WritePasswordJob>(account); // replaces an item that is there
            job->setTextData(text);
            return job;
        },
        account, m_patience);
    const auto answer = co_await running;
    if (answer.error != QKeychain::NoError)
        co_return std::unexpected(unavailable());
    co_return Result<void>{};
}

QCoro::Task<Result<void>> SessionKeychain::deleteSession(std::string server)
{
    const auto account = QString::fromStdString(server);
    auto running =
        KeychainThread::run([account] { return jobFor<QKeychain::DeletePasswordJob>(account); }, account, m_patience);
    const auto answer = co_await running;
    if (answer.error != QKeychain::NoError && answer.error != QKeychain::EntryNotFound)
        co_return std::unexpected(unavailable());
    co_return Result<void>{};
}

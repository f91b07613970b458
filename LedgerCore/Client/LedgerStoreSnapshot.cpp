#include <utility>

#include <QPointer>

#include "LedgerCore/Client/APIClient.h"
#include "LedgerCore/Client/Approval.h"
#include "LedgerCore/Client/Clock.h"
#include "LedgerCore/Client/LedgerStore.h"
#include "LedgerCore/Client/ReleasedByWorker.h"

QCoro::Task<Result<void>> LedgerStore::refresh(bool publishError)
{
    return operation(publishing(publishError), [this] { return load(); });
}

QCoro::Task<Result<void>> LedgerStore::refreshFromUser()
{
    if (m_isBusy)
        co_return Result<void>{};
    const QPointer<LedgerStore> self = this;
    auto running = operation(Publishing::off, [this] { return load(); });
    auto outcome = co_await running;
    if (self && !outcome)
        publish(outcome.error());
    co_return outcome;
}

QCoro::Task<Result<void>> LedgerStore::refreshQuietly()
{
    requireMainThread();
    if (m_isBusy || m_quietRun != 0)
        co_return Result<void>{};
    m_quietRun = ++m_lastQuietRun;
    const auto run = m_quietRun;
    const QPointer<LedgerStore> self = this;
    auto fetching = fetchBooks(Errand::background);
    auto loaded = co_await fetching;
    // A person's operation that began meanwhile knows better.
    if (!self || m_quietRun != run)
        co_return std::unexpected(Cancelled{});
    m_quietRun = 0;
    const auto adopted = adopt(std::move(loaded));
    if (adopted || !m_token || !endsSession(adopted.error()))
        co_return adopted;
    auto clearing = clearExpiredSession(adopted.error());
    co_await clearing;
    if (self)
        publish(adopted.error());
    co_return adopted;
}

QCoro::Task<Result<void>> LedgerStore::load()
{
    const QPointer<LedgerStore> self = this;
    auto fetching = fetchBooks(Errand::person);
    auto loaded = co_await fetching;
    if (!self)
        co_return std::unexpected(Cancelled{});
    co_return adopt(std::move(loaded));
}

Result<void> LedgerStore::adopt(Result<LoadedSnapshot> loaded)
{
    if (!loaded) {
        if (m_snapshot && !std::holds_alternative<Cancelled>(loaded.error()))
            noteStale(true);
        return std::unexpected(loaded.error());
    }
    replaceSnapshot(std::move(*loaded));
    return {};
}

QCoro::Task<Result<LedgerStore::LoadedSnapshot>> LedgerStore::fetchBooks(Errand errand)
{
    auto fetching = fetchSnapshot({.path = "v1/snapshot", .errand = errand});
    auto loaded = co_await fetching;
    if (loaded) {
        if (const auto refused = Approval::whyNot(loaded->fresh->company))
            co_return std::unexpected(*refused);
    }
    co_return loaded;
}

QCoro::Task<Result<LedgerStore::LoadedSnapshot>> LedgerStore::fetchSnapshot(APIRequest request)
{
    auto prepared = authorized(std::move(request));
    if (!prepared)
        co_return std::unexpected(prepared.error());
    auto sent = exchange(std::move(*prepared));
    auto body = co_await sent;
    if (!body)
        co_return std::unexpected(body.error());
    auto reading = readSnapshot(*std::move(body));
    co_return co_await reading;
}

QCoro::Task<Result<LedgerStore::LoadedSnapshot>> LedgerStore::readSnapshot(std::string body)
{
    const auto loaded = std::make_shared<LoadedSnapshot>(LoadedSnapshot{.fresh = {}, .held = m_snapshot});
    const QPointer<LedgerStore> self = this;
    const auto size = body.size();
    auto reading = runForSize(size, [text = std::move(body), loaded]() mutable {
        auto decoded = Json::consume<LedgerSnapshot>(std::move(text));
        if (!decoded)
            return;
        loaded->isSame = loaded->held && *loaded->held == *decoded;
        loaded->fresh = loaded->isSame ? loaded->held : releasedByWorker<LedgerSnapshot>(std::move(*decoded));
    });
    co_await reading;
    if (!self)
        co_return std::unexpected(Cancelled{});
    if (!loaded->fresh)
        co_return std::unexpected(invalidResponse());
    co_return std::move(*loaded);
}

void LedgerStore::replaceSnapshot(LoadedSnapshot loaded)
{
    assign(m_lastRefresh, std::optional{m_environment.clock.now()}, &LedgerStore::lastRefreshChanged);
    noteStale(false);
    if (!loaded.isSame || loaded.held != m_snapshot)
        setSnapshot(std::move(loaded.fresh));
}

void LedgerStore::setSnapshot(SnapshotPointer snapshot)
{
    if (m_snapshot == snapshot)
        return;
    const auto member = signedIn();
    m_snapshot = std::move(snapshot);
    Q_EMIT snapshotChanged();
    if (signedIn() != member)
        Q_EMIT keptEntryChanged();
}

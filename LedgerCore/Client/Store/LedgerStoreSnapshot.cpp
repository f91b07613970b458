#include <utility>

#include <QPointer>

#include "LedgerCore/Client/Session/Approval.h"
#include "LedgerCore/Client/Session/Clock.h"
#include "LedgerCore/Client/Snapshots/SnapshotLoading.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Client/Store/StoreOperation.h"

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
    auto fetching = SnapshotLoading::load(&m_connection, heldBooks(), Errand::background);
    auto loaded = co_await fetching;
    // A person's operation that began meanwhile knows better.
    if (!self || m_quietRun != run)
        co_return std::unexpected(Cancelled{});
    m_quietRun = 0;
    const auto adopted = adopt(std::move(loaded));
    if (adopted)
        co_return adopted;
    const bool isExpired = m_connection.token() && endsSession(adopted.error());
    if (isExpired) {
        auto clearing = clearExpiredSession(adopted.error());
        co_await clearing;
    }
    if (self && isExpired)
        publish(adopted.error());
    co_return adopted;
}

QCoro::Task<Result<void>> LedgerStore::load()
{
    const QPointer<LedgerStore> self = this;
    auto fetching = SnapshotLoading::load(&m_connection, heldBooks(), Errand::person);
    auto loaded = co_await fetching;
    if (!self)
        co_return std::unexpected(Cancelled{});
    co_return adopt(std::move(loaded));
}

Result<void> LedgerStore::adopt(Result<LoadedSnapshot> loaded)
{
    if (loaded) {
        if (const auto refused = Approval::whyNot(loaded->fresh->company))
            loaded = std::unexpected(*refused);
    }
    if (!loaded) {
        if (m_snapshot && !std::holds_alternative<Cancelled>(loaded.error()))
            noteStale(true);
        return std::unexpected(loaded.error());
    }
    replaceSnapshot(std::move(*loaded));
    return {};
}

HeldBooks LedgerStore::heldBooks() const
{
    return {.snapshot = m_snapshot, .tag = m_snapshotTag};
}

void LedgerStore::replaceSnapshot(LoadedSnapshot loaded)
{
    assign(m_lastRefresh, std::optional{m_environment.clock.now()}, &LedgerStore::lastRefreshChanged);
    noteStale(false);
    if (!loaded.isSame || loaded.held != m_snapshot)
        setSnapshot(std::move(loaded.fresh), std::move(loaded.tag));
    else
        m_snapshotTag = std::move(loaded.tag);
}

void LedgerStore::setSnapshot(SnapshotPointer snapshot, std::string tag)
{
    if (m_snapshot == snapshot)
        return;
    const auto member = signedIn();
    m_snapshot = std::move(snapshot);
    m_snapshotTag = std::move(tag);
    Q_EMIT snapshotChanged();
    if (signedIn() != member)
        Q_EMIT keptChanged();
}

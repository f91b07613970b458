#include <utility>

#include <QPointer>

#include "LedgerCore/Client/Http/APIClient.h"
#include "LedgerCore/Client/Session/Approval.h"
#include "LedgerCore/Client/Session/Clock.h"
#include "LedgerCore/Client/Snapshots/ReleasedByWorker.h"
#include "LedgerCore/Client/Snapshots/SnapshotDelta.h"
#include "LedgerCore/Client/Store/LedgerStore.h"

namespace {

/// What merging an entry costs, as if it were that many bytes to be read.
constexpr std::size_t mergedBytesPerEntry = 32;

}

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

QCoro::Task<Result<LedgerStore::LoadedSnapshot>> LedgerStore::fetchBooks(Errand errand)
{
    const LoadedSnapshot held{.fresh = m_snapshot, .held = m_snapshot, .isSame = true, .tag = m_snapshotTag};
    if (held.tag.empty()) {
        auto fetching = fetchWhole(errand);
        co_return co_await fetching;
    }
    auto request = authorized({.path = "v1/snapshot", .errand = errand});
    if (!request)
        co_return std::unexpected(request.error());
    request->headers = {{"If-None-Match", held.tag}, {"A-IM", "entries"}};
    const QPointer<LedgerStore> self = this;
    auto sent = exchange(std::move(*request));
    auto reply = co_await sent;
    if (!reply)
        co_return std::unexpected(reply.error());
    if (reply->status == HttpStatus::notModified)
        co_return held;
    const bool isDelta = reply->status == HttpStatus::deltaUsed;
    auto reading = isDelta ? readDelta(std::move(*reply), held) : readSnapshot(std::move(*reply));
    auto loaded = co_await reading;
    if (loaded || !isDelta || !self)
        co_return loaded;
    auto fetching = fetchWhole(errand);
    co_return co_await fetching;
}

QCoro::Task<Result<LedgerStore::LoadedSnapshot>> LedgerStore::fetchWhole(Errand errand)
{
    auto request = authorized({.path = "v1/snapshot", .errand = errand});
    if (!request)
        co_return std::unexpected(request.error());
    auto sent = exchange(std::move(*request));
    auto reply = co_await sent;
    if (!reply)
        co_return std::unexpected(reply.error());
    // Nobody asked for a part.
    if (reply->status == HttpStatus::deltaUsed)
        co_return std::unexpected(invalidResponse());
    auto reading = readSnapshot(std::move(*reply));
    co_return co_await reading;
}

QCoro::Task<Result<LedgerStore::LoadedSnapshot>> LedgerStore::readSnapshot(HttpReply reply)
{
    auto tag = std::string{reply.header("etag")};
    const auto loaded =
        std::make_shared<LoadedSnapshot>(LoadedSnapshot{.fresh = {}, .held = m_snapshot, .tag = std::move(tag)});
    const QPointer<LedgerStore> self = this;
    const auto size = reply.body.size();
    auto reading = runForSize(size, [text = std::move(reply.body), loaded]() mutable {
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

QCoro::Task<Result<LedgerStore::LoadedSnapshot>> LedgerStore::readDelta(HttpReply reply, LoadedSnapshot held)
{
    if (reply.header("im") != "entries" || reply.header("delta-base") != held.tag)
        co_return std::unexpected(invalidResponse());
    const auto loaded = std::make_shared<LoadedSnapshot>(
        LoadedSnapshot{.fresh = {}, .held = held.held, .tag = std::string{reply.header("etag")}});
    const QPointer<LedgerStore> self = this;
    const auto size = reply.body.size() + held.held->transactions.size() * mergedBytesPerEntry;
    auto reading = runForSize(size, [text = std::move(reply.body), loaded]() mutable {
        auto delta = SnapshotDelta::decode(std::move(text));
        auto merged = delta ? std::move(*delta).appliedTo(*loaded->held) : std::nullopt;
        if (!merged)
            return;
        loaded->isSame = *loaded->held == *merged;
        loaded->fresh = loaded->isSame ? loaded->held : releasedByWorker<LedgerSnapshot>(std::move(*merged));
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
        Q_EMIT keptEntryChanged();
}

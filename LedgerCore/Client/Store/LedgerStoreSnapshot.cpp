#include <utility>

#include <QPointer>

#include "LedgerCore/Client/Http/APIClient.h"
#include "LedgerCore/Client/Session/Approval.h"
#include "LedgerCore/Client/Session/Clock.h"
#include "LedgerCore/Client/Snapshots/ReleasedByWorker.h"
#include "LedgerCore/Client/Snapshots/SnapshotDelta.h"
#include "LedgerCore/Client/Store/BooksReading.h"
#include "LedgerCore/Client/Store/LedgerStore.h"

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
    auto sent = exchangeForBooks(std::move(*request));
    auto reply = co_await sent;
    if (!reply)
        co_return std::unexpected(reply.error());
    if (reply->head.status == HttpStatus::notModified)
        co_return held;
    const bool isDelta = reply->head.status == HttpStatus::deltaUsed;
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
    auto sent = exchangeForBooks(std::move(*request));
    auto reply = co_await sent;
    if (!reply)
        co_return std::unexpected(reply.error());
    // Nobody asked for a part.
    if (reply->head.status == HttpStatus::deltaUsed)
        co_return std::unexpected(invalidResponse());
    auto reading = readSnapshot(std::move(*reply));
    co_return co_await reading;
}

/// `next` beside the snapshot that is held, which stays where it says the same.
LedgerStore::LoadedSnapshot LedgerStore::compared(LedgerSnapshot next, SnapshotPointer held, std::string tag)
{
    const bool isSame = held && *held == next;
    auto fresh = isSame ? held : releasedByWorker<LedgerSnapshot>(std::move(next));
    return {.fresh = std::move(fresh), .held = std::move(held), .isSame = isSame, .tag = std::move(tag)};
}

QCoro::Task<Result<LedgerStore::LoadedSnapshot>> LedgerStore::readSnapshot(BooksReply reply)
{
    auto tag = std::string{reply.head.header("etag")};
    return read<LoadedSnapshot>(
        std::move(reply), [held = m_snapshot, tag = std::move(tag)](SplitReply split) -> std::optional<LoadedSnapshot> {
            auto next = Json::decode<LedgerSnapshot>(split.rest);
            return next && split.complete(*next) ? std::optional{compared(std::move(*next), held, tag)} : std::nullopt;
        });
}

QCoro::Task<Result<LedgerStore::LoadedSnapshot>> LedgerStore::readDelta(BooksReply reply, LoadedSnapshot held)
{
    if (reply.head.header("im") != "entries" || reply.head.header("delta-base") != held.tag)
        co_return std::unexpected(invalidResponse());
    auto tag = std::string{reply.head.header("etag")};
    auto reading = read<LoadedSnapshot>(
        std::move(reply), [base = held.held, tag = std::move(tag)](SplitReply split) -> std::optional<LoadedSnapshot> {
            auto delta = SnapshotDelta::decode(std::move(split));
            auto merged = delta ? std::move(*delta).appliedTo(*base) : std::nullopt;
            return merged ? std::optional{compared(std::move(*merged), base, tag)} : std::nullopt;
        });
    co_return co_await reading;
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

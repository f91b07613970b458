#include "LedgerCore/Client/Snapshots/SnapshotLoading.h"

#include <utility>

#include "LedgerCore/Client/Snapshots/ReleasedByWorker.h"
#include "LedgerCore/Client/Snapshots/SnapshotDelta.h"

namespace {

/// `next` beside the snapshot that is held, which stays where it says the same.
LoadedSnapshot compared(LedgerSnapshot next, SnapshotPointer held, std::string tag)
{
    const bool isSame = held && *held == next;
    auto fresh = isSame ? held : releasedByWorker<LedgerSnapshot>(std::move(next));
    return {.fresh = std::move(fresh), .held = std::move(held), .isSame = isSame, .tag = std::move(tag)};
}

/// The state that a tag names, whichever bytes it came in: of a reply that was packed on its way the tag is weak.
std::string_view stateOf(std::string_view tag)
{
    constexpr std::string_view weak = "W/";
    return tag.starts_with(weak) ? tag.substr(weak.size()) : tag;
}

QCoro::Task<Result<LoadedSnapshot>> readDelta(BooksReply reply, HeldBooks held)
{
    if (reply.head.header("im") != "entries" || stateOf(reply.head.header("delta-base")) != stateOf(held.tag))
        co_return std::unexpected(invalidResponse());
    auto tag = reply.tag();
    auto reading = BooksReply::read<LoadedSnapshot>(
        std::move(reply),
        [base = held.snapshot, tag = std::move(tag)](SplitReply split) -> std::optional<LoadedSnapshot> {
            auto delta = SnapshotDelta::decode(std::move(split));
            auto merged = delta ? std::move(*delta).appliedTo(*base) : std::nullopt;
            return merged ? std::optional{compared(std::move(*merged), base, tag)} : std::nullopt;
        });
    co_return co_await reading;
}

QCoro::Task<Result<LoadedSnapshot>> loadWhole(QPointer<ServiceConnection> connection, SnapshotPointer held,
                                              Errand errand)
{
    auto request = connection->authorized({.path = "v1/snapshot", .errand = errand});
    if (!request)
        co_return std::unexpected(request.error());
    auto sent = BooksReply::asked(connection, std::move(*request), held);
    auto reply = co_await sent;
    if (!reply)
        co_return std::unexpected(reply.error());
    // Nobody asked for a part.
    if (reply->head.status == HttpStatus::deltaUsed)
        co_return std::unexpected(invalidResponse());
    auto reading = SnapshotLoading::readWhole(std::move(*reply), std::move(held));
    co_return co_await reading;
}

}

QCoro::Task<Result<LoadedSnapshot>> SnapshotLoading::load(QPointer<ServiceConnection> connection, HeldBooks held,
                                                          Errand errand)
{
    if (held.tag.empty()) {
        auto loading = loadWhole(connection, held.snapshot, errand);
        co_return co_await loading;
    }
    auto request = connection->authorized({.path = "v1/snapshot", .errand = errand});
    if (!request)
        co_return std::unexpected(request.error());
    request->headers = {{"If-None-Match", held.tag}, {"A-IM", "entries"}};
    auto sent = BooksReply::asked(connection, std::move(*request), held.snapshot);
    auto reply = co_await sent;
    if (!reply)
        co_return std::unexpected(reply.error());
    if (reply->head.status == HttpStatus::notModified)
        co_return LoadedSnapshot{.fresh = held.snapshot, .held = held.snapshot, .isSame = true, .tag = held.tag};
    const bool isDelta = reply->head.status == HttpStatus::deltaUsed;
    auto reading = isDelta ? readDelta(std::move(*reply), held) : readWhole(std::move(*reply), held.snapshot);
    auto loaded = co_await reading;
    if (loaded || !isDelta || !connection)
        co_return loaded;
    auto loading = loadWhole(connection, held.snapshot, errand);
    co_return co_await loading;
}

QCoro::Task<Result<LoadedSnapshot>> SnapshotLoading::readWhole(BooksReply reply, SnapshotPointer held)
{
    auto tag = reply.tag();
    return BooksReply::read<LoadedSnapshot>(
        std::move(reply),
        [held = std::move(held), tag = std::move(tag)](SplitReply split) -> std::optional<LoadedSnapshot> {
            auto next = Json::decode<LedgerSnapshot>(split.rest);
            return next && split.complete(*next) ? std::optional{compared(std::move(*next), held, tag)} : std::nullopt;
        });
}

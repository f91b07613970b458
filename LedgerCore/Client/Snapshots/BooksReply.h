#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include <QPointer>

#include "LedgerCore/Client/Http/ServiceConnection.h"
#include "LedgerCore/Client/Snapshots/ReplyReading.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// A reply with a snapshot, which is read while it arrives.
struct BooksReply {
    HttpReply head; // without its body
    std::shared_ptr<ReplyReading> reading;
    QPointer<ServiceConnection> connection; // that it came by

    [[nodiscard]] std::string tag() const { return std::string{head.header("etag")}; }

    /// Sends a request whose reply is one. `held` are the books at hand: what is new in large books is few bytes, but
    /// much may have to be looked at.
    static QCoro::Task<Result<BooksReply>> asked(QPointer<ServiceConnection> connection, APIRequest request,
                                                 SnapshotPointer held);
    /// A reply that was sent like any other and turned out to be one.
    static BooksReply arrived(QPointer<ServiceConnection> connection, HttpReply reply, const SnapshotPointer& held);

    /// Gives what `decode` makes of a reply, on a worker where it is long.
    template <class Record>
    static QCoro::Task<Result<Record>> read(BooksReply reply, std::function<std::optional<Record>(SplitReply)> decode);
};

template <class Record>
QCoro::Task<Result<Record>> BooksReply::read(BooksReply reply, std::function<std::optional<Record>(SplitReply)> decode)
{
    const auto record = std::make_shared<std::optional<Record>>();
    auto reading = ReplyReading::finish(reply.reading, [record, decode](std::optional<SplitReply> split) {
        if (split)
            *record = decode(std::move(*split));
    });
    co_await reading;
    if (!reply.connection)
        co_return std::unexpected(Cancelled{});
    if (auto& decoded = *record)
        co_return std::move(*decoded);
    co_return std::unexpected(invalidResponse());
}

#include "LedgerCore/Client/Snapshots/BooksReply.h"

namespace {

std::size_t quicklyReadBytes(const SnapshotPointer& held)
{
    constexpr std::size_t manyEntries = 2000;
    return held && held->transactions.size() > manyEntries ? 0 : quicklyRead;
}

}

QCoro::Task<Result<BooksReply>> BooksReply::asked(QPointer<ServiceConnection> connection, APIRequest request,
                                                  SnapshotPointer held)
{
    const auto reading = std::make_shared<ReplyReading>(quicklyReadBytes(held));
    request.sink = reading;
    auto sent = connection->exchange(std::move(request));
    auto reply = co_await sent;
    if (!reply)
        co_return std::unexpected(reply.error());
    co_return BooksReply{.head = std::move(*reply), .reading = reading, .connection = connection};
}

BooksReply BooksReply::arrived(QPointer<ServiceConnection> connection, HttpReply reply, const SnapshotPointer& held)
{
    auto whole = std::make_shared<ReplyReading>(quicklyReadBytes(held));
    whole->take(std::exchange(reply.body, {}));
    return {.head = std::move(reply), .reading = std::move(whole), .connection = std::move(connection)};
}

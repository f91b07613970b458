#pragma once

#include <utility>

#include <QPointer>

#include "LedgerCore/Client/Http/APIClient.h"
#include "LedgerCore/Client/Snapshots/ReplyReading.h"
#include "LedgerCore/Client/Store/LedgerStore.h"

template <class Record>
QCoro::Task<Result<Record>> LedgerStore::read(BooksReply reply, std::function<std::optional<Record>(SplitReply)> decode)
{
    const auto record = std::make_shared<std::optional<Record>>();
    const QPointer<LedgerStore> self = this;
    auto reading = ReplyReading::finish(reply.reading, [record, decode](std::optional<SplitReply> split) {
        if (split)
            *record = decode(std::move(*split));
    });
    co_await reading;
    if (!self)
        co_return std::unexpected(Cancelled{});
    if (auto& decoded = *record)
        co_return std::move(*decoded);
    co_return std::unexpected(invalidResponse());
}

#pragma once

#include <utility>

#include <QPointer>

#include "LedgerCore/Client/Store/LedgerStore.h"

template <class Value>
QCoro::Task<Result<Value>> LedgerStore::operation(Publishing publishing,
                                                  std::function<QCoro::Task<Result<Value>>()> work)
{
    if (const auto refused = begin(publishing))
        co_return std::unexpected(*refused);
    const QPointer<LedgerStore> self = this;
    auto running = work();
    auto outcome = co_await running;
    if (self) {
        auto finishing = finish(publishing, outcome ? std::nullopt : std::optional{outcome.error()});
        co_await finishing;
    }
    co_return outcome;
}

template <class Record>
QCoro::Task<Result<Record>> LedgerStore::askSignedOut(std::string path, std::string body)
{
    const auto record = std::make_shared<Record>();
    auto running = operation(Publishing::on, [this, path = std::move(path), body = std::move(body), record] {
        return fetchRecord({.method = "POST", .path = path, .body = body}, [record](const std::string& text) {
            auto decoded = Json::decode<Record>(text);
            if (decoded)
                *record = std::move(*decoded);
            return decoded.has_value();
        });
    });
    const auto asked = co_await running;
    if (!asked)
        co_return std::unexpected(asked.error());
    co_return std::move(*record);
}

#pragma once

#include <utility>

#include <QPointer>

#include "LedgerCore/Client/Store/LedgerStore.h"

/// What a kept command is settled with: why its attempt failed, or null.
const Failure* failureIn(const auto& outcome)
{
    return outcome ? nullptr : &outcome.error();
}

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

#pragma once

#include <memory>
#include <utility>

#include <QThreadPool>

/// Makes a shared value that is too large to be taken apart within a frame: once nobody holds it any more, a worker
/// does so. Whoever lets go of it last, on whichever thread, does not wait.
template <class Value, class... Arguments>
std::shared_ptr<const Value> releasedByWorker(Arguments&&... arguments)
{
    return {new const Value(std::forward<Arguments>(arguments)...),
            [](const Value* last) { QThreadPool::globalInstance()->start([last] { delete last; }); }};
}

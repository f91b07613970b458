#pragma once

#include <malloc.h>
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

/// The same for a value that is made once in a while and copies much of the books: the worker also hands the room it
/// took back to the system, which keeps small blocks for the program otherwise.
template <class Value, class... Arguments>
std::shared_ptr<const Value> returnedByWorker(Arguments&&... arguments)
{
    return {new const Value(std::forward<Arguments>(arguments)...), [](const Value* last) {
                QThreadPool::globalInstance()->start([last] {
                    delete last;
                    malloc_trim(0);
                });
            }};
}

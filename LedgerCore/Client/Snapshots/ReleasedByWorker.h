#pragma once

#include <malloc.h>
#include <memory>
#include <utility>

#include <QThreadPool>

/// What becomes of the room that a value took.
enum class FreedRoom {
    kept,       // small blocks stay with the program, which is about to need them again
    handedBack, // to the system: the value copied much of the books, and its like is made once in a while
};

/// Makes a shared value that is too large to be taken apart within a frame: once nobody holds it any more, a worker
/// does so. Whoever lets go of it last, on whichever thread, does not wait.
template <class Value, FreedRoom room = FreedRoom::kept, class... Arguments>
std::shared_ptr<const Value> releasedByWorker(Arguments&&... arguments)
{
    return {new const Value(std::forward<Arguments>(arguments)...), [](const Value* last) {
                QThreadPool::globalInstance()->start([last] {
                    delete last;
                    if constexpr (room == FreedRoom::handedBack)
                        malloc_trim(0);
                });
            }};
}

#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <list>
#include <mutex>

namespace LedgerService {

/// Lets threads through one at a time, in the order in which they came.
class TurnQueue {
public:
    using Instant = std::chrono::steady_clock::time_point;

    /// Waits for the turn; false when it does not come in time.
    [[nodiscard]] bool enter(Instant until);
    /// Gives the turn to whoever has waited longest.
    void leave();
    /// How many wait.
    [[nodiscard]] std::size_t waiting();

private:
    struct Waiter {
        std::condition_variable woken;
        bool granted = false;
    };

    std::mutex m_guard;
    std::list<Waiter*> m_waiting;
    bool m_taken = false;
};

}

#pragma once

#include <chrono>
#include <thread>

namespace LedgerService {

/// Waits until the condition holds; false when it does not within a time that no sound machine takes, so that a test
/// fails and does not hang.
template <class Condition>
[[nodiscard]] bool eventually(const Condition& holds)
{
    const auto until = std::chrono::steady_clock::now() + std::chrono::seconds{30};
    while (!holds()) {
        if (std::chrono::steady_clock::now() > until)
            return false;
        std::this_thread::yield();
    }
    return true;
}

}

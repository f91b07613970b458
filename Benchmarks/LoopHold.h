#pragma once

#include <chrono>

#include <QTimer>

/// How long the event loop was away at the longest while this lives: what a person feels as the window standing still.
class LoopHold {
public:
    LoopHold();

    [[nodiscard]] std::chrono::duration<double, std::milli> longest() const { return m_longest; }

private:
    using Clock = std::chrono::steady_clock;

    QTimer m_tick;
    Clock::time_point m_last = Clock::now();
    std::chrono::duration<double, std::milli> m_longest{};
};

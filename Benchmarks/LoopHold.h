#pragma once

#include <chrono>

#include <QTimer>

/// The longest work, in processor time, between two rounds of the event loop while this lives: what a person feels as
/// the window standing still.
class LoopHold {
public:
    LoopHold();

    [[nodiscard]] std::chrono::nanoseconds longest() const { return m_longest; }

private:
    QTimer m_tick;
    std::chrono::nanoseconds m_last;
    std::chrono::nanoseconds m_longest{};
};

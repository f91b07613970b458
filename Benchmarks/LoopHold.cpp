#include "Benchmarks/LoopHold.h"

#include <algorithm>

namespace {

constexpr std::chrono::milliseconds often{1}; // without a pause it would take a processor from the workers

}

LoopHold::LoopHold()
{
    QObject::connect(&m_tick, &QTimer::timeout, &m_tick, [this] {
        const auto now = Clock::now();
        m_longest = std::max<std::chrono::duration<double, std::milli>>(m_longest, now - m_last);
        m_last = now;
    });
    m_tick.setTimerType(Qt::PreciseTimer);
    m_tick.start(often);
}

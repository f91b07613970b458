#include "Benchmarks/LoopHold.h"

#include <algorithm>

#include "Benchmarks/Samples.h"

namespace {

constexpr std::chrono::milliseconds often{1}; // without a pause it would take a processor from the workers

}

LoopHold::LoopHold() : m_last{threadTime()}
{
    QObject::connect(&m_tick, &QTimer::timeout, &m_tick, [this] {
        const auto now = threadTime();
        m_longest = std::max(m_longest, now - m_last);
        m_last = now;
    });
    m_tick.setTimerType(Qt::PreciseTimer);
    m_tick.start(often);
}

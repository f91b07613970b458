#include "LedgerService/Storage/TurnQueue.h"

namespace LedgerService {

bool TurnQueue::enter(Instant until)
{
    std::unique_lock guard{m_guard};
    if (!m_taken) {
        m_taken = true;
        return true;
    }
    Waiter waiter;
    const auto place = m_waiting.insert(m_waiting.end(), &waiter);
    if (!waiter.woken.wait_until(guard, until, [&] { return waiter.granted; }))
        m_waiting.erase(place);
    return waiter.granted;
}

std::size_t TurnQueue::waiting()
{
    const std::lock_guard guard{m_guard};
    return m_waiting.size();
}

void TurnQueue::leave()
{
    const std::lock_guard guard{m_guard};
    m_taken = !m_waiting.empty();
    if (!m_taken)
        return;
    auto& next = *m_waiting.front();
    m_waiting.pop_front();
    next.granted = true;
    next.woken.notify_one(); // under the guard: the waiter is gone as soon as it knows
}

}

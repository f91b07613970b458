#include "LedgerService/Storage/Sql/ReadGate.h"

namespace LedgerService {

void ReadGate::enter()
{
    std::unique_lock guard{m_guard};
    m_changed.wait(guard, [&] { return !m_closed; });
    ++m_inside;
}

void ReadGate::leave()
{
    const std::lock_guard guard{m_guard};
    --m_inside;
    m_changed.notify_all();
}

bool ReadGate::close(std::chrono::milliseconds patience)
{
    std::unique_lock guard{m_guard};
    m_closed = true;
    const bool alone = m_changed.wait_for(guard, patience, [&] { return m_inside == 0; });
    m_closed = alone;
    m_changed.notify_all();
    return alone;
}

void ReadGate::open()
{
    const std::lock_guard guard{m_guard};
    m_closed = false;
    m_changed.notify_all();
}

}

#include "LedgerUI/Presentation/SignIn/Countdown.h"

Countdown::Countdown(std::chrono::milliseconds second, QObject* parent) : QObject{parent}
{
    m_timer.setInterval(second);
    connect(&m_timer, &QTimer::timeout, this, [this] { start(m_left - 1); });
}

void Countdown::start(int seconds)
{
    m_left = seconds;
    if (seconds <= 0)
        m_timer.stop();
    else if (!m_timer.isActive())
        m_timer.start();
    Q_EMIT changed();
}

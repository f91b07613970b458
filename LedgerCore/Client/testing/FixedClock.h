#pragma once

#include "LedgerCore/Client/Session/Clock.h"

/// A clock that stands still until it is set. It begins at noon UTC on 20 November 2026.
class FixedClock final : public Clock {
public:
    [[nodiscard]] std::chrono::system_clock::time_point now() const override { return m_now; }

    void set(std::chrono::system_clock::time_point now) { m_now = now; }
    void advance(std::chrono::system_clock::duration by) { m_now += by; }

private:
    std::chrono::system_clock::time_point m_now =
        std::chrono::sys_days{std::chrono::year{2026} / std::chrono::November / 20} + std::chrono::hours{12};
};

#include "LedgerCore/Client/Session/Clock.h"

#include "LedgerCore/Domain/Calendar/LedgerDay.h"

std::string Clock::today() const
{
    return LedgerDay::localGregorian().day(now());
}

std::chrono::system_clock::time_point SystemClock::now() const
{
    return std::chrono::system_clock::now();
}

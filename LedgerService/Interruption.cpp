#include "LedgerService/Interruption.h"

#include <array>
#include <atomic>

#include <csignal>

namespace LedgerService {

namespace {

std::atomic<bool> watched = false;
std::atomic<int> received = 0; // free of locks, as a handler of signals needs it
std::atomic<int> shields = 0;

void receive(int number)
{
    received = number;
}

}

void Interruption::watch()
{
    watched = true;
    for (const int number : std::array{SIGTERM, SIGINT, SIGHUP}) {
        struct sigaction action = {};
        action.sa_handler = receive;
        action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
        sigaction(number, &action, nullptr);
    }
}

bool Interruption::isWatched()
{
    return watched;
}

int Interruption::signal()
{
    return received;
}

bool Interruption::isDue()
{
    return received != 0 && shields == 0;
}

void Interruption::heed()
{
    if (isDue())
        throw Interrupted{};
}

Interruption::Shield::Shield()
{
    ++shields;
}

Interruption::Shield::~Shield()
{
    --shields;
}

}

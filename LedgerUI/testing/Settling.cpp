#include "LedgerUI/testing/Settling.h"

#include <QCoreApplication>

void settle()
{
    constexpr int rounds = 8;
    for (int round = 0; round < rounds; ++round)
        QCoreApplication::processEvents();
}

#include "LedgerCore/Client/testing/WaitFor.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include "LedgerCore/Domain/Contract.h"

void waitUntil(const std::function<bool()>& condition)
{
    QTimer deadline;
    deadline.setSingleShot(true);
    deadline.start(std::chrono::seconds{30});
    while (!condition()) {
        require(deadline.isActive(), "what a test waits for happens within half a minute");
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

#pragma once

#include <semaphore>

#include <QThreadPool>

#include "LedgerCore/Client/Http/APIClient.h"
#include "LedgerCore/Client/testing/ScriptedServer.h"
#include "LedgerCore/Client/testing/WaitFor.h"
#include "LedgerCore/Domain/Contract.h"

/// Keeps every worker waiting while it lives: whatever is left to one cannot end.
class BusyWorkers {
public:
    BusyWorkers()
    {
        for (int each = 0; each < m_count; ++each)
            QThreadPool::globalInstance()->start([this] {
                m_started.release();
                m_end.acquire();
                m_ended.release();
            });
        for (int each = 0; each < m_count; ++each)
            m_started.acquire();
    }
    ~BusyWorkers()
    {
        m_end.release(m_count);
        for (int each = 0; each < m_count; ++each)
            m_ended.acquire();
    }
    BusyWorkers(const BusyWorkers&) = delete;
    BusyWorkers& operator=(const BusyWorkers&) = delete;

private:
    int m_count = QThreadPool::globalInstance()->maxThreadCount();
    std::counting_semaphore<> m_started{0};
    std::counting_semaphore<> m_end{0};
    std::counting_semaphore<> m_ended{0};
};

/// So many exchanges one after the other that a reply which was asked for before them has long arrived.
inline void exchangeMuch(ScriptedServer& server)
{
    server.replace("GET v1/other", ServerReply::json("{}"));
    const APIClient client{server.url()};
    for (int each = 0; each < 50; ++each)
        require(resultOf(client.bytes({.path = "v1/other"})).has_value(), "the server answers");
}

#include "LedgerService/Storage/LogKeeper.h"

#include <chrono>
#include <exception>
#include <utility>

#include "LedgerService/Log.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/DatabaseFailure.h"
#include "LedgerService/Storage/Sql/LogPages.h"
#include "LedgerService/Storage/TurnQueue.h"

namespace LedgerService {

namespace {

/// Many pages are written again and again: the more of them come in at once, the fewer are written to the file.
constexpr int step = 1'500;
/// How long the turn is waited for in which the log can begin anew; the work begins again soon.
constexpr std::chrono::seconds patience{1};

void pass(Connection& connection)
{
    connection.execute("PRAGMA wal_checkpoint(PASSIVE)");
}

}

LogKeeper::LogKeeper(std::string file, TurnQueue& writing)
    : m_file(std::move(file)), m_writing(writing), m_pages(std::make_shared<std::atomic<int>>()), m_next(step)
{
}

LogKeeper::~LogKeeper() = default;

void LogKeeper::watch(Connection& connection)
{
    LogPages::count(connection, m_pages);
}

void LogKeeper::heed()
{
    const int pages = *m_pages;
    if (pages < std::exchange(m_before, pages))
        m_next = step; // the log has begun anew
    if (pages < m_next)
        return;
    m_next = pages + step; // while somebody reads for long the log goes on growing
    const std::lock_guard guard{m_guard};
    if (!m_thread.joinable())
        m_thread = std::jthread{[this](const std::stop_token& stopping) { run(stopping); }};
    m_isDue = true;
    m_changed.notify_one();
}

bool LogKeeper::awaitWork(const std::stop_token& stopping)
{
    std::unique_lock guard{m_guard};
    m_changed.wait(guard, stopping, [this] { return m_isDue; });
    return std::exchange(m_isDue, false) && !stopping.stop_requested();
}

void LogKeeper::run(const std::stop_token& stopping)
{
    std::unique_ptr<Connection> connection;
    while (awaitWork(stopping)) {
        try {
            if (!connection) {
                connection = std::make_unique<Connection>(m_file);
                connection->execute("PRAGMA busy_timeout = 0"); // other processes are not waited for
            }
            bringIn(*connection);
        } catch (const std::exception& failure) { // the next work comes soon
            Log::failure("(database log)", DatabaseFailure::words(failure));
            connection.reset();
        }
    }
}

/// Most of it beside those who write. Only the little that is left then takes a turn, so that the next commit begins
/// the log anew.
void LogKeeper::bringIn(Connection& connection)
{
    pass(connection);
    pass(connection);
    if (!m_writing.enter(std::chrono::steady_clock::now() + patience))
        return;
    struct Leaving {
        ~Leaving() { writing.leave(); }
        TurnQueue& writing;
    };
    const Leaving leaving{m_writing};
    pass(connection);
}

}

#pragma once

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

namespace LedgerService {

class Connection;
class TurnQueue;

/// Brings what a file's log holds into the file while others write. A writer would otherwise do it after a commit, and
/// everybody whose reply waits for that commit would wait for it as well.
class LogKeeper {
public:
    /// `writing`: where those who write take turns.
    LogKeeper(std::string file, TurnQueue& writing);
    ~LogKeeper();
    LogKeeper(const LogKeeper&) = delete;
    LogKeeper& operator=(const LogKeeper&) = delete;

    /// From now on the connection leaves the log to this.
    void watch(Connection& connection);

    /// Begins when the log has grown. For whoever has the turn to write.
    void heed();

private:
    void run(const std::stop_token& stopping);
    bool awaitWork(const std::stop_token& stopping);
    void bringIn(Connection& connection);

    std::string m_file;
    TurnQueue& m_writing;
    std::shared_ptr<std::atomic<int>> m_pages; // in the log since it began anew
    int m_before = 0;                          // pages, when it was looked at last
    int m_next;                                // pages at which there is work
    std::mutex m_guard;
    std::condition_variable_any m_changed;
    bool m_isDue = false;
    std::jthread m_thread; // begins with the first work
};

}

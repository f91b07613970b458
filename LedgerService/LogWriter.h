#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <string>
#include <thread>

namespace LedgerService {

/// Writes lines to a file descriptor from a thread of its own. A reader at the other end of a pipe who stops, or goes,
/// neither holds up nor ends whoever has something to say.
class LogWriter {
public:
    explicit LogWriter(int descriptor);
    ~LogWriter();
    LogWriter(const LogWriter&) = delete;
    LogWriter& operator=(const LogWriter&) = delete;

    /// Takes a line with its end, or counts it as lost when too many wait.
    void add(std::string line);

private:
    void run(const std::stop_token& stopping);
    std::string takeBlock(std::unique_lock<std::mutex> guard);
    [[nodiscard]] bool write(std::string block, const std::stop_token& stopping) const;

    int m_descriptor;
    std::mutex m_guard;
    std::condition_variable_any m_changed;
    std::deque<std::string> m_lines;
    std::size_t m_lost = 0;
    std::jthread m_thread; // after what it uses
};

}

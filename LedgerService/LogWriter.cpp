#include "LedgerService/LogWriter.h"

#include <algorithm>
#include <chrono>
#include <climits>
#include <utility>

#include <fmt/core.h>
#include <poll.h>
#include <unistd.h>

namespace LedgerService {

namespace {

constexpr std::size_t mostLines = 4096;
/// A pipe that says it has room takes this much without blocking.
constexpr std::size_t blockBytes = PIPE_BUF;
constexpr int pollMilliseconds = 100;
/// How long the last lines are offered when the service ends.
constexpr std::chrono::seconds lastPatience{1};

}

LogWriter::LogWriter(int descriptor)
    : m_descriptor(descriptor), m_thread([this](const std::stop_token& stopping) { run(stopping); })
{
}

LogWriter::~LogWriter() = default;

void LogWriter::add(std::string line)
{
    {
        const std::lock_guard guard{m_guard};
        if (m_lines.size() >= mostLines) {
            ++m_lost;
            return;
        }
        m_lines.push_back(std::move(line));
    }
    m_changed.notify_one();
}

void LogWriter::run(const std::stop_token& stopping)
{
    for (;;) {
        std::unique_lock guard{m_guard};
        m_changed.wait(guard, stopping, [this] { return !m_lines.empty(); });
        if (m_lines.empty())
            return; // told to stop, and all is written
        if (!write(takeBlock(std::move(guard)), stopping) && stopping.stop_requested())
            return;
    }
}

/// As many lines as go out at once.
std::string LogWriter::takeBlock(std::unique_lock<std::mutex> guard)
{
    std::string block;
    if (m_lost > 0)
        block = fmt::format("({} lines were not taken and are lost)\n", std::exchange(m_lost, 0));
    while (!m_lines.empty() && (block.empty() || block.size() + m_lines.front().size() <= blockBytes)) {
        block += m_lines.front();
        m_lines.pop_front();
    }
    guard.unlock();
    return block;
}

/// False when nobody takes it.
bool LogWriter::write(std::string block, const std::stop_token& stopping) const
{
    const auto deadline = std::chrono::steady_clock::now() + lastPatience;
    while (!block.empty()) {
        pollfd taker{.fd = m_descriptor, .events = POLLOUT, .revents = 0};
        const int ready = poll(&taker, 1, pollMilliseconds);
        if (ready == 0 && stopping.stop_requested() && std::chrono::steady_clock::now() > deadline)
            return false;
        if (ready <= 0)
            continue;
        const auto written = ::write(m_descriptor, block.data(), std::min(block.size(), blockBytes));
        if (written < 0 && errno != EINTR && errno != EAGAIN)
            return false; // nobody reads any more
        block.erase(0, static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
    }
    return true;
}

}

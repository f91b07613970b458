#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include <boost/asio/awaitable.hpp>

#include "LedgerService/Http/Dispatch/Dispatcher.h"
#include "LedgerService/Http/HttpLimits.h"

namespace LedgerService {

/// The one thread that carries out commands, in the order of their arrival. Those that wait are carried out together:
/// one transaction, one durable commit, then the answers to all.
class CommandLane {
public:
    CommandLane(const Dispatcher& dispatcher, const HttpLimits& limits);
    ~CommandLane();
    CommandLane(const CommandLane&) = delete;
    CommandLane& operator=(const CommandLane&) = delete;

    /// Returns on the coroutine's own executor when the command has its outcome. Refused when too much waits.
    boost::asio::awaitable<void> carryOut(std::shared_ptr<Command> command);

    /// How many wait for their outcome, and for how long the first of them has. A command that waits for the database
    /// is one of them.
    struct Queue {
        std::size_t waiting = 0;
        std::chrono::steady_clock::duration longest{};
    };
    [[nodiscard]] Queue queue();

    /// Ends once the group under way is done. Commands that still wait are given up: their coroutines end.
    void stop();

private:
    using Steady = std::chrono::steady_clock;
    struct Waiting {
        std::shared_ptr<Command> command;
        std::function<void()> resume; // to be called once, by any thread
    };
    using Group = std::vector<Waiting>;

    void add(Waiting waiting);
    void run();
    bool awaitCommand();
    void carryOutGroup();
    std::optional<Waiting> take();
    Command* takeInto(Group& group);
    void begin(const Command& command);
    void finish();

    const Dispatcher& m_dispatcher;
    const HttpLimits& m_limits;
    std::mutex m_guard;
    std::condition_variable m_changed;
    std::deque<Waiting> m_waiting;
    std::size_t m_underWay = 0;          // commands of the group
    Steady::time_point m_groupArrived{}; // the first of them
    bool m_stopping = false;
    std::thread m_thread;
};

}

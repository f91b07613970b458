#pragma once

#include <cstddef>
#include <functional>
#include <limits>
#include <string>
#include <unordered_map>

#include <boost/asio/awaitable.hpp>
#include <boost/asio/thread_pool.hpp>

#include "LedgerService/Http/Dispatch/FairQueue.h"

namespace LedgerService {

/// Threads for one kind of work that blocks, with a fair queue in front of them.
class WorkLane {
public:
    /// How many may be in the lane, those that are worked on included. All clients take turns, so that nobody who asks
    /// for much keeps others out.
    struct Places {
        std::size_t ofClient = std::numeric_limits<std::size_t>::max();
        std::size_t ofAll = std::numeric_limits<std::size_t>::max(); // but for the first of each client
    };
    explicit WorkLane(unsigned threads) : WorkLane{threads, Places{}} {}
    WorkLane(unsigned threads, Places places);

    /// Places in the lane are counted by the network thread alone.
    [[nodiscard]] bool hasPlaceFor(const std::string& client) const;
    void takePlace(const std::string& client);
    void leavePlace(const std::string& client);
    [[nodiscard]] std::size_t waiting() const { return m_waiting; }

    /// Goes on in a thread of the lane when it is this client's turn.
    boost::asio::awaitable<void> enter(std::string client);

    /// Returns once what is being worked on is done. What still queues is given up.
    void stop();

private:
    Places m_places;
    std::size_t m_waiting = 0;
    std::unordered_map<std::string, std::size_t> m_waitingOf; // none of them 0
    FairQueue<std::function<void()>> m_queue;                 // what is left of it ends with the lane
    boost::asio::thread_pool m_pool;
};

/// The lanes of a server: slow work of one kind does not hold up the others.
struct WorkLanes {
    WorkLane readers; // requests that only read
    WorkLane writers; // may all wait for the database's lock, and readers do not wait with them
    WorkLane files;   // receive files, which the disk takes its time to keep
    WorkLane signIns; // hash passwords, which takes a processor for tens of milliseconds
    WorkLane mails;   // may wait for a mail server
};

}

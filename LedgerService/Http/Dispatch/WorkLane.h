#pragma once

#include <cstddef>
#include <functional>
#include <limits>
#include <string>

#include <boost/asio/awaitable.hpp>
#include <boost/asio/thread_pool.hpp>

#include "LedgerService/Http/Dispatch/FairQueue.h"

namespace LedgerService {

/// Threads for one kind of work that blocks, with a fair queue in front of them.
class WorkLane {
public:
    explicit WorkLane(unsigned threads, std::size_t most = std::numeric_limits<std::size_t>::max());

    /// Goes on in a thread of the lane when it is this client's turn.
    boost::asio::awaitable<void> enter(std::string client);

    /// Returns once what is being worked on is done. What still queues is given up.
    void stop();

    std::size_t mostWaiting; // those that are worked on included
    std::size_t waiting = 0; // only the network thread counts

private:
    FairQueue<std::function<void()>> m_queue; // what is left of it ends with the lane
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

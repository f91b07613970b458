#pragma once

#include <cstddef>
#include <limits>

#include <boost/asio/thread_pool.hpp>

namespace LedgerService {

/// Threads for one kind of work that blocks, with a queue in front of them.
struct WorkLane {
    explicit WorkLane(unsigned threads, std::size_t most = std::numeric_limits<std::size_t>::max())
        : pool(threads), mostWaiting(most)
    {
    }

    boost::asio::thread_pool pool;
    std::size_t mostWaiting; // those that are worked on included
    std::size_t waiting = 0; // only the network thread counts
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

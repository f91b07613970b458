#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>

namespace LedgerService {

/// What connections may take. Nothing that a client can make grow is without a limit.
struct HttpLimits {
    std::uint32_t headerBytes = 16 * 1024;
    std::chrono::milliseconds idle{75'000};   // between requests of one connection
    std::chrono::milliseconds header{10'000}; // from a header's first byte to its last
    std::chrono::milliseconds body{60'000};
    std::chrono::milliseconds replyBlock{30'000}; // for each block of a reply
    std::chrono::milliseconds queue{10'000};      // from a request's arrival to the beginning of its work
    std::size_t connections = 512;
    std::size_t connectionsPerClient = 128;                  // of one address; a proxy may have all of them
    std::size_t bodyBytes = std::size_t{64} * 1024 * 1024;   // of all unfinished bodies together
    std::size_t replyBytes = std::size_t{256} * 1024 * 1024; // of all replies that are not read yet
    std::size_t uncountedBytes = std::size_t{16} * 1024;     // of a body or a reply: so much everyone may have
    std::size_t signInsWaiting = 32;                         // of one client, for their password to be looked at
    std::size_t allSignInsWaiting = 128;                     // and still the first of each client
    std::size_t commandsWaiting = 1024;                      // for their turn to be written
};

}

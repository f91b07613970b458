#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <memory>
#include <string>

#include "LedgerService/Service.h"

namespace LedgerService {

/// What connections may take.
struct HttpLimits {
    std::uint32_t headerBytes = 16 * 1024;
    std::chrono::milliseconds idle{75'000};   // between requests of one connection
    std::chrono::milliseconds header{10'000}; // from a header's first byte to its last
    std::chrono::milliseconds body{60'000};
    std::chrono::milliseconds reply{120'000};
    std::size_t connections = 512;
};

struct ServerOptions {
    std::string address = "127.0.0.1";
    std::uint16_t port = 0; // 0 picks a free one
    std::string databaseFile;
    bool behindProxy = false; // the last X-Forwarded-For entry names the client
    ServicePolicy policy;
    HttpLimits limits;
    Clock clock = [] { return std::chrono::system_clock::now(); };
};

/// The running service: listens and answers on threads of its own until it is stopped or destroyed.
class Server {
public:
    /// Opens the database and listens, or says in words why not.
    static std::expected<std::unique_ptr<Server>, std::string> start(ServerOptions options);
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    [[nodiscard]] std::uint16_t port() const;

    /// Takes no new requests, finishes those under way and closes the database; returns when all is done.
    void stop();

private:
    struct State;
    explicit Server(std::unique_ptr<State> state);

    std::unique_ptr<State> m_state;
};

}

#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace LedgerService {

/// Running the service until it is told to end.
namespace Serve {

struct Options {
    std::string listen = "127.0.0.1:48731";
    std::string databaseFile;
    bool behindTlsProxy = false;
    std::optional<bool> demonstration; // unset: on a loopback address only
    bool quiet = false;                // logs failures only
};

struct Endpoint {
    std::string address; // numeric, without brackets
    std::uint16_t port = 0;

    [[nodiscard]] bool isLoopback() const;
    /// The address with its port as a client writes it.
    [[nodiscard]] std::string url() const;
};

/// Reads "127.0.0.1:48731" or "[::1]:48731"; nothing for other texts.
std::optional<Endpoint> parseEndpoint(const std::string& text);

/// Serves until SIGTERM or SIGINT, then ends cleanly; the exit code.
int run(const Options& options);

}

}

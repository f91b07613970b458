#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

/// A client that costs next to nothing, so that what is measured is the service: it takes what has arrived in large
/// pieces, into memory that it keeps from one reply to the next.
class WholeReply {
public:
    explicit WholeReply(std::uint16_t port);
    ~WholeReply();
    WholeReply(const WholeReply&) = delete;
    WholeReply& operator=(const WholeReply&) = delete;

    /// The body of the chunked reply to a request without a body; valid until the next one. Throws when the reply is
    /// cut off, or is not what was hoped for.
    std::string_view get(const std::string& path, const std::string& token);

private:
    struct Connection;
    void take();
    void awaitBytes(std::size_t count);

    std::unique_ptr<Connection> m_connection;
    std::string m_bytes;
    std::size_t m_arrived = 0;
};

#pragma once

#include <chrono>
#include <optional>
#include <utility>

#include <boost/asio/awaitable.hpp>
#include <boost/asio/buffer.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/stream.hpp>
#include <boost/beast/core/tcp_stream.hpp>

#include "LedgerService/Http/Connections/TlsCertificate.h"

namespace LedgerService {

/// The bytes of a connection in both directions, secured by TLS once `secure` has succeeded, plain before. Everything
/// that is waited for ends in time. Fits the stream operations of the HTTP and socket libraries.
class ClientStream {
public:
    using executor_type = boost::beast::tcp_stream::executor_type;

    explicit ClientStream(boost::asio::ip::tcp::socket socket);
    ClientStream(const ClientStream&) = delete; // what secures it refers to it
    ClientStream& operator=(const ClientStream&) = delete;

    executor_type get_executor() { return m_plain.get_executor(); }

    /// What is waited for from now on fails after this time, all of it together.
    void expiresAfter(std::chrono::milliseconds time) { m_plain.expires_after(time); }

    /// Agrees with the client on keys; `begun` is what has already arrived of that, and nothing else.
    boost::asio::awaitable<boost::beast::error_code> secure(TlsCertificate::Context context,
                                                            boost::asio::const_buffer begun);

    [[nodiscard]] bool isSecure() const { return m_secure.has_value(); }

    /// Tells the client that nothing more comes, and takes in what it still sends until it ends too.
    boost::asio::awaitable<void> leave();

    /// Ends the connection at once.
    void close();

    template <class Buffers, class Token>
    auto async_read_some(const Buffers& buffers, Token&& token)
    {
        return m_secure ? m_secure->async_read_some(buffers, std::forward<Token>(token))
                        : m_plain.async_read_some(buffers, std::forward<Token>(token));
    }

    template <class Buffers, class Token>
    auto async_write_some(const Buffers& buffers, Token&& token)
    {
        return m_secure ? m_secure->async_write_some(buffers, std::forward<Token>(token))
                        : m_plain.async_write_some(buffers, std::forward<Token>(token));
    }

private:
    boost::beast::tcp_stream m_plain;
    TlsCertificate::Context m_context; // outlives what is secured with it
    std::optional<boost::asio::ssl::stream<boost::beast::tcp_stream&>> m_secure;
};

}

#pragma once

#include <memory>
#include <optional>
#include <string>

#include <boost/asio/awaitable.hpp>
#include <boost/asio/thread_pool.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>

#include "LedgerService/Http/Dispatcher.h"
#include "LedgerService/Http/Server.h"

namespace LedgerService {

/// What all connections of a server share.
struct HttpShared {
    const Dispatcher& dispatcher;
    const RouteTable& routes;
    const HttpLimits& limits;
    boost::asio::thread_pool& readers; // the requests' own work, which blocks
    boost::asio::thread_pool& writers; // may all wait for the database's lock, and readers do not wait with them
    bool behindProxy = false;
    bool stopping = false; // only the network thread reads and writes it
};

/// One client's connection: its requests, one after the other. Lives on the network thread.
class HttpConnection : public std::enable_shared_from_this<HttpConnection> {
public:
    HttpConnection(boost::asio::ip::tcp::socket socket, HttpShared& shared);

    /// Serves until the client leaves, breaks a limit or the server stops.
    static boost::asio::awaitable<void> serve(std::shared_ptr<HttpConnection> self);

    /// Ends the connection now if no request is under way, else after its reply.
    void finish();

    /// Ends it at once.
    void abandon();

private:
    using Parser = boost::beast::http::request_parser<boost::beast::http::string_body>;

    boost::asio::awaitable<bool> awaitRequest();
    boost::asio::awaitable<bool> answerOne();
    boost::asio::awaitable<boost::beast::error_code> readHeader(Parser& parser);
    boost::asio::awaitable<boost::beast::error_code> readBody(Parser& parser, std::size_t limit);
    boost::asio::awaitable<bool> refuse(boost::beast::error_code failure);
    boost::asio::awaitable<bool> write(Reply reply, bool keepAlive);
    boost::asio::awaitable<bool> writeBlocks(Reply reply, bool keepAlive);
    boost::asio::awaitable<void> linger();
    [[nodiscard]] Request requestOf(Parser& parser) const;

    boost::beast::tcp_stream m_stream;
    boost::beast::flat_buffer m_buffer;
    std::string m_remote;
    HttpShared& m_shared;
    bool m_idle = true;
    bool m_headAsked = false; // the request under way is answered without a body
    unsigned m_version = 11;  // of HTTP, as the client speaks it
};

}

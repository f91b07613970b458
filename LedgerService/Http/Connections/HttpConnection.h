#pragma once

#include <array>
#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include <boost/asio/awaitable.hpp>
#include <boost/asio/buffer.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/buffer_body.hpp>
#include <boost/beast/http/parser.hpp>

#include "LedgerService/Http/Connections/ByteBudget.h"
#include "LedgerService/Http/Connections/ClientStream.h"
#include "LedgerService/Http/Connections/HttpShared.h"
#include "LedgerService/Http/Connections/RequestHead.h"
#include "LedgerService/Http/Connections/ServerLoad.h"

namespace LedgerService {

/// One client's connection: its requests, one after the other. Lives on the network thread.
class HttpConnection : public std::enable_shared_from_this<HttpConnection> {
public:
    HttpConnection(boost::asio::ip::tcp::socket socket, RequestHead::Ends ends, HttpShared& shared);

    /// Serves until the client leaves, breaks a limit or the server stops.
    static boost::asio::awaitable<void> serve(std::shared_ptr<HttpConnection> self);

    /// Ends the connection now if no whole request is under way, else after its reply.
    void finish();

    /// Ends it at once.
    void abandon();

    /// Whether it is the client's turn to send or to read.
    [[nodiscard]] bool isWaiting() const { return m_phase != Phase::working && m_phase != Phase::gone; }
    [[nodiscard]] bool isGone() const { return m_phase == Phase::gone; }
    /// What it is about, for those who watch the service.
    [[nodiscard]] ServerLoad::Phase about() const;
    /// When the client last did what is its turn to do.
    [[nodiscard]] std::chrono::steady_clock::time_point lastProgress() const { return m_progress; }
    [[nodiscard]] const std::string& client() const { return m_client; }
    [[nodiscard]] bool holdsBody() const { return m_phase == Phase::readingBody && m_bodyShare.isCounted(); }
    [[nodiscard]] bool holdsReply() const { return m_phase == Phase::replying && m_replyShare.isCounted(); }

private:
    using Parser = boost::beast::http::request_parser<boost::beast::http::buffer_body>;
    using Parts = std::array<boost::asio::const_buffer, 3>;
    enum class Phase { idle, readingHeader, readingBody, working, replying, leaving, gone };

    boost::asio::awaitable<bool> secure();
    boost::asio::awaitable<bool> awaitRequest();
    boost::asio::awaitable<bool> readMore();
    boost::asio::awaitable<bool> answerOne();
    boost::asio::awaitable<boost::beast::error_code> readHeader();
    enum class Body { kept, dropped };
    boost::asio::awaitable<boost::beast::error_code> readBody(std::size_t limit, Body body);
    boost::asio::awaitable<bool> turnAway(std::optional<Refusal> refusal);
    boost::asio::awaitable<bool> write(Reply reply, bool keepAlive);
    boost::asio::awaitable<bool> writeWhole(Reply reply, bool keepAlive);
    boost::asio::awaitable<bool> writeBlocks(Reply reply, bool keepAlive);
    boost::asio::awaitable<bool> send(Parts parts);
    boost::asio::awaitable<void> linger();
    void enter(Phase phase);
    [[nodiscard]] bool hasRequest();
    [[nodiscard]] bool asksWhoSends(const RouteMatch& match) const;
    [[nodiscard]] bool speaks10() const;
    [[nodiscard]] bool holdBody(std::size_t bytes);
    [[nodiscard]] bool holdReply(std::size_t bytes);

    ClientStream m_stream;
    RequestHead::Ends m_ends;
    std::string m_client; // whom the connection is counted to
    HttpShared& m_shared;
    boost::beast::flat_buffer m_buffer;
    std::optional<Parser> m_parser; // of the request under way
    std::string m_body;
    std::string m_requestID; // of the request under way
    std::string m_person;    // in whose queue the request under way waits
    ByteBudget::Share m_bodyShare;
    ByteBudget::Share m_replyShare;
    Phase m_phase = Phase::idle;
    std::chrono::steady_clock::time_point m_progress = std::chrono::steady_clock::now();
    bool m_headAsked = false; // the request under way is answered without a body
};

}

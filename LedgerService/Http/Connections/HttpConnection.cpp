#include "LedgerService/Http/Connections/HttpConnection.h"

#include <algorithm>

#include <boost/asio/redirect_error.hpp>
#include <boost/asio/use_awaitable.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/http/error.hpp>
#include <boost/beast/http/read.hpp>
#include <fmt/core.h>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerService/Http/Connections/ReplyBlocks.h"
#include "LedgerService/Http/Connections/ReplyHeader.h"
#include "LedgerService/Log.h"
#include "LedgerService/Random.h"

namespace LedgerService {

namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = boost::beast::http;
using Steady = std::chrono::steady_clock;

constexpr std::size_t readChunkBytes = 4096;
constexpr std::size_t bodyBlockBytes = std::size_t{16} * 1024;
constexpr std::size_t requestIDBytes = 9;
constexpr std::size_t replyBlockBytes = std::size_t{256} * 1024;
/// How long a client that is still sending is listened to after its refusal, so that it gets to read it.
constexpr std::chrono::seconds lingerTime{5};
constexpr std::string_view emptyLine = "\r\n";
constexpr std::string_view headFirst = "the header of a request is read before what follows it";
/// What a client that speaks TLS begins with.
constexpr char handshakeByte = 0x16;
/// What a body or a reply is refused with when all that may be held is held already.
const auto noMemory = boost::system::errc::make_error_code(boost::system::errc::not_enough_memory);

std::optional<Refusal> refusalOf(beast::error_code failure, bool headerRead)
{
    if (failure == http::error::body_limit)
        return Refusal::of(ServiceCode::payloadTooLarge, "The body is larger than this path takes.");
    if (failure == noMemory)
        return Refusal::of(ServiceCode::serviceUnavailable, "Too many bodies are under way; try again.",
                           std::chrono::seconds{1});
    if (!headerRead && (failure == http::error::header_limit || failure == http::error::buffer_overflow))
        return Refusal::of(ServiceCode::headerTooLarge, "The header is larger than the service takes.");
    if (failure == http::error::end_of_stream || failure == http::error::partial_message ||
        failure.category() != http::make_error_code(http::error::bad_method).category())
        return std::nullopt; // the client has left or was cut off for being slow: nobody reads an answer
    return Refusal::of(ServiceCode::validationError, "This is not an HTTP request.");
}

}

HttpConnection::HttpConnection(asio::ip::tcp::socket socket, RequestHead::Ends ends, HttpShared& shared)
    : m_stream(std::move(socket)), m_ends(std::move(ends)), m_client(ClientAddress::counted(m_ends.peer)),
      m_shared(shared), m_buffer(shared.limits.headerBytes + readChunkBytes),
      m_bodyShare(shared.bodies, shared.limits.uncountedBytes),
      m_replyShare(shared.replies, shared.limits.uncountedBytes)
{
}

asio::awaitable<void> HttpConnection::serve(std::shared_ptr<HttpConnection> self)
{
    bool more = co_await self->secure();
    while (more && !self->m_shared.stopping) {
        more = co_await self->awaitRequest();
        if (more)
            more = co_await self->answerOne();
    }
    if (self->m_stream.isSecure() && self->m_phase != Phase::gone && self->m_phase != Phase::leaving)
        co_await self->linger(); // so that the client can tell this end from one that somebody else has made
    self->abandon();
}

void HttpConnection::finish()
{
    if (m_phase != Phase::working && m_phase != Phase::replying)
        abandon();
}

void HttpConnection::abandon()
{
    enter(Phase::gone);
    m_stream.close();
    m_bodyShare.release();
    m_replyShare.release();
}

ServerLoad::Phase HttpConnection::about() const
{
    switch (m_phase) {
    case Phase::readingHeader:
    case Phase::readingBody:
        return ServerLoad::Phase::receiving;
    case Phase::working:
        return ServerLoad::Phase::working;
    case Phase::replying:
        return ServerLoad::Phase::replying;
    case Phase::idle:
    case Phase::leaving:
    case Phase::gone:
        break;
    }
    return ServerLoad::Phase::idle;
}

void HttpConnection::enter(Phase phase)
{
    if (m_phase != Phase::gone) // nothing comes after the end
        m_phase = phase;
    m_progress = Steady::now();
}

/// Agrees on keys with the client where the service speaks TLS; false when that comes to nothing.
asio::awaitable<bool> HttpConnection::secure()
{
    if (!m_shared.certificate)
        co_return true;
    m_stream.expiresAfter(m_shared.limits.idle);
    if (!co_await readMore())
        co_return false;
    m_requestID = Random::text(requestIDBytes);
    if (*static_cast<const char*>(m_buffer.cdata().data()) != handshakeByte)
        co_return co_await turnAway(
            Refusal::of(ServiceCode::validationError, "The service speaks TLS here: its address begins with https."));
    enter(Phase::readingHeader);
    m_stream.expiresAfter(m_shared.limits.header);
    const auto failure = co_await m_stream.secure(m_shared.certificate->current(), m_buffer.cdata());
    m_buffer.clear();
    if (failure)
        co_await linger(); // the client gets to read why
    co_return !failure;
}

/// Waits for the first byte of a request; false when none comes.
asio::awaitable<bool> HttpConnection::awaitRequest()
{
    enter(Phase::idle);
    m_stream.expiresAfter(m_shared.limits.idle);
    while (!hasRequest()) {
        if (!co_await readMore())
            co_return false;
    }
    co_return m_phase == Phase::idle;
}

/// Waits for further bytes of the client; false when none come.
asio::awaitable<bool> HttpConnection::readMore()
{
    beast::error_code failure;
    auto token = asio::redirect_error(asio::use_awaitable, failure);
    const auto space = m_buffer.prepare(readChunkBytes);
    const auto read = co_await m_stream.async_read_some(space, token);
    m_buffer.commit(failure ? 0 : read);
    co_return !failure;
}

/// Whether something of a request has arrived. Some clients send an empty line in front of it.
bool HttpConnection::hasRequest()
{
    const auto data = m_buffer.cdata();
    const std::string_view start{static_cast<const char*>(data.data()), data.size()};
    if (start.starts_with(emptyLine))
        m_buffer.consume(emptyLine.size());
    return m_buffer.size() > 0 && start != emptyLine.substr(0, 1);
}

asio::awaitable<bool> HttpConnection::answerOne()
{
    m_requestID = Random::text(requestIDBytes);
    auto failure = co_await readHeader();
    if (failure)
        co_return co_await turnAway(refusalOf(failure, false));
    const auto& header = promised(m_parser, headFirst).get();
    m_headAsked = header.method() == http::verb::head;
    const bool keepAlive = header.keep_alive();
    auto request = RequestHead::read(header, m_ends, m_shared.proxies);
    if (!request)
        co_return co_await turnAway(std::move(request.error()));
    auto match = m_shared.routes.match(request->method, request->path);
    request->id = m_requestID;
    std::optional<Refusal> stranger;
    if (asksWhoSends(match)) {
        enter(Phase::working);
        stranger = co_await m_shared.answering.whyNotSignedIn(match, *request, m_shared.dispatcher.personOf(*request));
        if (m_shared.stopping) // half a request is not waited for
            co_return false;
    }
    failure = co_await readBody(match.route ? match.route->bodyLimit() : openBodyBytes,
                                stranger ? Body::dropped : Body::kept);
    if (failure)
        co_return co_await turnAway(refusalOf(failure, true));
    if (stranger) {
        Log::request(m_requestID, request->method, match.route->pattern, stranger->status, {});
        co_return co_await write(replyOf(*stranger), keepAlive && !m_shared.stopping);
    }
    request->body = std::exchange(m_body, {});
    request->arrived = Steady::now();
    enter(Phase::working);
    m_person = m_shared.dispatcher.personOf(*request);
    auto reply = co_await m_shared.answering.reply(std::move(match), *std::move(request), m_person);
    m_bodyShare.release(); // only now: bodies also wait for their turn
    co_return co_await write(std::move(reply), keepAlive && !m_shared.stopping);
}

asio::awaitable<beast::error_code> HttpConnection::readHeader()
{
    beast::error_code failure;
    enter(Phase::readingHeader);
    m_headAsked = false;
    auto& parser = m_parser.emplace();
    parser.header_limit(m_shared.limits.headerBytes);
    parser.body_limit(boost::none); // set with the route
    m_stream.expiresAfter(m_shared.limits.header);
    auto token = asio::redirect_error(asio::use_awaitable, failure);
    co_await http::async_read_header(m_stream, m_buffer, parser, token);
    co_return failure;
}

/// Whether the body is larger than what everyone may send. That of somebody who is not signed in is not kept then; it
/// is read to its end all the same, for clients listen for the reply only then.
bool HttpConnection::asksWhoSends(const RouteMatch& match) const
{
    const auto& parser = promised(m_parser, headFirst);
    const auto length = parser.content_length();
    return match.route && !match.route->isOpen() && !parser.is_done() &&
           (!length || *length > m_shared.limits.uncountedBytes);
}

asio::awaitable<beast::error_code> HttpConnection::readBody(std::size_t limit, Body body)
{
    beast::error_code failure;
    auto& parser = promised(m_parser, headFirst);
    if (const auto length = parser.content_length(); length && *length > limit)
        co_return http::error::body_limit;
    if (parser.is_done())
        co_return failure;
    enter(Phase::readingBody);
    parser.body_limit(limit);
    m_stream.expiresAfter(m_shared.limits.body);
    if (beast::iequals(parser.get()[http::field::expect], "100-continue")) {
        constexpr std::string_view goOn = "HTTP/1.1 100 Continue\r\n\r\n";
        if (!co_await send({asio::buffer(goOn)}))
            co_return http::error::end_of_stream;
        enter(Phase::readingBody);
    }
    std::array<char, bodyBlockBytes> block{};
    auto token = asio::redirect_error(asio::use_awaitable, failure);
    while (!parser.is_done()) {
        parser.get().body() = {.data = block.data(), .size = block.size(), .more = true};
        co_await http::async_read_some(m_stream, m_buffer, parser, token);
        const auto arrived = block.size() - parser.get().body().size;
        if (failure && failure != http::error::need_buffer)
            co_return failure;
        m_progress = Steady::now();
        if (body == Body::dropped)
            continue;
        if (!holdBody(m_body.size() + arrived))
            co_return noMemory;
        m_body.append(block.data(), arrived);
    }
    co_return beast::error_code{};
}

bool HttpConnection::holdBody(std::size_t bytes)
{
    while (!m_bodyShare.resize(bytes)) {
        if (!m_shared.connections.dropSlowestBody(*this))
            return false;
    }
    return true;
}

bool HttpConnection::holdReply(std::size_t bytes)
{
    while (!m_replyShare.resize(bytes)) {
        if (!m_shared.connections.dropSlowestReader(*this))
            return false;
    }
    return true;
}

/// Answers a request that could not be read, and ends the connection.
asio::awaitable<bool> HttpConnection::turnAway(std::optional<Refusal> refusal)
{
    if (!refusal)
        co_return false;
    Log::request(m_requestID, "-", "(unread)", refusal->status, {});
    auto reply = replyOf(*refusal);
    const bool written = co_await write(std::move(reply), false);
    static_cast<void>(written);
    co_await linger();
    co_return false;
}

asio::awaitable<bool> HttpConnection::write(Reply reply, bool keepAlive)
{
    enter(Phase::replying);
    reply.headers.emplace_back("X-Request-ID", m_requestID);
    bool written = false;
    if (reply.more)
        written = co_await writeBlocks(std::move(reply), keepAlive);
    else
        written = co_await writeWhole(std::move(reply), keepAlive);
    m_replyShare.release();
    const bool goesOn = written && keepAlive;
    co_return goesOn;
}

asio::awaitable<bool> HttpConnection::writeWhole(Reply reply, bool keepAlive)
{
    const auto header = ReplyHeader::text(reply, {.chunked = false, .keepAlive = keepAlive, .version10 = speaks10()});
    auto rest = m_headAsked ? std::string_view{} : std::string_view{reply.body};
    if (!holdReply(rest.size()))
        co_return false;
    const auto takeBlock = [&rest] {
        const auto block = rest.substr(0, replyBlockBytes);
        rest.remove_prefix(block.size());
        return asio::buffer(block.data(), block.size());
    };
    bool going = co_await send({asio::buffer(header), takeBlock()});
    while (going && !rest.empty())
        going = co_await send({takeBlock()});
    co_return going;
}

asio::awaitable<bool> HttpConnection::writeBlocks(Reply reply, bool keepAlive)
{
    const bool chunked = !speaks10(); // else the end of the connection is the end of the body
    auto before =
        ReplyHeader::text(reply, {.chunked = chunked, .keepAlive = keepAlive && chunked, .version10 = !chunked});
    if (m_headAsked)
        co_return co_await send({asio::buffer(before)});
    const auto blocks = std::make_shared<ReplyBlocks>(
        m_stream.get_executor(), m_shared.readers, ReplyBlocks::Reader{m_person, m_requestID}, std::move(reply.more));
    std::optional block = std::move(reply.body);
    while (block && !block->empty()) {
        if (!holdReply(block->size() + reply.heldBytes))
            co_return false;
        if (m_replyShare.fitsTwice())
            blocks->begin(); // it is made while this one is sent
        if (chunked)
            before += fmt::format("{:x}\r\n", block->size());
        const auto after = chunked ? emptyLine : std::string_view{};
        if (!co_await send({asio::buffer(before), asio::buffer(*block), asio::buffer(after)}))
            co_return false;
        before.clear();
        enter(Phase::working);
        block = co_await ReplyBlocks::next(blocks);
        enter(Phase::replying);
    }
    if (!block)
        co_return false; // the client sees that the body has no end
    if (chunked)
        before += "0\r\n\r\n";
    co_return co_await send({asio::buffer(before)}) && chunked;
}

bool HttpConnection::speaks10() const
{
    return m_parser && m_parser->get().version() < 11;
}

/// Sends a block, which the client has to take in time.
asio::awaitable<bool> HttpConnection::send(Parts parts)
{
    beast::error_code failure;
    m_stream.expiresAfter(m_shared.limits.replyBlock);
    auto token = asio::redirect_error(asio::use_awaitable, failure);
    co_await asio::async_write(m_stream, parts, token);
    m_progress = Steady::now();
    co_return !failure;
}

asio::awaitable<void> HttpConnection::linger()
{
    enter(Phase::leaving);
    m_stream.expiresAfter(lingerTime);
    co_await m_stream.leave();
}

}

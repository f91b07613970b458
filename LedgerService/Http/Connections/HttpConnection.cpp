#include "LedgerService/Http/Connections/HttpConnection.h"

#include <algorithm>
#include <functional>

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/redirect_error.hpp>
#include <boost/asio/use_awaitable.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/http/error.hpp>
#include <boost/beast/http/read.hpp>
#include <fmt/core.h>

#include "LedgerCore/Domain/Records/ServiceCode.h"
#include "LedgerService/Http/Connections/ReplyHeader.h"
#include "LedgerService/Http/Connections/RequestHead.h"
#include "LedgerService/Log.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Sql/DatabaseFailure.h"

namespace LedgerService {

namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = boost::beast::http;
using Steady = std::chrono::steady_clock;

constexpr std::size_t readChunkBytes = 4096;
constexpr std::size_t bodyBlockBytes = 16 * 1024;
constexpr std::size_t requestIDBytes = 9;
constexpr std::size_t replyBlockBytes = 256 * 1024;
/// A body up to this size is understood on the network thread.
constexpr std::size_t quickBodyBytes = 16 * 1024;
/// How long a client that is still sending is listened to after its refusal, so that it gets to read it.
constexpr std::chrono::seconds lingerTime{5};
constexpr std::string_view emptyLine = "\r\n";
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
        return Refusal::of(ServiceCode::headerTooLarge, "The header is too large.");
    if (failure == http::error::end_of_stream || failure == http::error::partial_message ||
        failure.category() != http::make_error_code(http::error::bad_method).category())
        return std::nullopt; // the client has left or was cut off for being slow: nobody reads an answer
    return Refusal::of(ServiceCode::validationError, "This is not an HTTP request.");
}

std::string_view patternOf(const RouteMatch& match)
{
    return match.route ? match.route->pattern : "(no route)";
}

/// A part of answering a request; nothing when a further part has to follow.
using Step = std::function<std::optional<Reply>()>;

/// Takes a step, which may block, unless the request has waited for too long. Never throws: the thread that it runs on
/// belongs to all.
std::optional<Reply> take(const Step& step, const RouteMatch& match, const Request& request, Steady::duration queue)
{
    try {
        const bool late = Steady::now() - request.arrived > queue;
        auto reply = late ? replyOf(Refusal::of(ServiceCode::serviceUnavailable, "Too much is waiting; try again.",
                                                std::chrono::seconds{1}))
                          : step();
        if (reply)
            Log::request(request.id, request.method, patternOf(match), reply->status,
                         std::chrono::duration_cast<std::chrono::microseconds>(Steady::now() - request.arrived));
        return reply;
    } catch (...) {
        return Reply{.status = 500, .body = {}};
    }
}

/// The next block, or nothing when it could not be made: what was sent is not the whole then.
std::optional<std::string> blockOf(const BodyBlocks& blocks, std::string_view requestID)
{
    try {
        return blocks();
    } catch (const std::exception& failure) {
        Log::failure(fmt::format("(reply under way) {}", requestID), DatabaseFailure::words(failure));
        return std::nullopt;
    }
}

}

HttpConnection::HttpConnection(asio::ip::tcp::socket socket, asio::ip::address peer, HttpShared& shared)
    : m_stream(std::move(socket)), m_peer(std::move(peer)), m_client(ClientAddress::counted(m_peer)), m_shared(shared),
      m_buffer(shared.limits.headerBytes + readChunkBytes), m_bodyShare(shared.bodies, shared.limits.uncountedBytes),
      m_replyShare(shared.replies, shared.limits.uncountedBytes)
{
    beast::error_code ignored;
    m_stream.socket().set_option(asio::ip::tcp::no_delay{true}, ignored);
}

asio::awaitable<void> HttpConnection::serve(std::shared_ptr<HttpConnection> self)
{
    bool more = true;
    while (more && !self->m_shared.stopping) {
        more = co_await self->awaitRequest();
        if (more)
            more = co_await self->answerOne();
    }
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
    beast::error_code ignored;
    m_stream.socket().shutdown(asio::ip::tcp::socket::shutdown_both, ignored);
    m_stream.close();
    m_bodyShare.release();
    m_replyShare.release();
}

void HttpConnection::enter(Phase phase)
{
    if (m_phase != Phase::gone) // nothing comes after the end
        m_phase = phase;
    m_progress = Steady::now();
}

/// Waits for the first byte of a request; false when none comes.
asio::awaitable<bool> HttpConnection::awaitRequest()
{
    enter(Phase::idle);
    m_stream.expires_after(m_shared.limits.idle);
    while (!hasRequest()) {
        beast::error_code failure;
        auto token = asio::redirect_error(asio::use_awaitable, failure);
        const auto space = m_buffer.prepare(readChunkBytes);
        const auto read = co_await m_stream.async_read_some(space, token);
        if (failure)
            co_return false;
        m_buffer.commit(read);
    }
    co_return m_phase == Phase::idle;
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
    const auto& header = m_parser->get();
    m_headAsked = header.method() == http::verb::head;
    m_safe = RequestHead::isSafe(header);
    const bool keepAlive = header.keep_alive();
    auto request = RequestHead::read(header, m_peer, m_shared.proxies);
    if (!request)
        co_return co_await turnAway(std::move(request.error()));
    auto match = m_shared.routes.match(request->method, request->path);
    failure = co_await readBody(match.route ? match.route->maximumBody : ordinaryBodyBytes);
    if (failure)
        co_return co_await turnAway(refusalOf(failure, true));
    request->id = m_requestID;
    request->body = std::exchange(m_body, {});
    request->arrived = Steady::now();
    auto reply = co_await answerTo(std::move(match), *std::move(request));
    m_bodyShare.release(); // only now: bodies also wait for their turn
    co_return co_await write(std::move(reply), keepAlive && !m_shared.stopping);
}

asio::awaitable<beast::error_code> HttpConnection::readHeader()
{
    beast::error_code failure;
    enter(Phase::readingHeader);
    m_headAsked = false;
    m_parser.emplace();
    m_parser->header_limit(m_shared.limits.headerBytes);
    m_parser->body_limit(boost::none); // set with the route
    m_stream.expires_after(m_shared.limits.header);
    auto token = asio::redirect_error(asio::use_awaitable, failure);
    co_await http::async_read_header(m_stream, m_buffer, *m_parser, token);
    co_return failure;
}

asio::awaitable<beast::error_code> HttpConnection::readBody(std::size_t limit)
{
    beast::error_code failure;
    if (const auto length = m_parser->content_length(); length && *length > limit)
        co_return http::error::body_limit;
    if (m_parser->is_done())
        co_return failure;
    enter(Phase::readingBody);
    m_parser->body_limit(limit);
    m_stream.expires_after(m_shared.limits.body);
    if (beast::iequals(m_parser->get()[http::field::expect], "100-continue")) {
        constexpr std::string_view goOn = "HTTP/1.1 100 Continue\r\n\r\n";
        if (!co_await send({asio::buffer(goOn)}))
            co_return http::error::end_of_stream;
        enter(Phase::readingBody);
    }
    std::array<char, bodyBlockBytes> block{};
    auto token = asio::redirect_error(asio::use_awaitable, failure);
    while (!m_parser->is_done()) {
        m_parser->get().body() = {.data = block.data(), .size = block.size(), .more = true};
        co_await http::async_read_some(m_stream, m_buffer, *m_parser, token);
        const auto arrived = block.size() - m_parser->get().body().size;
        if (failure && failure != http::error::need_buffer)
            co_return failure;
        if (!holdBody(m_body.size() + arrived))
            co_return noMemory;
        m_body.append(block.data(), arrived);
        m_progress = Steady::now();
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

WorkLane* HttpConnection::laneOf(const RouteMatch& match) const
{
    if (!match.route || match.route->lane == Lane::immediate)
        return nullptr;
    if (match.route->lane == Lane::signIn)
        return &m_shared.lanes.signIns;
    if (match.route->lane == Lane::mail)
        return &m_shared.lanes.mails;
    return m_safe ? &m_shared.lanes.readers : &m_shared.lanes.writers;
}

asio::awaitable<Reply> HttpConnection::answerTo(RouteMatch match, Request request)
{
    enter(Phase::working);
    m_person = m_shared.dispatcher.personOf(request);
    if (match.route && match.route->isCommand()) {
        auto command = std::make_shared<Command>(Command{std::move(match), std::move(request)});
        co_return co_await answerCommand(std::move(command));
    }
    const Step whole = [&] { return m_shared.dispatcher.answer(match, request); };
    const auto queue = m_shared.limits.queue;
    auto* const lane = laneOf(match);
    if (!lane)
        co_return take(whole, match, request, queue).value_or(Reply{});
    if (lane->waiting >= lane->mostWaiting) {
        Log::request(request.id, request.method, patternOf(match), 429, {});
        co_return replyOf(Refusal::of(ServiceCode::rateLimited, "Too many sign in at this moment; try again.",
                                      std::chrono::seconds{2}));
    }
    ++lane->waiting;
    co_await lane->enter(m_person);
    auto reply = take(whole, match, request, queue);
    co_await asio::post(asio::use_awaitable); // and back, past what still queues for the lane
    --lane->waiting;
    co_return *std::move(reply);
}

/// Commands take turns to write. What needs no turn is done before and after, off the thread that writes.
asio::awaitable<Reply> HttpConnection::answerCommand(std::shared_ptr<Command> command)
{
    const auto& dispatcher = m_shared.dispatcher;
    const auto& [match, request, work, outcome] = *command;
    const Step beginning = [&] { return dispatcher.prepare(*command); };
    const Step ending = [&] { return dispatcher.replyTo(*command); };
    const bool quick = request.body.size() <= quickBodyBytes && dispatcher.preparesAtOnce(*command);
    auto& first = match.route->lane == Lane::files ? m_shared.lanes.files : m_shared.lanes.readers;
    if (!quick)
        co_await first.enter(m_person);
    auto reply = take(beginning, match, request, m_shared.limits.queue);
    bool away = !quick;
    if (!reply) {
        co_await m_shared.commands.carryOut(command);
        away = dispatcher.repliesWithSnapshot(*command);
        if (away)
            co_await m_shared.lanes.readers.enter(m_person);
        reply = take(ending, match, request, Steady::duration::max());
    }
    if (away)
        co_await asio::post(asio::use_awaitable);
    co_return *std::move(reply);
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
    const auto source = std::make_shared<BodyBlocks>(std::move(reply.more));
    std::optional block = std::move(reply.body);
    while (block && !block->empty()) {
        if (!holdReply(block->size()))
            co_return false;
        auto ahead = m_replyShare.fitsTwice() ? makeAhead(source) : nullptr;
        if (chunked)
            before += fmt::format("{:x}\r\n", block->size());
        const auto after = chunked ? emptyLine : std::string_view{};
        if (!co_await send({asio::buffer(before), asio::buffer(*block), asio::buffer(after)}))
            co_return false;
        before.clear();
        block = co_await nextBlock(ahead ? std::move(ahead) : makeAhead(source));
    }
    if (!block)
        co_return false; // the client sees that the body has no end
    if (chunked)
        before += "0\r\n\r\n";
    co_return co_await send({asio::buffer(before)}) && chunked;
}

/// Begins to make the next block of a reply in a thread that reads.
std::shared_ptr<HttpConnection::Ahead> HttpConnection::makeAhead(std::shared_ptr<BodyBlocks> source)
{
    auto ahead = std::make_shared<Ahead>(m_stream.get_executor());
    asio::co_spawn(m_stream.get_executor(), make(shared_from_this(), std::move(source), ahead),
                   [ahead](const std::exception_ptr&) { // whatever came of it: nobody waits for ever
                       ahead->isMade = true;
                       ahead->made.cancel();
                   });
    return ahead;
}

asio::awaitable<void> HttpConnection::make(std::shared_ptr<HttpConnection> self, std::shared_ptr<BodyBlocks> source,
                                           std::shared_ptr<Ahead> ahead)
{
    const auto requestID = self->m_requestID;
    co_await self->m_shared.lanes.readers.enter(self->m_person);
    auto block = blockOf(*source, requestID);
    co_await asio::post(asio::use_awaitable);
    ahead->block = std::move(block);
}

asio::awaitable<std::optional<std::string>> HttpConnection::nextBlock(std::shared_ptr<Ahead> ahead)
{
    enter(Phase::working);
    beast::error_code woken;
    auto token = asio::redirect_error(asio::use_awaitable, woken);
    if (!ahead->isMade)
        co_await ahead->made.async_wait(token);
    enter(Phase::replying);
    co_return std::move(ahead->block);
}

bool HttpConnection::speaks10() const
{
    return m_parser->get().version() < 11;
}

/// Sends a block, which the client has to take in time.
asio::awaitable<bool> HttpConnection::send(Parts parts)
{
    beast::error_code failure;
    m_stream.expires_after(m_shared.limits.replyBlock);
    auto token = asio::redirect_error(asio::use_awaitable, failure);
    co_await asio::async_write(m_stream, parts, token);
    m_progress = Steady::now();
    co_return !failure;
}

asio::awaitable<void> HttpConnection::linger()
{
    beast::error_code failure;
    enter(Phase::leaving);
    m_stream.socket().shutdown(asio::ip::tcp::socket::shutdown_send, failure);
    m_stream.expires_after(lingerTime);
    auto token = asio::redirect_error(asio::use_awaitable, failure);
    while (!failure) {
        m_buffer.clear();
        const auto space = m_buffer.prepare(readChunkBytes);
        co_await m_stream.async_read_some(space, token);
    }
}

}

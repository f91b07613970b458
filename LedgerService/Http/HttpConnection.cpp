#include "LedgerService/Http/HttpConnection.h"

#include <boost/asio/bind_executor.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/redirect_error.hpp>
#include <boost/asio/use_awaitable.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/http/chunk_encode.hpp>
#include <boost/beast/http/empty_body.hpp>
#include <boost/beast/http/error.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/write.hpp>

#include "LedgerService/Log.h"
#include "LedgerService/Storage/Sql/DatabaseFailure.h"

namespace LedgerService {

namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = boost::beast::http;

constexpr std::size_t readChunkBytes = 4096;
/// How long a client that is still sending is listened to after its refusal, so that it gets to read it.
constexpr std::chrono::seconds lingerTime{5};

std::string bearerOf(std::string_view header)
{
    constexpr std::string_view scheme = "Bearer ";
    return beast::iequals(header.substr(0, scheme.size()), scheme) ? std::string{header.substr(scheme.size())}
                                                                   : std::string{};
}

/// The part of "a, b, c" after the last comma: the address that the nearest proxy saw.
std::string lastListed(std::string_view list)
{
    const auto comma = list.rfind(',');
    auto last = comma == std::string_view::npos ? list : list.substr(comma + 1);
    while (last.starts_with(' '))
        last.remove_prefix(1);
    return std::string{last};
}

/// Whether the request only reads, whatever its path.
bool isSafe(http::verb method)
{
    return method == http::verb::get || method == http::verb::head;
}

std::optional<Refusal> refusalOf(beast::error_code failure)
{
    if (failure == http::error::body_limit)
        return Refusal{413, "payload_too_large", "The body is larger than this path takes."};
    if (failure == http::error::header_limit || failure == http::error::buffer_overflow)
        return Refusal{431, "validation_error", "The header is too large."};
    if (failure == http::error::end_of_stream || failure == http::error::partial_message ||
        failure.category() != http::make_error_code(http::error::bad_method).category())
        return std::nullopt; // the client has left or was cut off for being slow: nobody reads an answer
    return Refusal{400, "validation_error", "This is not an HTTP request."};
}

/// The route's own work, which blocks.
Reply work(const Dispatcher& dispatcher, const RouteMatch& match, const Request& request)
{
    const auto started = std::chrono::steady_clock::now();
    auto reply = dispatcher.answer(match, request);
    const auto took = std::chrono::steady_clock::now() - started;
    Log::request(request.method, match.route ? match.route->pattern : "(no route)", reply.status,
                 std::chrono::duration_cast<std::chrono::microseconds>(took));
    return reply;
}

void setHeaders(http::response_header<>& header, const Reply& reply)
{
    if (reply.status != static_cast<int>(http::status::not_modified))
        header.set(http::field::content_type, "application/json");
    header.set(http::field::cache_control, "no-store");
    header.set("X-Content-Type-Options", "nosniff");
    for (const auto& [name, value] : reply.headers)
        header.set(name, value);
}

/// False when there is no going on: what was sent is not the whole.
bool makeNext(const BodyBlocks& blocks, std::string& block)
{
    try {
        block = blocks();
        return true;
    } catch (const std::exception& failure) {
        Log::failure("(reply under way)", DatabaseFailure::words(failure));
        return false;
    }
}

/// The values of all headers of this name, separated by commas.
std::string listed(const http::request_header<>& header, beast::string_view name)
{
    std::string list;
    const auto [first, last] = header.equal_range(name);
    for (auto each = first; each != last; ++each) {
        list += list.empty() ? "" : ", ";
        list.append(each->value().data(), each->value().size());
    }
    return list;
}

}

HttpConnection::HttpConnection(asio::ip::tcp::socket socket, HttpShared& shared)
    : m_stream(std::move(socket)), m_shared(shared)
{
    beast::error_code ignored;
    const auto endpoint = m_stream.socket().remote_endpoint(ignored);
    m_remote = ignored ? std::string{} : endpoint.address().to_string();
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
    if (m_idle)
        abandon();
}

void HttpConnection::abandon()
{
    beast::error_code ignored;
    m_stream.socket().shutdown(asio::ip::tcp::socket::shutdown_both, ignored);
    m_stream.close();
}

/// Waits for the first byte of a request; false when none comes.
asio::awaitable<bool> HttpConnection::awaitRequest()
{
    if (m_buffer.size() > 0)
        co_return true;
    beast::error_code failure;
    m_idle = true;
    m_stream.expires_after(m_shared.limits.idle);
    auto token = asio::redirect_error(asio::use_awaitable, failure);
    const auto space = m_buffer.prepare(readChunkBytes);
    const auto read = co_await m_stream.async_read_some(space, token);
    m_idle = false;
    m_buffer.commit(read);
    co_return !failure;
}

asio::awaitable<bool> HttpConnection::answerOne()
{
    Parser parser;
    m_headAsked = false;
    m_version = 11;
    auto failure = co_await readHeader(parser);
    if (failure)
        co_return co_await refuse(failure);
    const auto& header = parser.get();
    m_headAsked = header.method() == http::verb::head;
    m_version = header.version();
    const std::string_view target{header.target().data(), header.target().size()};
    const std::string_view method{header.method_string().data(), header.method_string().size()};
    const auto match = m_shared.routes.match(method, target.substr(0, target.find('?')));
    failure = co_await readBody(parser, match.route ? match.route->maximumBody : ordinaryBodyBytes);
    if (failure)
        co_return co_await refuse(failure);
    const bool keepAlive = header.keep_alive();
    const auto request = requestOf(parser);
    auto& pool = isSafe(header.method()) ? m_shared.readers : m_shared.writers;
    co_await asio::post(asio::bind_executor(pool, asio::use_awaitable)); // goes on in a thread of the pool
    auto reply = work(m_shared.dispatcher, match, request);
    co_await asio::post(asio::use_awaitable); // and back, past what still queues for the pool
    co_return co_await write(std::move(reply), keepAlive && !m_shared.stopping);
}

asio::awaitable<beast::error_code> HttpConnection::readHeader(Parser& parser)
{
    beast::error_code failure;
    parser.header_limit(m_shared.limits.headerBytes);
    parser.body_limit(boost::none); // set with the route
    m_stream.expires_after(m_shared.limits.header);
    auto token = asio::redirect_error(asio::use_awaitable, failure);
    co_await http::async_read_header(m_stream, m_buffer, parser, token);
    co_return failure;
}

asio::awaitable<beast::error_code> HttpConnection::readBody(Parser& parser, std::size_t limit)
{
    beast::error_code failure;
    if (const auto length = parser.content_length(); length && *length > limit)
        co_return http::error::body_limit;
    if (parser.is_done())
        co_return failure;
    parser.body_limit(limit);
    m_stream.expires_after(m_shared.limits.body);
    auto token = asio::redirect_error(asio::use_awaitable, failure);
    if (beast::iequals(parser.get()[http::field::expect], "100-continue")) {
        http::response<http::empty_body> goOn{http::status::continue_, 11};
        co_await http::async_write(m_stream, goOn, token);
    }
    if (!failure)
        co_await http::async_read(m_stream, m_buffer, parser, token);
    co_return failure;
}

/// Answers a request that could not be read, and ends the connection.
asio::awaitable<bool> HttpConnection::refuse(beast::error_code failure)
{
    const auto refusal = refusalOf(failure);
    if (!refusal)
        co_return false;
    Log::request("-", "(unread)", refusal->status, {});
    auto reply = replyOf(*refusal);
    const bool written = co_await write(std::move(reply), false);
    static_cast<void>(written);
    co_await linger();
    co_return false;
}

asio::awaitable<bool> HttpConnection::write(Reply reply, bool keepAlive)
{
    if (reply.more)
        co_return co_await writeBlocks(std::move(reply), keepAlive);
    http::response<http::string_body> response{static_cast<http::status>(reply.status), 11};
    setHeaders(response, reply);
    response.body() = std::move(reply.body);
    response.keep_alive(keepAlive);
    response.prepare_payload();
    beast::error_code failure;
    m_stream.expires_after(m_shared.limits.reply);
    auto token = asio::redirect_error(asio::use_awaitable, failure);
    http::response_serializer<http::string_body> serializer{response};
    if (m_headAsked)
        co_await http::async_write_header(m_stream, serializer, token);
    else
        co_await http::async_write(m_stream, serializer, token);
    co_return keepAlive && !failure;
}

/// Writes a body whose length is not known beforehand, each block made when the one before it is with the system.
asio::awaitable<bool> HttpConnection::writeBlocks(Reply reply, bool keepAlive)
{
    const bool chunked = m_version >= 11;
    keepAlive = keepAlive && chunked; // the end of the connection is the end of an older client's body
    http::response<http::empty_body> response{static_cast<http::status>(reply.status), 11};
    setHeaders(response, reply);
    response.keep_alive(keepAlive);
    response.chunked(chunked);
    beast::error_code failure;
    m_stream.expires_after(m_shared.limits.reply); // for all of it
    auto token = asio::redirect_error(asio::use_awaitable, failure);
    http::response_serializer<http::empty_body> serializer{response};
    co_await http::async_write_header(m_stream, serializer, token);
    auto block = std::move(reply.body);
    while (!failure && !m_headAsked && !block.empty()) {
        const auto bytes = asio::buffer(std::as_const(block));
        if (chunked)
            co_await asio::async_write(m_stream, http::make_chunk(bytes), token);
        else
            co_await asio::async_write(m_stream, bytes, token);
        co_await asio::post(asio::bind_executor(m_shared.readers, asio::use_awaitable));
        const bool made = makeNext(reply.more, block);
        co_await asio::post(asio::use_awaitable);
        if (!made)
            co_return false;
    }
    if (!failure && !m_headAsked && chunked)
        co_await asio::async_write(m_stream, http::make_chunk_last(), token);
    co_return keepAlive && !failure;
}

asio::awaitable<void> HttpConnection::linger()
{
    beast::error_code failure;
    m_stream.socket().shutdown(asio::ip::tcp::socket::shutdown_send, failure);
    m_stream.expires_after(lingerTime);
    auto token = asio::redirect_error(asio::use_awaitable, failure);
    while (!failure) {
        m_buffer.clear();
        const auto space = m_buffer.prepare(readChunkBytes);
        co_await m_stream.async_read_some(space, token);
    }
}

Request HttpConnection::requestOf(Parser& parser) const
{
    auto& message = parser.get();
    const auto text = [](auto view) { return std::string_view{view.data(), view.size()}; };
    const auto target = text(message.target());
    Request request;
    request.method = text(message.method_string());
    request.path = target.substr(0, target.find('?'));
    request.token = bearerOf(text(message[http::field::authorization]));
    request.remote = m_remote;
    request.fromWebPage = message.find(http::field::origin) != message.end();
    request.ifNoneMatch = listed(message, "If-None-Match");
    request.instanceManipulations = listed(message, "A-IM");
    request.prefer = listed(message, "Prefer");
    if (m_shared.behindProxy) {
        // A proxy appends to the list or adds a line of its own: the last line is the one to believe.
        const auto [first, last] = message.equal_range("X-Forwarded-For");
        for (auto each = first; each != last; ++each)
            request.remote = lastListed(text(each->value()));
    }
    request.body = std::move(message.body());
    return request;
}

}

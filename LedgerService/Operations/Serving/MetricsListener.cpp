#include "LedgerService/Operations/Serving/MetricsListener.h"

#include <chrono>
#include <thread>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/redirect_error.hpp>
#include <boost/asio/use_awaitable.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http/empty_body.hpp>
#include <boost/beast/http/message.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/http/write.hpp>
#include <fmt/core.h>

#include "LedgerService/Http/Connections/Accepting.h"

namespace LedgerService {

namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = boost::beast::http;
using asio::ip::tcp;

constexpr std::chrono::seconds patience{1};
constexpr std::size_t mostHeader = 8192;

http::response<http::string_body> answerTo(const http::request<http::empty_body>& request,
                                           const MetricsListener::Gauges& gauges)
{
    http::response<http::string_body> answer;
    const bool known = request.method() == http::verb::get && request.target() == "/metrics";
    answer.result(known ? http::status::ok : http::status::not_found);
    answer.set(http::field::content_type, "text/plain; version=0.0.4");
    answer.keep_alive(false);
    if (known)
        answer.body() = Metrics::text(gauges());
    answer.prepare_payload();
    return answer;
}

asio::awaitable<void> serve(tcp::socket socket, const MetricsListener::Gauges* gauges)
{
    beast::error_code failure;
    auto token = asio::redirect_error(asio::use_awaitable, failure);
    beast::tcp_stream stream{std::move(socket)};
    stream.expires_after(patience);
    beast::flat_buffer buffer{mostHeader};
    http::request<http::empty_body> request;
    co_await http::async_read(stream, buffer, request, token);
    if (failure)
        co_return;
    const auto answer = answerTo(request, *gauges);
    co_await http::async_write(stream, answer, token);
}

}

struct MetricsListener::State {
    Gauges gauges;
    asio::io_context network{1};
    tcp::acceptor acceptor{network};
    std::uint16_t port = 0;
    std::thread thread;
};

std::expected<std::unique_ptr<MetricsListener>, std::string> MetricsListener::start(const std::string& address,
                                                                                    std::uint16_t port, Gauges gauges)
{
    auto state = std::make_unique<State>();
    state->gauges = std::move(gauges);
    try {
        const tcp::endpoint endpoint{asio::ip::make_address(address), port};
        state->acceptor.open(endpoint.protocol());
        state->acceptor.set_option(tcp::acceptor::reuse_address{true});
        state->acceptor.bind(endpoint);
        state->acceptor.listen();
        state->port = state->acceptor.local_endpoint().port();
    } catch (const boost::system::system_error& failure) {
        return std::unexpected(fmt::format("cannot listen on {} port {}: {}", address, port, failure.code().message()));
    }
    Accepting::spawn(state->acceptor,
                     [gauges = &state->gauges](tcp::socket socket) { return serve(std::move(socket), gauges); });
    state->thread = std::thread{[running = state.get()] { running->network.run(); }};
    return std::unique_ptr<MetricsListener>{new MetricsListener(std::move(state))};
}

MetricsListener::MetricsListener(std::unique_ptr<State> state) : m_state(std::move(state)) {}

MetricsListener::~MetricsListener()
{
    m_state->network.stop();
    m_state->thread.join();
}

std::uint16_t MetricsListener::port() const
{
    return m_state->port;
}

}

#include "LedgerService/Http/Server.h"

#include <algorithm>
#include <thread>
#include <vector>

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/detached.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/redirect_error.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/use_awaitable.hpp>
#include <fmt/core.h>

#include "LedgerService/Http/HttpConnection.h"
#include "LedgerService/Http/Routes/AllRoutes.h"
#include "LedgerService/Storage/Database.h"

namespace LedgerService {

namespace {

namespace asio = boost::asio;
using asio::ip::tcp;

/// How long requests under way may take once the server is told to stop.
constexpr std::chrono::seconds stoppingTime{15};
/// Of each kind, so that a few slow requests do not hold up the quick ones.
constexpr unsigned fewestWorkers = 4;
/// After a failed accept, such as too many open files, the next one is tried no sooner.
constexpr std::chrono::milliseconds pauseAfterFailure{100};

unsigned workerCount()
{
    return std::max(fewestWorkers, 2 * std::thread::hardware_concurrency());
}

}

struct Server::State {
    State(ServerOptions given, std::unique_ptr<Database> opened)
        : options(std::move(given)), database(std::move(opened)), routes(allRoutes()),
          dispatcher({.database = *database, .clock = options.clock, .policy = options.policy}), readers(workerCount()),
          writers(workerCount()), shared{.dispatcher = dispatcher,
                                         .routes = routes,
                                         .limits = options.limits,
                                         .readers = readers,
                                         .writers = writers,
                                         .behindProxy = options.behindProxy}
    {
    }

    void listen();
    static asio::awaitable<void> accept(State& state);
    void admit(tcp::socket socket);
    void beginStop();

    ServerOptions options;
    std::unique_ptr<Database> database;
    RouteTable routes;
    Dispatcher dispatcher;
    asio::io_context network{1};
    tcp::acceptor acceptor{network};
    asio::steady_timer deadline{network};
    asio::thread_pool readers; // gone before the network, whose sockets belong to the requests that still queue here
    asio::thread_pool writers;
    HttpShared shared;
    std::vector<std::weak_ptr<HttpConnection>> connections;
    std::size_t open = 0; // connections whose coroutine still runs
    std::uint16_t port = 0;
    std::thread thread;
};

void Server::State::listen()
{
    const tcp::endpoint endpoint{asio::ip::make_address(options.address), options.port};
    acceptor.open(endpoint.protocol());
    acceptor.set_option(tcp::acceptor::reuse_address{true});
    acceptor.bind(endpoint);
    acceptor.listen();
    port = acceptor.local_endpoint().port();
    asio::co_spawn(network, accept(*this), asio::detached);
}

asio::awaitable<void> Server::State::accept(State& state)
{
    asio::steady_timer pause{state.network};
    while (!state.shared.stopping) {
        boost::system::error_code failure;
        auto token = asio::redirect_error(asio::use_awaitable, failure);
        auto socket = co_await state.acceptor.async_accept(token);
        if (!failure) {
            state.admit(std::move(socket));
        } else if (!state.shared.stopping) {
            pause.expires_after(pauseAfterFailure);
            co_await pause.async_wait(token);
        }
    }
}

void Server::State::admit(tcp::socket socket)
{
    if (open >= options.limits.connections)
        return; // closed with its socket: those that are served come first
    std::erase_if(connections, [](const auto& each) { return each.expired(); });
    auto connection = std::make_shared<HttpConnection>(std::move(socket), shared);
    connections.push_back(connection);
    ++open;
    asio::co_spawn(network, HttpConnection::serve(std::move(connection)), [this](const std::exception_ptr&) {
        --open;
        if (shared.stopping && open == 0)
            deadline.cancel();
    });
}

void Server::State::beginStop()
{
    shared.stopping = true;
    boost::system::error_code ignored;
    acceptor.close(ignored);
    for (const auto& each : connections) {
        if (const auto connection = each.lock())
            connection->finish();
    }
    if (open == 0)
        return;
    deadline.expires_after(stoppingTime);
    deadline.async_wait([this](boost::system::error_code cancelled) {
        if (!cancelled)
            network.stop();
    });
}

std::expected<std::unique_ptr<Server>, std::string> Server::start(ServerOptions options)
{
    auto database = Database::open(options.databaseFile);
    if (!database)
        return std::unexpected(std::move(database.error()));
    auto state = std::make_unique<State>(std::move(options), *std::move(database));
    try {
        state->listen();
    } catch (const boost::system::system_error& failure) {
        return std::unexpected(fmt::format("cannot listen on {} port {}: {}", state->options.address,
                                           state->options.port, failure.code().message()));
    }
    state->thread = std::thread{[network = &state->network] { network->run(); }};
    return std::unique_ptr<Server>{new Server(std::move(state))};
}

Server::Server(std::unique_ptr<State> state) : m_state(std::move(state)) {}

Server::~Server()
{
    stop();
}

std::uint16_t Server::port() const
{
    return m_state->port;
}

void Server::stop()
{
    if (!m_state->thread.joinable())
        return;
    asio::post(m_state->network, [state = m_state.get()] { state->beginStop(); });
    m_state->thread.join();
    for (auto* pool : {&m_state->readers, &m_state->writers}) {
        pool->stop(); // nobody is left to hear the answers of what still queues
        pool->join();
    }
    m_state->connections.clear();
    m_state->database.reset();
}

}

#include "LedgerService/Http/Connections/Server.h"

#include <algorithm>
#include <future>
#include <thread>

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>
#include <fmt/core.h>
#include <unistd.h>

#include "LedgerService/Http/Connections/Accepting.h"
#include "LedgerService/Http/Connections/ConnectionTable.h"
#include "LedgerService/Http/Connections/HttpConnection.h"
#include "LedgerService/Http/Connections/PeerOwner.h"
#include "LedgerService/Http/Connections/TlsCertificate.h"
#include "LedgerService/Http/Dispatch/Answering.h"
#include "LedgerService/Http/Dispatch/CommandLane.h"
#include "LedgerService/Log.h"
#include "LedgerService/Mail/Postbox.h"
#include "LedgerService/Receipts/ReceiptFolder.h"
#include "LedgerService/Storage/Database.h"

namespace LedgerService {

namespace {

namespace asio = boost::asio;
using asio::ip::tcp;

/// How long requests under way may take once the server is told to stop.
constexpr std::chrono::seconds stoppingTime{15};
/// Of each kind, so that a few slow requests do not hold up the quick ones.
constexpr unsigned fewestWorkers = 4;
/// One that waits for the disk, and one that decodes meanwhile.
constexpr unsigned fileWorkers = 2;
/// Each hash of a password takes 64 MiB.
constexpr unsigned mostHashers = 2;
/// They wait for a mail server.
constexpr unsigned mailThreads = 2;

unsigned workerCount()
{
    return std::max(fewestWorkers, 2 * std::thread::hardware_concurrency());
}

/// Half of the processors at most: the other half answers requests.
unsigned hasherCount()
{
    return std::clamp(std::thread::hardware_concurrency() / 2, 1U, mostHashers);
}

std::expected<TrustedProxies, std::string> proxiesOf(const ServerOptions& options)
{
    if (!options.behindProxy)
        return TrustedProxies{};
    if (options.trustedProxies.empty())
        return TrustedProxies::anyPeer();
    return TrustedProxies::create(options.trustedProxies);
}

std::expected<std::unique_ptr<TlsCertificate>, std::string> certificateOf(const ServerOptions& options)
{
    return options.tls ? TlsCertificate::create(*options.tls) : nullptr;
}

}

struct Server::State {
    /// What the options name, found to be in order.
    struct Parts {
        TrustedProxies proxies;
        std::unique_ptr<TlsCertificate> certificate;
        std::unique_ptr<Database> database;
        std::unique_ptr<MailTransport> transport;
    };

    State(ServerOptions given, Parts parts)
        : options(std::move(given)), proxies(std::move(parts.proxies)), certificate(std::move(parts.certificate)),
          database(std::move(parts.database)),
          postbox(std::make_unique<Postbox>(*database, options.clock, options.mail, std::move(parts.transport))),
          routes(options.routes),
          receipts(options.files.empty() ? options.databaseFile : options.files, options.receiptRoom),
          dispatcher({.database = *database,
                      .receipts = receipts,
                      .postbox = *postbox,
                      .clock = options.clock,
                      .policy = options.policy}),
          lanes{.readers = WorkLane{workerCount()},
                .writers = WorkLane{workerCount()},
                .files = WorkLane{fileWorkers},
                .signIns = WorkLane{hasherCount(), {options.limits.signInsWaiting, options.limits.allSignInsWaiting}},
                .mails = WorkLane{mailThreads, {options.limits.signInsWaiting, options.limits.allSignInsWaiting}}},
          commands(dispatcher, options.limits), answering(dispatcher, lanes, commands, options.limits),
          connections(options.limits), shared{.dispatcher = dispatcher,
                                              .routes = routes,
                                              .limits = options.limits,
                                              .proxies = proxies,
                                              .answering = answering,
                                              .readers = lanes.readers,
                                              .connections = connections,
                                              .certificate = certificate.get(),
                                              .bodies = ByteBudget{options.limits.bodyBytes},
                                              .replies = ByteBudget{options.limits.replyBytes}}
    {
    }

    void listen();
    void run();
    asio::awaitable<void> take(tcp::socket socket);
    void admit(tcp::socket socket);
    [[nodiscard]] bool mayServe(const tcp::socket& socket) const;
    void sayOthersAreTurnedAway();
    void beginStop();
    [[nodiscard]] ServerLoad load();

    ServerOptions options;
    TrustedProxies proxies;
    std::unique_ptr<TlsCertificate> certificate; // none: connections are plain
    std::unique_ptr<Database> database;
    std::unique_ptr<Postbox> postbox;
    RouteTable routes;
    ReceiptFolder receipts;
    Dispatcher dispatcher;
    asio::io_context network{1};
    tcp::acceptor acceptor{network};
    asio::steady_timer deadline{network};
    WorkLanes lanes; // gone before the network, whose sockets belong to the requests that still queue here
    CommandLane commands;
    Answering answering;
    ConnectionTable connections;
    HttpShared shared;
    std::size_t open = 0;                                            // connections whose coroutine still runs
    std::optional<std::chrono::steady_clock::time_point> othersTold; // when it was said last that they are turned away
    std::uint16_t port = 0;
    std::thread thread;
};

void Server::State::listen()
{
    const tcp::endpoint endpoint{asio::ip::make_address(options.address), options.port};
    if (options.listeningSocket >= 0) {
        acceptor.assign(endpoint.protocol(), options.listeningSocket);
    } else {
        acceptor.open(endpoint.protocol());
        acceptor.set_option(tcp::acceptor::reuse_address{true});
        acceptor.bind(endpoint);
        acceptor.listen();
    }
    port = acceptor.local_endpoint().port();
    Accepting::spawn(acceptor, [this](tcp::socket socket) { return take(std::move(socket)); });
}

asio::awaitable<void> Server::State::take(tcp::socket socket)
{
    admit(std::move(socket));
    co_return;
}

/// Serves until the server stops. What one handler throws ends that handler alone.
void Server::State::run()
{
    for (;;) {
        try {
            network.run();
            return;
        } catch (const std::exception& failure) {
            Log::failure("(network)", failure.what());
        }
    }
}

bool Server::State::mayServe(const tcp::socket& socket) const
{
    if (!options.thisUserOnly)
        return true;
    // The kernel's table is read in pieces while sockets come and go: one that is not found may have been passed over.
    const auto look = [&] { return PeerOwner::of(socket.remote_endpoint(), socket.local_endpoint()); };
    auto owner = look();
    if (!owner)
        owner = look();
    return owner == ::geteuid();
}

/// In the log, and not for every knock of a program that does not give up.
void Server::State::sayOthersAreTurnedAway()
{
    const auto now = std::chrono::steady_clock::now();
    if (othersTold && now - *othersTold < std::chrono::minutes{1})
        return;
    othersTold = now;
    Log::failure("(connection)", "a program of another user of this computer was turned away");
}

/// Serves the client, or closes its socket when there is no room: those that are served come first.
void Server::State::admit(tcp::socket socket)
{
    try {
        boost::system::error_code left;
        const auto peer = socket.remote_endpoint(left).address();
        if (left || !connections.makeRoom(ClientAddress::counted(peer), proxies.isProxy(peer)))
            return;
        if (!mayServe(socket)) {
            sayOthersAreTurnedAway();
            return;
        }
        const RequestHead::Ends ends{.peer = peer, .local = socket.local_endpoint(left).address()};
        auto connection = std::make_shared<HttpConnection>(std::move(socket), ends, shared);
        connections.add(connection);
        asio::co_spawn(network, HttpConnection::serve(std::move(connection)), [this](const std::exception_ptr&) {
            --open;
            if (shared.stopping && open == 0)
                deadline.cancel();
        });
        ++open;
    } catch (const std::exception& failure) {
        Log::failure("(connection)", failure.what());
    }
}

ServerLoad Server::State::load()
{
    const auto [waiting, longest] = commands.queue();
    ServerLoad load{.commandsWaiting = waiting,
                    .longest = longest,
                    .signInsWaiting = lanes.signIns.waiting(),
                    .bodyBytes = shared.bodies.held(),
                    .replyBytes = shared.replies.held(),
                    .certificateEnds = certificate ? std::optional{certificate->end()} : std::nullopt};
    connections.count(load);
    return load;
}

void Server::State::beginStop()
{
    shared.stopping = true;
    boost::system::error_code ignored;
    acceptor.close(ignored);
    connections.finish();
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
    auto proxies = proxiesOf(options);
    if (!proxies)
        return std::unexpected(std::move(proxies.error()));
    auto database = Database::open(options.databaseFile, options.logKeeping);
    if (!database)
        return std::unexpected(std::move(database.error()));
    auto transport = options.mail.transport();
    if (!transport)
        return std::unexpected(std::move(transport.error()));
    auto certificate = certificateOf(options);
    if (!certificate)
        return std::unexpected(std::move(certificate.error()));
    auto state = std::make_unique<State>(std::move(options), State::Parts{*std::move(proxies), *std::move(certificate),
                                                                          *std::move(database), *std::move(transport)});
    try {
        state->listen();
    } catch (const boost::system::system_error& failure) {
        return std::unexpected(fmt::format("cannot listen on {} port {}: {}", state->options.address,
                                           state->options.port, failure.code().message()));
    }
    state->thread = std::thread{[running = state.get()] { running->run(); }};
    return std::unique_ptr<Server>{new Server(std::move(state))};
}

Server::Server(std::unique_ptr<State> state) : m_state(std::move(state)) {}

Server::~Server()
{
    try {
        stop();
    } catch (const std::exception& failure) {
        Log::failure("(stop)", failure.what());
    }
}

std::uint16_t Server::port() const
{
    return m_state->port;
}

std::optional<ServerLoad> Server::load()
{
    constexpr std::chrono::seconds patience{1};
    auto told = std::make_shared<std::promise<ServerLoad>>(); // whoever asks may not wait for it
    auto answer = told->get_future();
    asio::post(m_state->network, [state = m_state.get(), told] { told->set_value(state->load()); });
    return answer.wait_for(patience) == std::future_status::ready ? std::optional{answer.get()} : std::nullopt;
}

std::optional<std::string> Server::reloadCertificate()
{
    return m_state->certificate ? m_state->certificate->reload() : std::nullopt;
}

void Server::stop()
{
    if (!m_state->thread.joinable())
        return;
    asio::post(m_state->network, [state = m_state.get()] { state->beginStop(); });
    m_state->thread.join();
    auto& lanes = m_state->lanes;
    for (auto* lane : {&lanes.readers, &lanes.writers, &lanes.files, &lanes.signIns, &lanes.mails}) {
        lane->stop(); // nobody is left to hear the answers of what still queues
    }
    m_state->commands.stop();
    m_state->connections.clear();
    m_state->postbox.reset();
    m_state->database.reset();
}

}

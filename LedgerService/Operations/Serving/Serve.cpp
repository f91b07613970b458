#include "LedgerService/Operations/Serving/Serve.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/address.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/signal_set.hpp>
#include <csignal>
#include <fmt/core.h>
#include <sys/socket.h>
#include <unistd.h>

#include "LedgerService/Http/Connections/Server.h"
#include "LedgerService/Http/Routes/AllRoutes.h"
#include "LedgerService/Log.h"
#include "LedgerService/Operations/Databases/DatabaseFile.h"
#include "LedgerService/Operations/Serving/MetricsListener.h"
#include "LedgerService/Operations/Serving/ServiceGauges.h"
#include "LedgerService/Operations/Serving/ServiceManager.h"
#include "LedgerService/Operations/Serving/Upkeep.h"
#include "LedgerService/Storage/Database.h"

namespace LedgerService {

namespace {

int fail(const std::string& words)
{
    fmt::print(stderr, "tallyfold-service: {}\n", words);
    return 1;
}

std::optional<std::uint16_t> portOf(std::string_view text)
{
    std::uint16_t port = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), port);
    const bool whole = failure == std::errc{} && end == text.data() + text.size();
    return whole ? std::optional{port} : std::nullopt;
}

ServerOptions serverOptionsOf(const Serve::Options& options, const Serve::Endpoint& endpoint)
{
    ServerOptions serverOptions;
    serverOptions.address = endpoint.address;
    serverOptions.port = endpoint.port;
    serverOptions.databaseFile = options.databaseFile;
    serverOptions.files = options.files;
    serverOptions.behindProxy = options.behindTlsProxy;
    serverOptions.thisUserOnly = options.thisUserOnly;
    if (options.speaksTls())
        serverOptions.tls = {.certificate = options.tlsCertificate, .key = options.tlsKey};
    serverOptions.trustedProxies = options.trustedProxies;
    serverOptions.policy.registration = options.registration;
    serverOptions.receiptRoom = {.company = options.receiptSpace << 20,
                                 .demonstration = options.demoReceiptSpace << 20};
    serverOptions.routes = allRoutes();
    return serverOptions;
}

/// The signals that the service heeds. They are caught from the making of this on, so that one that comes during the
/// start ends it cleanly too.
class Signals {
public:
    /// Calls `reload` for each SIGHUP, if there is anything to reload, until a signal ends the service.
    void wait(std::function<void()> reload)
    {
        m_reload = std::move(reload);
        await();
        m_waiting.run();
    }

private:
    void await()
    {
        m_signals.async_wait([this](boost::system::error_code, int signal) {
            if (signal != SIGHUP || !m_reload)
                return;
            m_reload();
            await();
        });
    }

    boost::asio::io_context m_waiting{1};
    boost::asio::signal_set m_signals{m_waiting, SIGINT, SIGTERM, SIGHUP};
    std::function<void()> m_reload;
};

/// Nobody is told on the day itself: clients then refuse the service without a word to it.
void warnOfExpiry(Server& server)
{
    constexpr std::chrono::hours day{24};
    constexpr int soon = 14;
    const auto load = server.load();
    if (!load || !load->certificateEnds)
        return;
    const auto left = *load->certificateEnds - std::chrono::system_clock::now();
    if (left < soon * day)
        Log::warning(fmt::format("the certificate expires in {} days", std::max<std::int64_t>(left / day, 0)));
}

/// What the service does at SIGHUP; nothing for one that it ends.
std::function<void()> reloadingOf(const Serve::Options& options, Server& server)
{
    if (!options.speaksTls() && isatty(STDIN_FILENO) == 1)
        return {}; // the terminal is closed
    if (!options.speaksTls())
        return [] { Log::note("there is no certificate to read again"); };
    return [&server] {
        if (const auto refused = server.reloadCertificate())
            Log::warning(*refused + "; the certificate stays as it was");
        else
            Log::note("the certificate was read again");
        warnOfExpiry(server);
    };
}

}

bool Serve::Endpoint::isLoopback() const
{
    boost::system::error_code failure;
    const auto parsed = boost::asio::ip::make_address(address, failure);
    return !failure && parsed.is_loopback();
}

std::string Serve::Endpoint::url(std::string_view scheme) const
{
    const bool version6 = address.find(':') != std::string::npos;
    return version6 ? fmt::format("{}://[{}]:{}", scheme, address, port)
                    : fmt::format("{}://{}:{}", scheme, address, port);
}

std::optional<Serve::Endpoint> Serve::parseEndpoint(const std::string& text)
{
    const auto colon = text.rfind(':');
    if (colon == std::string::npos)
        return std::nullopt;
    auto address = text.substr(0, colon);
    if (address.starts_with('[') && address.ends_with(']'))
        address = address.substr(1, address.size() - 2);
    const auto port = portOf(std::string_view{text}.substr(colon + 1));
    boost::system::error_code failure;
    boost::asio::ip::make_address(address, failure);
    if (failure || !port)
        return std::nullopt;
    return Endpoint{address, *port};
}

std::expected<MailSettings, std::string> Serve::mailSettings(const Options& options, bool local)
{
    MailSettings settings;
    if (!options.mailFrom.empty())
        settings.sender = options.mailFrom;
    settings.spoolFolder = options.mailSpool;
    if (options.smtpServer.empty()) {
        if (settings.spoolFolder.empty() && local)
            settings.spoolFolder = (options.files.empty() ? options.databaseFile : options.files) + ".mail";
        return settings;
    }
    if (options.mailFrom.empty())
        return std::unexpected("a mail server takes mail from an address: name it with --mail-from");
    settings.smtp = {
        .url = options.smtpServer, .user = options.smtpUser, .password = {}, .authorities = options.smtpAuthorities};
    if (options.smtpPasswordFile.empty())
        return settings;
    std::ifstream file{options.smtpPasswordFile};
    if (!std::getline(file, settings.smtp.password))
        return std::unexpected("cannot read the password of the mail server from " + options.smtpPasswordFile);
    return settings;
}

std::optional<Serve::Endpoint> Serve::endpointOf(int listeningSocket)
{
    int listens = 0;
    socklen_t size = sizeof(listens);
    if (getsockopt(listeningSocket, SOL_SOCKET, SO_ACCEPTCONN, &listens, &size) != 0 || listens == 0)
        return std::nullopt;
    boost::asio::ip::tcp::endpoint place;
    size = static_cast<socklen_t>(place.capacity());
    if (getsockname(listeningSocket, place.data(), &size) != 0)
        return std::nullopt;
    const bool isTcp = place.data()->sa_family == AF_INET || place.data()->sa_family == AF_INET6;
    return isTcp ? std::optional{Endpoint{place.address().to_string(), place.port()}} : std::nullopt;
}

std::expected<Serve::Endpoint, std::string> Serve::place(const Options& options, std::optional<int> handedOver)
{
    const auto found = handedOver ? endpointOf(*handedOver) : parseEndpoint(options.listen);
    if (found)
        return *found;
    return std::unexpected(handedOver
                               ? "what the service manager hands over is no socket that listens for TCP connections"
                               : "--listen takes a numeric address and a port, such as 127.0.0.1:48731 or [::1]:48731");
}

namespace {

/// What is wrong with the options or the file. `local` tells that the service is reached from this machine alone.
std::optional<std::string> whyNotServe(const Serve::Options& options, const Serve::Endpoint& endpoint, bool local)
{
    if (!endpoint.isLoopback() && !options.behindTlsProxy && !options.speaksTls())
        return "passwords and tokens would cross the network unprotected: give the service a certificate with "
               "--tls-certificate and --tls-key, or put a proxy that speaks TLS in front and say so with "
               "--behind-tls-proxy, or listen on a loopback address";
    if (!local && options.demonstration == DemonstrationMode::shared)
        return "the shared demonstration, whose password is public, is for this machine alone: others get a "
               "company for each visitor with --demo private";
    if (auto refused = options.create ? DatabaseFile::whyNotName(options.databaseFile)
                                      : DatabaseFile::whyNotExisting(options.databaseFile))
        return *refused + (options.create ? "" : " (new books begin with create-company, or with serve --create)");
    if (const auto beside = DatabaseFile::filesBeside(options.databaseFile, options.files); !beside)
        return beside.error();
    return DatabaseFile::whyNotSafe(options.databaseFile);
}

/// Tells of what an operator should know of the files that a service begins with.
void warn(const Serve::Options& options)
{
    for (const auto& each : DatabaseFile::warnings(options.databaseFile))
        Log::warning(each);
    std::error_code failure;
    const auto key = std::filesystem::status(options.tlsKey, failure);
    if (!failure && (key.permissions() & std::filesystem::perms::others_read) != std::filesystem::perms::none)
        Log::warning(fmt::format("everyone on this machine may read the key in {} (chmod o-r)", options.tlsKey));
}

}

int Serve::run(const Options& options)
{
    const auto handedOver = ServiceManager::takeSocket();
    auto endpoint = place(options, handedOver);
    if (!endpoint)
        return fail(endpoint.error());
    const bool local = endpoint->isLoopback() && !options.behindTlsProxy;
    if (const auto refused = whyNotServe(options, *endpoint, local))
        return fail(*refused);
    Log::start(options.quiet ? Log::Level::failures : Log::Level::requests);
    auto mail = mailSettings(options, local);
    if (!mail)
        return fail(mail.error());
    auto serverOptions = serverOptionsOf(options, *endpoint);
    serverOptions.listeningSocket = handedOver.value_or(-1);
    serverOptions.policy.demonstration =
        options.demonstration.value_or(local ? DemonstrationMode::shared : DemonstrationMode::off);
    serverOptions.mail = *std::move(mail);
    Signals signals;
    const auto server = Server::start(std::move(serverOptions));
    if (!server)
        return fail(server.error());
    warn(options);
    warnOfExpiry(**server);
    auto database = Database::openExisting(options.databaseFile);
    if (!database)
        return fail(database.error());
    auto watched = Database::openExisting(options.databaseFile);
    if (!watched)
        return fail(watched.error());
    std::unique_ptr<MetricsListener> metrics;
    if (!options.metrics.empty()) {
        const auto place = parseEndpoint(options.metrics);
        if (!place)
            return fail("--metrics takes a numeric address and a port, such as 127.0.0.1:9464");
        const ServiceGauges gauges{**server, **watched, options.databaseFile};
        auto listener = MetricsListener::start(place->address, place->port, [gauges] { return gauges.now(); });
        if (!listener)
            return fail(listener.error());
        metrics = *std::move(listener);
        Log::note(fmt::format("figures are on port {}", metrics->port()));
    }
    std::optional<Upkeep> upkeep;
    upkeep.emplace(options.files.empty() ? options.databaseFile : options.files, *std::move(database));
    endpoint->port = (*server)->port();
    fmt::print("Tallyfold service listening on {}\n", endpoint->url(options.speaksTls() ? "https" : "http"));
    std::fflush(stdout);
    ServiceManager::tell("READY=1");
    signals.wait(reloadingOf(options, **server));
    Log::note("stopping");
    ServiceManager::tell("STOPPING=1");
    metrics.reset();
    upkeep.reset();
    (*server)->stop();
    Log::finish();
    return 0;
}

}

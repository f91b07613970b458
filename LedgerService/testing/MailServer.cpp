#include "LedgerService/testing/MailServer.h"

#include <chrono>
#include <optional>
#include <type_traits>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read_until.hpp>
#include <boost/asio/ssl.hpp>
#include <boost/asio/write.hpp>
#include <fmt/core.h>

namespace LedgerService {

namespace {

namespace asio = boost::asio;
using asio::ip::tcp;

constexpr std::chrono::seconds patience{10};
const std::string greeting = "220 mail.example ready";

/// One line without its end; nothing once the client has left.
template <class Stream>
std::optional<std::string> readLine(Stream& stream, std::string& buffer)
{
    boost::system::error_code failure;
    const auto length = asio::read_until(stream, asio::dynamic_buffer(buffer), "\r\n", failure);
    if (failure)
        return std::nullopt;
    auto line = buffer.substr(0, length - 2);
    buffer.erase(0, length);
    return line;
}

template <class Stream>
void say(Stream& stream, const std::string& line)
{
    boost::system::error_code ignored;
    asio::write(stream, asio::buffer(line + "\r\n"), ignored);
}

template <class Stream>
std::string readMessage(Stream& stream, std::string& buffer)
{
    std::string message;
    for (auto line = readLine(stream, buffer); line && *line != "."; line = readLine(stream, buffer))
        message += (line->starts_with('.') ? line->substr(1) : *line) + "\r\n";
    return message;
}

}

struct MailServer::Network {
    explicit Network(Protocol protocol)
        : acceptor(context, protocol == Protocol::version6 ? tcp::endpoint{asio::ip::address_v6::loopback(), 0}
                                                           : tcp::endpoint{asio::ip::address_v4::loopback(), 0})
    {
    }

    asio::io_context context;
    tcp::acceptor acceptor;
    std::optional<asio::ssl::context> tls;
};

MailServer::MailServer(const std::string& certificateFile, Tls tls, Protocol protocol)
    : m_tls(tls), m_network(std::make_unique<Network>(protocol))
{
    if (!certificateFile.empty()) {
        m_network->tls.emplace(asio::ssl::context::tls_server);
        m_network->tls->use_certificate_chain_file(certificateFile);
        m_network->tls->use_private_key_file(certificateFile, asio::ssl::context::pem);
    }
    m_thread = std::thread{[this] { serve(); }};
}

MailServer::~MailServer()
{
    m_ending = true;
    boost::system::error_code ignored;
    tcp::socket{m_network->context}.connect(m_network->acceptor.local_endpoint(), ignored);
    m_thread.join();
}

std::string MailServer::url() const
{
    const auto place = m_network->acceptor.local_endpoint();
    const bool secure = m_network->tls && m_tls == Tls::fromTheFirstByte;
    return fmt::format("{}://{}:{}", secure ? "smtps" : "smtp", place.address().is_v6() ? "[::1]" : "127.0.0.1",
                       place.port());
}

std::vector<MailServer::Received> MailServer::received(std::size_t count)
{
    std::unique_lock guard{m_guard};
    m_arrived.wait_for(guard, patience, [&] { return m_received.size() >= count; });
    return m_received;
}

void MailServer::serve()
{
    while (!m_ending) {
        boost::system::error_code failure;
        auto socket = m_network->acceptor.accept(failure);
        if (failure || m_ending)
            return;
        ++m_connections;
        if (!m_network->tls)
            converse(socket, false);
        else if (m_tls == Tls::fromTheFirstByte || converse(socket, true))
            serveSecurely(std::move(socket), m_tls);
    }
}

void MailServer::serveSecurely(tcp::socket socket, Tls tls)
{
    boost::system::error_code failure;
    asio::ssl::stream<tcp::socket> stream{std::move(socket), *m_network->tls};
    stream.handshake(asio::ssl::stream_base::server, failure);
    if (failure)
        return;
    if (tls == Tls::fromTheFirstByte)
        say(stream, greeting);
    converse(stream, false);
}

/// Until the client leaves or asks for TLS; true for the latter.
template <class Stream>
bool MailServer::converse(Stream& stream, bool offersTls)
{
    Received mail;
    mail.isSecure = !std::is_same_v<Stream, tcp::socket>;
    std::string buffer;
    if (!mail.isSecure)
        say(stream, greeting);
    for (auto line = readLine(stream, buffer); line; line = readLine(stream, buffer)) {
        const auto verb = line->substr(0, 4);
        if (offersTls && *line == "STARTTLS") {
            say(stream, "220 go on");
            return true;
        }
        if (verb == "EHLO") {
            say(stream, "250-mail.example");
            if (offersTls)
                say(stream, "250-STARTTLS");
            say(stream, "250 AUTH PLAIN");
        } else if (verb == "AUTH") {
            say(stream, "334 ");
            mail.login = readLine(stream, buffer).value_or("");
            say(stream, "235 welcome");
        } else if (verb == "MAIL") {
            mail.sender = line->substr(10);
            say(stream, "250 ok");
        } else if (verb == "RCPT") {
            mail.recipient = line->substr(8);
            say(stream, fmt::format("{} recipient", m_recipientReply.load()));
        } else if (verb == "DATA") {
            say(stream, "354 go on");
            mail.message = readMessage(stream, buffer);
            {
                const std::lock_guard guard{m_guard};
                m_received.push_back(mail);
            }
            m_arrived.notify_all();
            say(stream, "250 taken");
        } else {
            say(stream, verb == "QUIT" ? "221 bye" : "250 ok");
        }
    }
    return false;
}

}

#include "LedgerService/testing/HttpClient.h"

#include <algorithm>
#include <array>
#include <cctype>

#include <boost/asio/connect.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/ssl/stream.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/string_body.hpp>
#include <fmt/core.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/Requests/Replies.h"

namespace LedgerService {

namespace {

namespace asio = boost::asio;
namespace http = boost::beast::http;
namespace ssl = boost::asio::ssl;

}

std::string HttpAnswer::code() const
{
    const auto reply = Json::decode<ErrorReply>(body);
    return reply ? reply->error.code.value_or("") : std::string{};
}

std::string HttpAnswer::header(const std::string& name) const
{
    const auto found = headers.find(name);
    return found == headers.end() ? std::string{} : found->second;
}

struct HttpClient::Socket {
    asio::io_context context;
    asio::ip::tcp::socket socket{context};
    std::optional<ssl::context> rules;
    std::optional<ssl::stream<asio::ip::tcp::socket&>> secure;
    boost::beast::flat_buffer buffer;

    void speakTls(const Tls& tls);

    /// Calls `work` with the stream to speak on.
    template <class Work>
    auto on(Work work)
    {
        return secure ? work(*secure) : work(socket);
    }
};

void HttpClient::Socket::speakTls(const Tls& tls)
{
    rules.emplace(ssl::context::tls_client);
    rules->set_verify_mode(ssl::verify_peer);
    rules->load_verify_file(tls.authorityFile);
    auto* const native = rules->native_handle();
    SSL_CTX_set_security_level(native, 0); // it is the service that has to insist on what is safe
    SSL_CTX_set_min_proto_version(native, TLS1_1_VERSION);
    const std::array versions{TLS1_1_VERSION, TLS1_2_VERSION, TLS1_3_VERSION};
    SSL_CTX_set_max_proto_version(native, versions.at(static_cast<std::size_t>(tls.newest)));
    secure.emplace(socket, *rules);
    boost::system::error_code failure;
    secure->handshake(ssl::stream_base::client, failure);
}

HttpClient::HttpClient(std::uint16_t port, std::string from) : m_port(port), m_from(std::move(from))
{
    connect();
}

HttpClient::HttpClient(std::uint16_t port, Tls tls) : m_port(port), m_from("127.0.0.1"), m_tls(std::move(tls))
{
    connect();
}

HttpClient::~HttpClient() = default;

void HttpClient::connect()
{
    m_socket = std::make_unique<Socket>();
    m_socket->socket.open(asio::ip::tcp::v4());
    m_socket->socket.bind({asio::ip::make_address(m_from), 0});
    m_socket->socket.connect({asio::ip::address_v4::loopback(), m_port});
    if (m_tls)
        m_socket->speakTls(*m_tls);
}

HttpAnswer HttpClient::send(std::string_view method, const std::string& path, const std::string& token,
                            const std::string& body, std::string_view headers)
{
    auto text = fmt::format("{} {} HTTP/1.1\r\nHost: localhost\r\nAccept: application/json\r\n", method, path);
    if (!token.empty())
        text += fmt::format("Authorization: Bearer {}\r\n", token);
    if (!body.empty() || method != "GET")
        text += fmt::format("Content-Type: application/json\r\nContent-Length: {}\r\n", body.size());
    text.append(headers);
    text += "\r\n" + body;
    auto answer = sendRaw(text);
    if (answer.status != 0)
        return answer;
    connect();
    return sendRaw(text);
}

HttpAnswer HttpClient::sendRaw(std::string_view bytes)
{
    write(bytes);
    return read();
}

void HttpClient::write(std::string_view bytes)
{
    m_headAsked = bytes.empty() ? m_headAsked : bytes.starts_with("HEAD ");
    boost::system::error_code left;
    m_socket->on([&](auto& stream) { return asio::write(stream, asio::buffer(bytes.data(), bytes.size()), left); });
}

void HttpClient::finishSending()
{
    boost::system::error_code left;
    m_socket->socket.shutdown(asio::ip::tcp::socket::shutdown_send, left);
}

HttpAnswer HttpClient::read()
{
    http::response_parser<http::string_body> parser;
    parser.body_limit(boost::none);
    parser.skip(m_headAsked);
    boost::system::error_code failure;
    m_socket->on([&](auto& stream) { return http::read(stream, m_socket->buffer, parser, failure); });
    if (failure)
        return {};
    const auto& message = parser.get();
    HttpAnswer answer{.status = static_cast<int>(message.result_int()), .body = message.body()};
    for (const auto& field : message) {
        std::string name{field.name_string().data(), field.name_string().size()};
        std::ranges::transform(name, name.begin(), [](unsigned char each) { return std::tolower(each); });
        answer.headers[name] = std::string{field.value().data(), field.value().size()};
    }
    return answer;
}

std::size_t HttpClient::unreadBytes() const
{
    return m_socket->socket.available();
}

bool HttpClient::isClosedByService()
{
    char byte = 0;
    boost::system::error_code failure;
    m_socket->on([&](auto& stream) { return stream.read_some(asio::buffer(&byte, 1), failure); });
    return failure == asio::error::eof || failure == asio::error::connection_reset;
}

}

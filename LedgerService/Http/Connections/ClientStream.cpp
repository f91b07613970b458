#include "LedgerService/Http/Connections/ClientStream.h"

#include <array>

#include <boost/asio/redirect_error.hpp>
#include <boost/asio/use_awaitable.hpp>

namespace LedgerService {

namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;

constexpr std::size_t leavingBytes = 4096;

}

ClientStream::ClientStream(asio::ip::tcp::socket socket) : m_plain(std::move(socket))
{
    beast::error_code ignored;
    m_plain.socket().set_option(asio::ip::tcp::no_delay{true}, ignored);
}

asio::awaitable<beast::error_code> ClientStream::secure(TlsCertificate::Context context, asio::const_buffer begun)
{
    m_context = std::move(context);
    m_secure.emplace(m_plain, *m_context);
    beast::error_code failure;
    auto token = asio::redirect_error(asio::use_awaitable, failure);
    const auto taken = co_await m_secure->async_handshake(asio::ssl::stream_base::server, begun, token);
    if (!failure && taken != begun.size())
        co_return beast::errc::make_error_code(beast::errc::protocol_error); // nothing may come before its answer
    co_return failure;
}

asio::awaitable<void> ClientStream::leave()
{
    beast::error_code failure;
    auto token = asio::redirect_error(asio::use_awaitable, failure);
    if (m_secure)
        co_await m_secure->async_shutdown(token); // said at once; then it waits for the client to say the same
    m_plain.socket().shutdown(asio::ip::tcp::socket::shutdown_send, failure);
    std::array<char, leavingBytes> unread{};
    failure = {};
    while (!failure)
        co_await m_plain.async_read_some(asio::buffer(unread), token);
}

void ClientStream::close()
{
    beast::error_code ignored;
    m_plain.socket().shutdown(asio::ip::tcp::socket::shutdown_both, ignored);
    m_plain.close();
}

}

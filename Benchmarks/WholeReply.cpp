#include "Benchmarks/WholeReply.h"

#include <charconv>
#include <cstring>
#include <stdexcept>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/write.hpp>
#include <fmt/core.h>

namespace {

namespace asio = boost::asio;

constexpr std::size_t roomAtOnce = std::size_t{1} << 20;
constexpr std::string_view lineEnd = "\r\n";
constexpr std::string_view headerEnd = "\r\n\r\n";

}

struct WholeReply::Connection {
    asio::io_context context;
    asio::ip::tcp::socket socket{context};
};

WholeReply::WholeReply(std::uint16_t port) : m_connection(std::make_unique<Connection>())
{
    m_connection->socket.connect({asio::ip::address_v4::loopback(), port});
}

WholeReply::~WholeReply() = default;

/// Adds what has arrived.
void WholeReply::take()
{
    if (m_bytes.size() < m_arrived + roomAtOnce)
        m_bytes.resize(2 * (m_arrived + roomAtOnce));
    m_arrived += m_connection->socket.read_some(asio::buffer(m_bytes.data() + m_arrived, m_bytes.size() - m_arrived));
}

void WholeReply::awaitBytes(std::size_t count)
{
    while (m_arrived < count)
        take();
}

std::string_view WholeReply::get(const std::string& path, const std::string& token)
{
    const auto request =
        fmt::format("GET {} HTTP/1.1\r\nHost: localhost\r\nAuthorization: Bearer {}\r\n\r\n", path, token);
    asio::write(m_connection->socket, asio::buffer(request));
    m_arrived = 0;
    const auto find = [&](std::string_view text, std::size_t from) {
        auto at = std::string_view::npos;
        while ((at = std::string_view{m_bytes.data(), m_arrived}.find(text, from)) == std::string_view::npos)
            take();
        return at;
    };
    auto at = find(headerEnd, 0) + headerEnd.size();
    if (!m_bytes.starts_with("HTTP/1.1 200"))
        throw std::runtime_error("the snapshot was not answered with 200");
    const auto begin = at;
    auto end = begin; // of the body, which moves together over the sizes of its chunks
    for (std::size_t size = 1; size > 0; at += size + lineEnd.size()) {
        const auto line = find(lineEnd, at);
        if (std::from_chars(m_bytes.data() + at, m_bytes.data() + line, size, 16).ec != std::errc{})
            throw std::runtime_error("the reply is not in chunks");
        at = line + lineEnd.size();
        awaitBytes(at + size + lineEnd.size());
        std::memmove(m_bytes.data() + end, m_bytes.data() + at, size);
        end += size;
    }
    return {m_bytes.data() + begin, end - begin};
}

#include "LedgerCore/Client/testing/ScriptedServer.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

#include <QHostAddress>
#include <QTcpSocket>
#include <QTimer>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Text/TextFold.h"

namespace {

std::string routeOf(const ServerRequest& request)
{
    return request.method + " " + request.path.substr(1);
}

/// Whether the request goes there; a route without a query is that of every query.
bool goesTo(const std::string& route, const ServerRequest& request)
{
    const auto whole = routeOf(request);
    return whole == route || whole.substr(0, whole.find('?')) == route;
}

void readHeader(ServerRequest& request, std::string_view line)
{
    const auto colon = line.find(':');
    request.headers[TextFold::folded(line.substr(0, colon))] = TextFold::trimmed(line.substr(colon + 1));
}

/// The first whole request in `buffer`, taken out of it; nothing while it has not arrived whole.
std::optional<ServerRequest> takeRequest(std::string& buffer)
{
    const auto headEnd = buffer.find("\r\n\r\n");
    if (headEnd == std::string::npos)
        return std::nullopt;
    ServerRequest request;
    std::size_t start = 0;
    for (auto end = buffer.find("\r\n"); start <= headEnd; end = buffer.find("\r\n", start)) {
        const std::string_view line{buffer.data() + start, end - start};
        if (start == 0) {
            const auto pathAt = line.find(' ') + 1;
            request.method = line.substr(0, pathAt - 1);
            request.path = line.substr(pathAt, line.find(' ', pathAt) - pathAt);
        } else {
            readHeader(request, line);
        }
        start = end + 2;
    }
    const auto announced = request.header("content-length");
    const auto length = announced.empty() ? 0 : std::stoul(announced);
    if (buffer.size() < headEnd + 4 + length)
        return std::nullopt;
    request.body = buffer.substr(headEnd + 4, length);
    buffer.erase(0, headEnd + 4 + length);
    return request;
}

std::string head(const ServerReply& reply, std::size_t length)
{
    auto text =
        "HTTP/1.1 " + std::to_string(reply.status) + " Scripted\r\nContent-Length: " + std::to_string(length) + "\r\n";
    for (const auto& line : reply.headers)
        text += line + "\r\n";
    return text + "\r\n";
}

void write(QTcpSocket& socket, const std::string& text)
{
    socket.write(text.data(), static_cast<qint64>(text.size()));
}

void drip(QTcpSocket& socket, const ServerReply& reply)
{
    auto* const timer = new QTimer(&socket);
    auto next = std::size_t{0};
    QObject::connect(timer, &QTimer::timeout, &socket, [&socket, timer, body = reply.body, next]() mutable {
        write(socket, body.substr(next++, 1));
        if (next == body.size())
            timer->stop();
    });
    timer->start(reply.pause);
}

}

ScriptedServer::ScriptedServer()
{
    const bool listening = listen(QHostAddress::LocalHost);
    require(listening, "a loopback port is to be had");
    connect(this, &QTcpServer::newConnection, this, [this] {
        ++m_connectionCount;
        auto* const socket = nextPendingConnection();
        socket->setProperty("buffer", QByteArray{});
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { receive(*socket); });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    });
}

std::string ScriptedServer::url() const
{
    return "http://127.0.0.1:" + std::to_string(serverPort());
}

void ScriptedServer::answer(const std::string& route, ServerReply reply)
{
    m_script[route].push_back(std::move(reply));
}

void ScriptedServer::replace(const std::string& route, ServerReply reply)
{
    m_script[route] = {std::move(reply)};
}

void ScriptedServer::release(const ServerReply& reply)
{
    require(!m_parked.empty(), "only a parked request can be released");
    const auto socket = m_parked.front();
    m_parked.pop_front();
    if (socket)
        send(*socket, reply);
}

std::vector<ServerRequest> ScriptedServer::requests(const std::string& route) const
{
    std::vector<ServerRequest> matching;
    std::ranges::copy_if(m_requests, std::back_inserter(matching),
                         [&](const ServerRequest& request) { return goesTo(route, request); });
    return matching;
}

void ScriptedServer::receive(QTcpSocket& socket)
{
    auto buffer = (socket.property("buffer").toByteArray() + socket.readAll()).toStdString();
    auto request = takeRequest(buffer);
    socket.setProperty("buffer", QByteArray::fromStdString(buffer));
    if (request)
        handle(socket, std::move(*request));
}

std::deque<ServerReply>* ScriptedServer::repliesTo(const ServerRequest& request)
{
    const auto exact = m_script.find(routeOf(request));
    const auto found = exact != m_script.end() ? exact : std::ranges::find_if(m_script, [&](const auto& each) {
        return goesTo(each.first, request);
    });
    return found == m_script.end() ? nullptr : &found->second;
}

void ScriptedServer::handle(QTcpSocket& socket, ServerRequest request)
{
    auto* const replies = repliesTo(request);
    m_requests.push_back(std::move(request));
    if (!replies) {
        send(socket, ServerReply::error(404, "unscripted"));
        return;
    }
    const auto reply = replies->front();
    if (replies->size() > 1)
        replies->pop_front();
    send(socket, reply);
}

void ScriptedServer::send(QTcpSocket& socket, const ServerReply& reply)
{
    switch (reply.kind) {
    case ServerReply::Kind::whole:
        write(socket, head(reply, reply.body.size()) + reply.body);
        return;
    case ServerReply::Kind::parked:
        m_parked.emplace_back(&socket);
        return;
    case ServerReply::Kind::dropped:
        socket.abort();
        return;
    case ServerReply::Kind::raw:
        write(socket, reply.body);
        socket.disconnectFromHost();
        return;
    case ServerReply::Kind::cutShort:
        write(socket, head(reply, reply.body.size() + 1) + reply.body);
        socket.disconnectFromHost();
        return;
    case ServerReply::Kind::dripping:
        write(socket, head(reply, reply.body.size()));
        drip(socket, reply);
        return;
    }
}

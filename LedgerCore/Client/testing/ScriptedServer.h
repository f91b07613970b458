#pragma once

#include <deque>
#include <map>
#include <string>
#include <vector>

#include <QPointer>
#include <QTcpServer>

#include "LedgerCore/Client/testing/ServerReply.h"

class QTcpSocket;

/// A loopback service that answers by script and remembers what it was asked. An unscripted request is answered with
/// 404 and the code "unscripted".
class ScriptedServer final : public QTcpServer {
public:
    ScriptedServer();

    /// The base address to give to a client.
    [[nodiscard]] std::string url() const;

    /// Answers `route`, such as "GET v1/snapshot", whatever its query, unless the route names one. Several replies to
    /// one route are given in turn, the last one again and again.
    void answer(const std::string& route, ServerReply reply);

    /// Forgets what was scripted for the route and answers it so.
    void replace(const std::string& route, ServerReply reply);

    /// Answers the request that has been parked longest.
    void release(const ServerReply& reply);

    [[nodiscard]] const std::vector<ServerRequest>& requests() const { return m_requests; }
    [[nodiscard]] std::vector<ServerRequest> requests(const std::string& route) const;
    [[nodiscard]] int connectionCount() const { return m_connectionCount; }
    [[nodiscard]] std::size_t parkedCount() const { return m_parked.size(); }

private:
    [[nodiscard]] std::deque<ServerReply>* repliesTo(const ServerRequest& request);
    void receive(QTcpSocket& socket);
    void handle(QTcpSocket& socket, ServerRequest request);
    void send(QTcpSocket& socket, const ServerReply& reply);

    std::map<std::string, std::deque<ServerReply>> m_script;
    std::vector<ServerRequest> m_requests;
    std::deque<QPointer<QTcpSocket>> m_parked;
    int m_connectionCount = 0;
};

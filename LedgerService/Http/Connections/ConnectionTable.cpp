#include "LedgerService/Http/Connections/ConnectionTable.h"

#include <algorithm>

#include "LedgerService/Http/Connections/HttpConnection.h"

namespace LedgerService {

template <class Wanted>
bool ConnectionTable::dropLongestWaiting(Wanted wanted)
{
    std::shared_ptr<HttpConnection> longest;
    for (const auto& each : m_connections) {
        const auto connection = each.lock();
        if (connection && connection->isWaiting() && wanted(*connection) &&
            (!longest || connection->lastProgress() < longest->lastProgress()))
            longest = connection;
    }
    if (longest)
        longest->abandon();
    return longest != nullptr;
}

bool ConnectionTable::makeRoom(const std::string& client, bool isProxy)
{
    std::erase_if(m_connections, [](const auto& each) {
        const auto connection = each.lock();
        return !connection || connection->isGone();
    });
    const auto isOfClient = [&](const HttpConnection& each) { return each.client() == client; };
    const auto ofClient = std::ranges::count_if(m_connections, [&](const auto& each) {
        const auto connection = each.lock();
        return connection && isOfClient(*connection);
    });
    if (!isProxy && static_cast<std::size_t>(ofClient) >= m_limits.connectionsPerClient)
        return dropLongestWaiting(isOfClient);
    return m_connections.size() < m_limits.connections || dropLongestWaiting([](const auto&) { return true; });
}

void ConnectionTable::add(const std::shared_ptr<HttpConnection>& connection)
{
    m_connections.push_back(connection);
}

bool ConnectionTable::dropSlowestBody(const HttpConnection& asking)
{
    return dropLongestWaiting([&](const auto& each) { return &each != &asking && each.holdsBody(); });
}

bool ConnectionTable::dropSlowestReader(const HttpConnection& asking)
{
    return dropLongestWaiting([&](const auto& each) { return &each != &asking && each.holdsReply(); });
}

void ConnectionTable::count(ServerLoad& load) const
{
    for (const auto& each : m_connections) {
        const auto connection = each.lock();
        if (connection && !connection->isGone())
            load.connections.at(static_cast<std::size_t>(connection->about())) += 1;
    }
}

void ConnectionTable::finish()
{
    for (const auto& each : m_connections) {
        if (const auto connection = each.lock())
            connection->finish();
    }
}

}

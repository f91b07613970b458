#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "LedgerService/Http/Connections/ServerLoad.h"
#include "LedgerService/Http/HttpLimits.h"

namespace LedgerService {

class HttpConnection;

/// The open connections of a server. Whoever keeps the service waiting gives way to those who come after.
class ConnectionTable {
public:
    explicit ConnectionTable(const HttpLimits& limits) : m_limits(limits) {}

    /// Makes room for a connection of this client and says whether there is any: past a limit the connection that has
    /// kept the service waiting longest is dropped. `isProxy`: it stands for many clients.
    bool makeRoom(const std::string& client, bool isProxy);

    void add(const std::shared_ptr<HttpConnection>& connection);

    /// Drops the connection whose body, or whose reply, has made no progress for the longest time; false when there is
    /// none beside `asking`.
    bool dropSlowestBody(const HttpConnection& asking);
    bool dropSlowestReader(const HttpConnection& asking);

    /// Counts them by what they are about.
    void count(ServerLoad& load) const;

    /// Tells all to end.
    void finish();

    void clear() { m_connections.clear(); }

private:
    template <class Wanted>
    bool dropLongestWaiting(Wanted wanted);

    const HttpLimits& m_limits;
    std::vector<std::weak_ptr<HttpConnection>> m_connections;
};

}

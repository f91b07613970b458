#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

#include "LedgerService/Storage/Sql/Connection.h"

struct pg_conn;

namespace soci {
class session;
}

namespace LedgerService {

/// What only PostgreSQL's own library does, on a session that is open.
class PostgresqlSession {
public:
    /// The address with what a service needs beside it: of several servers the one that takes writes, and the end of a
    /// connection whose server is gone is noticed within half a minute.
    static std::string address(const std::string& database, Connection::Access access);

    PostgresqlSession(soci::session& session, Connection::Access access);

    /// Runs statements that have no parameters and give no rows.
    void control(const std::string& statements);

    /// Begins a transaction, once more when the database gives it up in favour of another before it has done anything.
    void begin(const std::string& statements);
    /// The same for one that waits for others no longer than until then.
    void beginUntil(std::chrono::steady_clock::time_point until, const std::string& statements);

    /// Throws `CommitUnknown` when the server is lost before it has answered.
    void commit();

    /// Whether the server has ended the connection.
    [[nodiscard]] bool isLost() const;

private:
    using Steady = std::chrono::steady_clock;
    void beginUntil(Steady::time_point until, const std::function<std::string()>& statements);
    void abandon();

    pg_conn* m_connection;
};

}

#include "LedgerService/Storage/Sql/PostgresqlSession.h"

#include <array>
#include <chrono>
#include <memory>

#include <fmt/core.h>
#include <poll.h>
#include <soci/postgresql/soci-postgresql.h>
#include <soci/soci.h>

#include "LedgerService/Storage/Sql/DatabaseFailure.h"
#include "LedgerService/Storage/Sql/Patience.h"

namespace LedgerService {

namespace {

using Result = std::unique_ptr<PGresult, decltype(&PQclear)>;

constexpr auto unknownState = "     "; // as the library calls what the server has not said

struct Parameter {
    std::string_view name;
    std::string_view value;
};

constexpr std::array liveliness{
    Parameter{"connect_timeout", "5"},      Parameter{"keepalives_idle", "10"},
    Parameter{"keepalives_interval", "5"},  Parameter{"keepalives_count", "3"},
    Parameter{"tcp_user_timeout", "20000"}, Parameter{"application_name", "tallyfold"},
};

std::string waitingFor(std::chrono::milliseconds patience)
{
    return fmt::format("SET lock_timeout = '{}ms'", patience.count());
}

/// A commit is answered when it is durable, whatever the role or the database says otherwise.
constexpr auto durably = R"sql(
    SELECT set_config('synchronous_commit', 'on', false) WHERE current_setting('synchronous_commit') IN ('off', 'local')
)sql";

void add(std::string& address, const Parameter& parameter)
{
    if (address.find(fmt::format("{}=", parameter.name)) == std::string::npos)
        address +=
            fmt::format("{}{}={}", address.find('?') == std::string::npos ? '?' : '&', parameter.name, parameter.value);
}

[[noreturn]] void fail(PGresult* result, PGconn* connection)
{
    const char* const state = result ? PQresultErrorField(result, PG_DIAG_SQLSTATE) : nullptr;
    const char* const words = result ? PQresultErrorMessage(result) : PQerrorMessage(connection);
    throw soci::postgresql_soci_error(words, state ? state : unknownState);
}

/// Runs the statements and gives what the last of them came to.
Result run(PGconn* connection, const std::string& statements)
{
    Result result{PQexec(connection, statements.c_str()), PQclear};
    const auto status = PQresultStatus(result.get());
    if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK)
        fail(result.get(), connection);
    return result;
}

/// The library shows the type of its backend, but not the type's description that a check of the cast would ask for.
[[clang::no_sanitize("vptr")]] PGconn* connectionOf(soci::session& session)
{
    return static_cast<soci::postgresql_session_backend*>(session.get_backend())->conn_;
}

}

std::string PostgresqlSession::address(const std::string& database, Connection::Access access)
{
    auto text = database;
    for (const auto& each : liveliness)
        add(text, each);
    if (access == Connection::Access::readWrite)
        add(text, {"target_session_attrs", "read-write"});
    return text;
}

PostgresqlSession::PostgresqlSession(soci::session& session, Connection::Access access)
    : m_connection(connectionOf(session))
{
    PQsetErrorVerbosity(m_connection, PQERRORS_TERSE);                      // what is longer repeats the values of rows
    PQsetNoticeProcessor(m_connection, [](void*, const char*) {}, nullptr); // they would reach the log as they are
    run(m_connection, waitingFor(Patience::whole));
    run(m_connection, durably);
    if (access != Connection::Access::readWrite)
        run(m_connection, "SET default_transaction_read_only = on");
}

void PostgresqlSession::control(const std::string& statements)
{
    run(m_connection, statements);
}

void PostgresqlSession::begin(const std::string& statements)
{
    beginUntil(Steady::now() + Patience::whole, [&] { return statements; });
}

/// What is set where the transaction begins is undone with it, so that one that was not begun leaves nothing.
void PostgresqlSession::beginUntil(Steady::time_point until, const std::string& statements)
{
    beginUntil(until, [&] {
        return fmt::format("{}; {}; {}", waitingFor(Patience::until(until)), statements, waitingFor(Patience::whole));
    });
}

void PostgresqlSession::beginUntil(Steady::time_point until, const std::function<std::string()>& statements)
{
    while (true) {
        try {
            run(m_connection, statements());
            return;
        } catch (const std::exception& failure) {
            abandon();
            if (!DatabaseFailure::isConflict(failure) || Steady::now() > until)
                throw;
        }
    }
}

void PostgresqlSession::commit()
{
    try {
        const auto result = run(m_connection, "COMMIT");
        if (std::string_view{PQcmdStatus(result.get())} != "COMMIT") // it was undone: a statement in it had failed
            throw std::runtime_error("the transaction had failed before its end");
    } catch (const soci::soci_error& failure) {
        if (PQstatus(m_connection) == CONNECTION_BAD)
            throw CommitUnknown{};
        throw;
    }
}

void PostgresqlSession::abandon()
{
    if (PQtransactionStatus(m_connection) != PQTRANS_IDLE)
        const Result ignored{PQexec(m_connection, "ROLLBACK"), PQclear};
}

/// Between requests a server says something only when it ends the connection.
bool PostgresqlSession::isLost() const
{
    if (PQstatus(m_connection) != CONNECTION_OK || PQtransactionStatus(m_connection) != PQTRANS_IDLE)
        return true;
    pollfd socket{.fd = PQsocket(m_connection), .events = POLLIN, .revents = 0};
    return poll(&socket, 1, 0) != 0;
}

}

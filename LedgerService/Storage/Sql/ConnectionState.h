#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include <soci/soci.h>

#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/PostgresqlSession.h"
#include "LedgerService/Storage/Sql/PreparedStatement.h"

namespace LedgerService {

/// What a connection holds; only the sources that speak to the database library see it.
struct Connection::State {
    State(const std::string& database, Access access);

    /// Lends the prepared statement of this text, made at its first use, to one query.
    PreparedStatement& prepared(std::string_view sql);
    /// Ends the run of a statement that was lent.
    void giveBack(PreparedStatement& lent) noexcept;

    void begin(std::string_view sql);
    /// Begins a transaction that waits for other processes no longer than until then.
    void beginUntil(std::chrono::steady_clock::time_point until, std::string_view sql);
    void commit();
    /// Runs a statement that undoes a transaction, or begins or ends a part of one.
    void control(std::string_view sql);

    const Dialect& dialect;
    soci::session session;
    std::optional<PostgresqlSession> postgresql; // of a database that a server keeps
    std::int64_t rowsChanged = 0;                // there; a file's library counts itself
    std::shared_ptr<ReadGate> gate;
    std::shared_ptr<std::atomic<int>> logPages; // of a file whose log others keep
    std::unordered_map<std::string_view, std::unique_ptr<PreparedStatement>> statements; // keyed by `texts`
    std::deque<std::string> texts;
};

}

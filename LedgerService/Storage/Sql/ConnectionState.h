#pragma once

#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include <soci/soci.h>

#include "LedgerService/Storage/Sql/Connection.h"

namespace LedgerService {

/// A statement kept for reuse.
struct PreparedStatement {
    PreparedStatement(soci::session& session, std::string_view sql);

    soci::statement statement;
    std::string_view key; // its text, as the connection keeps it
    bool inUse = false;
};

/// What a connection holds; only the sources that speak to the database library see it.
struct Connection::State {
    State(const std::string& file, Access access);

    /// Lends the prepared statement of this text, made at its first use, to one query.
    PreparedStatement& prepared(std::string_view sql);

    /// Runs a statement that begins or ends a transaction or a part of one.
    void control(std::string_view sql);

    soci::session session;
    std::shared_ptr<ReadGate> gate;
    std::unordered_map<std::string_view, std::unique_ptr<PreparedStatement>> statements; // keyed by `texts`
    std::deque<std::string> texts;
};

}

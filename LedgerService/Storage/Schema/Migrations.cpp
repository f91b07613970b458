#include "LedgerService/Storage/Schema/Migrations.h"

#include <array>
#include <chrono>
#include <expected>
#include <span>

#include <fmt/core.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerService/Storage/Schema/MigrationSteps.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Query.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

constexpr auto countTables = R"sql(
    SELECT COUNT(*), COUNT(CASE WHEN name = 'schema_migrations' THEN 1 END) FROM sqlite_master WHERE type = 'table'
)sql";

constexpr auto createHistory = R"sql(
    CREATE TABLE IF NOT EXISTS schema_migrations (version INTEGER PRIMARY KEY, applied_at TEXT NOT NULL)
)sql";

constexpr auto selectVersion = R"sql(
    SELECT MAX(version) FROM schema_migrations
)sql";

constexpr auto insertVersion = R"sql(
    INSERT INTO schema_migrations (version, applied_at) VALUES (:version, :now)
)sql";

/// 0 in a file without any tables yet.
std::expected<int, std::string> currentVersion(Connection& connection)
{
    int tables = 0;
    int histories = 0;
    Query{connection, countTables}.into(tables).into(histories).next();
    if (histories == 0 && tables > 0)
        return std::unexpected("the file belongs to another program");
    int version = 0;
    if (histories == 0)
        return version;
    Query query{connection, selectVersion};
    query.into(version).next();
    return version;
}

void take(Connection& connection, int version, std::span<const char* const> statements)
{
    for (const auto* statement : statements)
        connection.execute(statement);
    Query{connection, insertVersion}
        .bind("version", version)
        .bind("now", LedgerDay::stamp(std::chrono::system_clock::now()))
        .run();
}

}

int Migrations::newest()
{
    return static_cast<int>(MigrationSteps::all().size());
}

std::optional<std::string> Migrations::apply(Connection& connection)
{
    const auto known = currentVersion(connection);
    if (known == newest())
        return std::nullopt; // without waiting for writers
    Transaction transaction{connection, Transaction::Mode::writing};
    const auto steps = MigrationSteps::all();
    const auto current = currentVersion(connection);
    if (!current)
        return current.error();
    if (*current > newest())
        return fmt::format("the database has schema {}, this program knows schemas up to {}: use a newer program",
                           *current, newest());
    connection.execute(createHistory);
    for (auto version = *current + 1; version <= newest(); ++version)
        take(connection, version, steps[static_cast<std::size_t>(version) - 1]);
    transaction.commit();
    return std::nullopt;
}

}

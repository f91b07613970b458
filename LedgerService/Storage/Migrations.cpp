#include "LedgerService/Storage/Migrations.h"

#include <array>
#include <chrono>
#include <span>

#include <fmt/core.h>

#include "LedgerCore/Domain/LedgerDay.h"
#include "LedgerService/Storage/Connection.h"
#include "LedgerService/Storage/MigrationSteps.h"
#include "LedgerService/Storage/Query.h"
#include "LedgerService/Storage/Transaction.h"

namespace {

constexpr auto createHistory = R"sql(
    CREATE TABLE IF NOT EXISTS schema_migrations (version INTEGER PRIMARY KEY, applied_at TEXT NOT NULL)
)sql";

constexpr auto selectVersion = R"sql(
    SELECT MAX(version) FROM schema_migrations
)sql";

constexpr auto insertVersion = R"sql(
    INSERT INTO schema_migrations (version, applied_at) VALUES (:version, :now)
)sql";

int currentVersion(Connection& connection)
{
    int version = 0;
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
    Transaction transaction{connection, Transaction::Mode::writing};
    connection.execute(createHistory);
    const auto steps = MigrationSteps::all();
    const int current = currentVersion(connection);
    if (current > newest())
        return fmt::format("the database has schema {}, this program knows schemas up to {}: use a newer program",
                           current, newest());
    for (auto version = current + 1; version <= newest(); ++version)
        take(connection, version, steps[static_cast<std::size_t>(version) - 1]);
    transaction.commit();
    return std::nullopt;
}

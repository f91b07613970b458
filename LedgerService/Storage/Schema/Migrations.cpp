#include "LedgerService/Storage/Schema/Migrations.h"

#include <array>
#include <chrono>
#include <expected>
#include <span>

#include <fmt/core.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerService/Log.h"
#include "LedgerService/Storage/Schema/MigrationSteps.h"
#include "LedgerService/Storage/Schema/NewestSchema.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Dialect.h"
#include "LedgerService/Storage/Sql/Query.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

constexpr auto countTables = R"sql(
    SELECT COUNT(*), COUNT(CASE WHEN name = 'schema_migrations' THEN 1 END) FROM sqlite_master WHERE type = 'table'
)sql";

constexpr auto countServedTables = R"sql(
    SELECT COUNT(*), COUNT(CASE WHEN table_name = 'schema_migrations' THEN 1 END) FROM information_schema.tables
    WHERE table_schema = current_schema()
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

/// 0 where there are no tables yet.
std::expected<int, std::string> currentVersion(Connection& connection)
{
    int tables = 0;
    int histories = 0;
    const auto* const count = connection.dialect().isFile() ? countTables : countServedTables;
    Query{connection, count}.into(tables).into(histories).next();
    if (histories == 0 && tables > 0)
        return std::unexpected(connection.dialect().isFile() ? "the file belongs to another program"
                                                             : "the schema holds tables of another program");
    int version = 0;
    if (histories == 0)
        return version;
    Query query{connection, selectVersion};
    query.into(version).next();
    if (version < 0)
        return std::unexpected(fmt::format("{} is no version of the schema: the file is damaged", version));
    return version;
}

void keepVersion(Connection& connection, int version)
{
    Query{connection, insertVersion}
        .bind("version", version)
        .bind("now", LedgerDay::stamp(std::chrono::system_clock::now()))
        .run();
}

void take(Connection& connection, int version, const MigrationSteps::Step& step)
{
    for (const auto* statement : step.statements)
        connection.execute(connection.dialect().making(statement));
    if (step.then)
        step.then(connection);
    keepVersion(connection, version);
}

/// While it lives, rows may refer to tables that are being made anew.
class ForeignKeysOff {
public:
    explicit ForeignKeysOff(Connection& connection) : m_connection(connection)
    {
        m_connection.execute("PRAGMA foreign_keys = OFF");
    }
    ~ForeignKeysOff()
    {
        try {
            m_connection.execute("PRAGMA foreign_keys = ON");
        } catch (const std::exception& failure) {
            Log::failure("(schema)", failure.what());
        }
    }
    ForeignKeysOff(const ForeignKeysOff&) = delete;
    ForeignKeysOff& operator=(const ForeignKeysOff&) = delete;

private:
    Connection& m_connection;
};

std::string newer(int version)
{
    return fmt::format("the database has schema {}, this program knows schemas up to {}: use a newer program", version,
                       Migrations::newest());
}

/// Databases that a server keeps began with this schema at the earliest.
constexpr int firstServed = 13;

void makeServed(Connection& connection)
{
    for (const auto& part : NewestSchema::parts(connection.dialect()))
        connection.execute(part.statement);
    connection.execute("INSERT INTO writing_turn (taken) VALUES (0)");
    keepVersion(connection, Migrations::newest());
}

std::optional<std::string> bringServedUpToDate(Connection& connection)
{
    const auto current = currentVersion(connection);
    if (!current)
        return current.error();
    if (*current > Migrations::newest())
        return newer(*current);
    if (*current != 0 && *current < firstServed)
        return fmt::format("{} is no version of the schema there", *current);
    if (*current == Migrations::newest())
        return std::nullopt;
    Transaction transaction{connection, *current == 0 ? Transaction::Mode::making : Transaction::Mode::writing};
    if (*current == 0)
        makeServed(connection);
    for (auto version = *current + 1; *current != 0 && version <= Migrations::newest(); ++version)
        take(connection, version, MigrationSteps::all()[static_cast<std::size_t>(version) - 1]);
    transaction.commit();
    return std::nullopt;
}

/// Of several processes that begin at the same time one makes the schema.
std::optional<std::string> applyServed(Connection& connection)
{
    try {
        return bringServedUpToDate(connection);
    } catch (const std::exception&) {
        if (currentVersion(connection) != Migrations::newest())
            throw;
        return std::nullopt;
    }
}

}

int Migrations::newest()
{
    return static_cast<int>(MigrationSteps::all().size());
}

std::expected<int, std::string> Migrations::version(Connection& connection)
{
    return currentVersion(connection);
}

std::optional<std::string> Migrations::apply(Connection& connection)
{
    if (!connection.dialect().isFile())
        return applyServed(connection);
    const auto known = currentVersion(connection);
    if (known == newest())
        return std::nullopt;                    // without waiting for writers
    const ForeignKeysOff unchecked{connection}; // has no effect within a transaction
    Transaction transaction{connection, Transaction::Mode::writing};
    const auto steps = MigrationSteps::all();
    const auto current = currentVersion(connection);
    if (!current)
        return current.error();
    if (*current > newest())
        return newer(*current);
    connection.execute(createHistory);
    for (auto version = *current + 1; version <= newest(); ++version)
        take(connection, version, steps[static_cast<std::size_t>(version) - 1]);
    transaction.commit();
    return std::nullopt;
}

}

#include "LedgerService/Storage/Database.h"

#include <exception>
#include <filesystem>
#include <optional>
#include <string_view>

#include <fmt/core.h>

#include "LedgerService/Storage/LogKeeper.h"
#include "LedgerService/Storage/Rows/Entries/FragmentUpkeep.h"
#include "LedgerService/Storage/Rows/Sections/KnownSections.h"
#include "LedgerService/Storage/Schema/Migrations.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/DatabaseFailure.h"
#include "LedgerService/Storage/Sql/Dialect.h"
#include "LedgerService/Storage/Sql/ReadGate.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

/// The log begins anew when there is a moment without readers; at this size the moment is made.
constexpr std::uintmax_t longLog = std::uintmax_t{16} << 20;
/// How long new readers are kept waiting for those inside.
constexpr std::chrono::milliseconds longestHold{100};

std::string cannotOpen(const std::string& name, std::string_view why)
{
    return fmt::format("cannot open {}: {}", DatabaseName::shown(name), why);
}

std::optional<std::string> whyNotFile(const std::string& name)
{
    std::error_code failure;
    const auto size = std::filesystem::file_size(name, failure);
    if (failure)
        return cannotOpen(name, failure.message());
    return size == 0 ? std::optional{name + " is empty"} : std::nullopt;
}

/// Why a database that a server keeps holds no books.
std::optional<std::string> whyNotServed(const std::string& name)
{
    try {
        Connection connection{name, Connection::Access::readOnly};
        const auto version = Migrations::version(connection);
        if (!version)
            return cannotOpen(name, version.error());
        return *version == 0 ? std::optional{DatabaseName::shown(name) + " is empty"} : std::nullopt;
    } catch (const std::exception& failure) {
        return cannotOpen(name, DatabaseFailure::words(failure));
    }
}

}

Database::Database(std::string name, LogKeeping keeping)
    : m_name(std::move(name)), m_gate(std::make_shared<ReadGate>()), m_longLog(longLog),
      m_sections(std::make_unique<KnownSections>()),
      m_logKeeper(DatabaseName::isAddress(m_name) || keeping == LogKeeping::byWriters
                      ? nullptr
                      : std::make_unique<LogKeeper>(m_name, m_writing))
{
}

Database::~Database() = default;

std::expected<std::unique_ptr<Database>, std::string> Database::open(const std::string& name, LogKeeping keeping)
{
    if (name.empty() || name.find('"') != std::string::npos)
        return std::unexpected("the name of the database file is empty or holds a quotation mark");
    try {
        std::unique_ptr<Database> database{new Database(name, keeping)};
        const auto connection = database->borrow();
        if (const auto refused = Migrations::apply(*connection))
            return std::unexpected(*refused);
        if (FragmentUpkeep::isNeeded(*connection)) {
            Transaction transaction{*connection, Transaction::Mode::writing};
            FragmentUpkeep::renewOutdated(*connection);
            transaction.commit();
        }
        return database;
    } catch (const std::exception& failure) {
        return std::unexpected(cannotOpen(name, DatabaseFailure::words(failure)));
    }
}

std::optional<std::string> Database::whyNotExisting(const std::string& name)
{
    return DatabaseName::isAddress(name) ? whyNotServed(name) : whyNotFile(name);
}

std::expected<std::unique_ptr<Database>, std::string> Database::openExisting(const std::string& name)
{
    if (auto refused = whyNotExisting(name))
        return std::unexpected(*std::move(refused));
    return open(name);
}

Database::Turn Database::queueToWrite(Instant until)
{
    return {*this, until};
}

Database::Turn::Turn(Database& database, Instant until) : m_database(database), m_until(until)
{
    if (!m_database.m_writing.enter(until))
        throw DatabaseBusy{};
}

Database::Turn::~Turn()
{
    try {
        if (m_database.m_logKeeper)
            m_database.m_logKeeper->heed();
        m_database.shortenLog();
    } catch (const std::exception&) { // what was to be written is written; the next turn tries again
        m_database.m_shortener.reset();
    }
    m_database.m_writing.leave();
}

/// A log that could not be shortened, for somebody reads for long, is let grow by as much again before the next try.
void Database::shortenLog()
{
    if (DatabaseName::isAddress(m_name))
        return;
    std::error_code missing;
    const auto size = std::filesystem::file_size(m_name + "-wal", missing);
    if (missing || size < m_longLog)
        return;
    if (!m_shortener) {
        m_shortener = std::make_unique<Connection>(m_name);
        m_shortener->execute("PRAGMA busy_timeout = 0"); // other processes' readers are not waited for
    }
    m_longLog = size + longLog;
    if (!m_gate->close(longestHold))
        return;
    const ReadGate::Opening opening{*m_gate};
    m_shortener->execute("PRAGMA wal_checkpoint(TRUNCATE)");
    if (std::filesystem::file_size(m_name + "-wal", missing) < longLog)
        m_longLog = longLog;
}

/// One that was lost while nobody used it is of no use.
std::unique_ptr<Connection> Database::takeIdle()
{
    const std::lock_guard guard{m_guard};
    while (!m_idle.empty()) {
        auto connection = std::move(m_idle.back());
        m_idle.pop_back();
        if (!connection->isLost())
            return connection;
    }
    return nullptr;
}

Database::Loan Database::borrow()
{
    if (auto connection = takeIdle())
        return {*this, std::move(connection)};
    auto connection = std::make_unique<Connection>(m_name);
    connection->setReadGate(m_gate);
    if (m_logKeeper)
        m_logKeeper->watch(*connection);
    if (!connection->dialect().isFile()) // a writer who is gone without a word keeps the others waiting no longer
        connection->execute("SET idle_in_transaction_session_timeout = '60s'");
    return {*this, std::move(connection)};
}

void Database::giveBack(std::unique_ptr<Connection> connection)
{
    if (connection->isLost())
        return;
    const std::lock_guard guard{m_guard};
    m_idle.push_back(std::move(connection));
}

Database::Loan::Loan(Database& database, std::unique_ptr<Connection> connection)
    : m_database(database), m_connection(std::move(connection))
{
}

Database::Loan::~Loan()
{
    try {
        m_database.giveBack(std::move(m_connection));
    } catch (const std::bad_alloc&) {
        m_connection.reset(); // the next loan opens another one
    }
}

}

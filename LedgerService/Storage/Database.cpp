#include "LedgerService/Storage/Database.h"

#include <exception>
#include <filesystem>

#include "LedgerService/Storage/Rows/Entries/FragmentUpkeep.h"
#include "LedgerService/Storage/Rows/Sections/KnownSections.h"
#include "LedgerService/Storage/Schema/Migrations.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/DatabaseFailure.h"
#include "LedgerService/Storage/Sql/ReadGate.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

/// The log begins anew by itself when there is a moment without readers; at this size the moment is made.
constexpr std::uintmax_t longLog = std::uintmax_t{16} << 20;
/// How long new readers are kept waiting for those inside.
constexpr std::chrono::milliseconds longestHold{100};

}

Database::Database(std::string file)
    : m_file(std::move(file)), m_gate(std::make_shared<ReadGate>()), m_longLog(longLog),
      m_sections(std::make_unique<KnownSections>())
{
}

Database::~Database() = default;

std::expected<std::unique_ptr<Database>, std::string> Database::open(const std::string& file)
{
    if (file.empty() || file.find('"') != std::string::npos)
        return std::unexpected("the name of the database file is empty or holds a quotation mark");
    try {
        std::unique_ptr<Database> database{new Database(file)};
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
        return std::unexpected("cannot open " + file + ": " + DatabaseFailure::words(failure));
    }
}

std::expected<std::unique_ptr<Database>, std::string> Database::openExisting(const std::string& file)
{
    std::error_code failure;
    const auto size = std::filesystem::file_size(file, failure);
    if (failure)
        return std::unexpected("cannot open " + file + ": " + failure.message());
    if (size == 0)
        return std::unexpected(file + " is empty");
    return open(file);
}

Database::Turn Database::queueToWrite(Instant until)
{
    return {*this, until};
}

Database::Turn::Turn(Database& database, Instant until) : m_database(database)
{
    if (!m_database.m_writing.enter(until))
        throw DatabaseBusy{};
}

Database::Turn::~Turn()
{
    try {
        m_database.shortenLog();
    } catch (const std::exception&) { // what was to be written is written; the next turn tries again
        m_database.m_keeper.reset();
    }
    m_database.m_writing.leave();
}

/// A log that could not be shortened, for somebody reads for long, is let grow by as much again before the next try.
void Database::shortenLog()
{
    std::error_code missing;
    const auto size = std::filesystem::file_size(m_file + "-wal", missing);
    if (missing || size < m_longLog)
        return;
    if (!m_keeper) {
        m_keeper = std::make_unique<Connection>(m_file);
        m_keeper->execute("PRAGMA busy_timeout = 0"); // other processes' readers are not waited for
    }
    m_longLog = size + longLog;
    if (!m_gate->close(longestHold))
        return;
    const ReadGate::Opening opening{*m_gate};
    m_keeper->execute("PRAGMA wal_checkpoint(TRUNCATE)");
    if (std::filesystem::file_size(m_file + "-wal", missing) < longLog)
        m_longLog = longLog;
}

Database::Loan Database::borrow()
{
    {
        const std::lock_guard guard{m_guard};
        if (!m_idle.empty()) {
            auto connection = std::move(m_idle.back());
            m_idle.pop_back();
            return {*this, std::move(connection)};
        }
    }
    auto connection = std::make_unique<Connection>(m_file);
    connection->setReadGate(m_gate);
    return {*this, std::move(connection)};
}

Database::Loan::Loan(Database& database, std::unique_ptr<Connection> connection)
    : m_database(database), m_connection(std::move(connection))
{
}

Database::Loan::~Loan()
{
    const std::lock_guard guard{m_database.m_guard};
    try {
        m_database.m_idle.push_back(std::move(m_connection));
    } catch (const std::bad_alloc&) {
        m_connection.reset(); // the next loan opens another one
    }
}

}

#include "LedgerService/Storage/Database.h"

#include <chrono>
#include <exception>
#include <filesystem>

#include "LedgerService/Storage/Rows/FragmentUpkeep.h"
#include "LedgerService/Storage/Schema/Migrations.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/DatabaseFailure.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

/// As long as a writer waits for another process.
constexpr std::chrono::seconds patience{10};

}

Database::Database(std::string file) : m_file(std::move(file)) {}

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

Database::Turn Database::queueToWrite()
{
    Turn turn{m_writing, patience};
    if (!turn.owns_lock())
        throw DatabaseBusy{};
    return turn;
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
    return {*this, std::make_unique<Connection>(m_file)};
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

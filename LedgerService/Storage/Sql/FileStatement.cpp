#include "LedgerService/Storage/Sql/FileStatement.h"

#include <fmt/core.h>
#include <soci/sqlite3/soci-sqlite3.h>

#include "LedgerCore/Domain/Contract.h"

namespace LedgerService {

namespace {

using namespace sqlite_api;

/// Longer texts are rare, and statements stay for long.
constexpr std::size_t mostRoomKept = 4096;

[[noreturn]] void fail(sqlite3* database, int result)
{
    throw soci::sqlite3_soci_error(sqlite3_errmsg(database), result);
}

}

FileStatement::FileStatement(sqlite3* database, std::string_view sql) : m_database(database)
{
    const int result = sqlite3_prepare_v3(database, sql.data(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT,
                                          &m_statement, nullptr);
    if (result != SQLITE_OK)
        fail(database, result);
    require(m_statement != nullptr, "a statement says something");
    m_texts.resize(static_cast<std::size_t>(sqlite3_bind_parameter_count(m_statement)));
}

FileStatement::~FileStatement()
{
    sqlite3_finalize(m_statement);
}

/// Runs bind their parameters in the same order, mostly: then none has to be looked for.
int FileStatement::place(std::string_view name)
{
    const auto at = m_bound++;
    if (at < m_places.size() && m_places[at].name == name)
        return m_places[at].index;
    const auto named = fmt::format(":{}", name);
    const int found = sqlite3_bind_parameter_index(m_statement, named.c_str());
    require(found != 0, "a value is bound to a parameter that the statement has");
    m_places.resize(at);
    m_places.emplace_back(std::string{name}, found);
    return found;
}

void FileStatement::check(int result)
{
    if (result != SQLITE_OK)
        fail(m_database, result);
}

/// The value may be gone before the statement runs, so it is copied to where an earlier one has left room.
void FileStatement::bindText(std::string_view name, std::string_view value)
{
    const int at = place(name);
    auto& text = m_texts[static_cast<std::size_t>(at) - 1];
    text = value;
    check(sqlite3_bind_text64(m_statement, at, text.data(), text.size(), nullptr, SQLITE_UTF8));
}

void FileStatement::bindNumber(std::string_view name, std::int64_t value)
{
    check(sqlite3_bind_int64(m_statement, place(name), value));
}

void FileStatement::bindNull(std::string_view name, ValueKind /*kind*/)
{
    check(sqlite3_bind_null(m_statement, place(name)));
}

void FileStatement::addColumn(ValueKind /*kind*/)
{
    require(m_columns < sqlite3_column_count(m_statement), "a statement gives as many columns as are taken of it");
    ++m_columns;
}

bool FileStatement::step()
{
    const int result = sqlite3_step(m_statement);
    if (result != SQLITE_ROW && result != SQLITE_DONE)
        fail(m_database, result);
    return result == SQLITE_ROW;
}

bool FileStatement::isNull(std::size_t column)
{
    return sqlite3_column_type(m_statement, static_cast<int>(column)) == SQLITE_NULL;
}

void FileStatement::takeText(std::size_t column, std::string& target)
{
    const auto at = static_cast<int>(column);
    const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(m_statement, at));
    target.assign(text ? text : "", static_cast<std::size_t>(sqlite3_column_bytes(m_statement, at)));
}

std::int64_t FileStatement::number(std::size_t column)
{
    return sqlite3_column_int64(m_statement, static_cast<int>(column));
}

std::int64_t FileStatement::affectedRows()
{
    return sqlite3_changes64(m_database);
}

/// A statement left in the middle of its rows would keep its view of the database open, and every later transaction of
/// the connection with it.
bool FileStatement::finish() noexcept
{
    sqlite3_reset(m_statement); // tells again of a failure that `step` has thrown
    sqlite3_clear_bindings(m_statement);
    m_columns = 0;
    m_bound = 0;
    for (auto& text : m_texts) {
        if (text.capacity() > mostRoomKept)
            std::string{}.swap(text);
    }
    return true;
}

}

#include "LedgerService/Storage/Sql/Connection.h"

#include <atomic>
#include <filesystem>
#include <memory>
#include <utility>

#include <fmt/core.h>
#include <soci/postgresql/soci-postgresql.h>
#include <soci/sqlite3/soci-sqlite3.h>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerService/Interruption.h"
#include "LedgerService/Storage/Sql/ConnectionState.h"
#include "LedgerService/Storage/Sql/DatabaseFailure.h"
#include "LedgerService/Storage/Sql/Dialect.h"
#include "LedgerService/Storage/Sql/FileStatement.h"
#include "LedgerService/Storage/Sql/LogPages.h"
#include "LedgerService/Storage/Sql/Patience.h"
#include "LedgerService/Storage/Sql/ServedStatement.h"

namespace LedgerService {

namespace {

/// A connection is used by one thread at a time, so the library need not lock it at every column that is read.
/// Files are named by addresses where they are not to be changed.
void configureLibrary()
{
    // Refused when the process already uses the library: slower, no less right.
    static const int unlocked = sqlite_api::sqlite3_config(SQLITE_CONFIG_MULTITHREAD);
    static const int addresses = sqlite_api::sqlite3_config(SQLITE_CONFIG_URI, 1);
    // Nobody asks how much memory it has in use, and counting it would take a lock for each piece.
    static const int uncounted = sqlite_api::sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
    static_cast<void>(unlocked + addresses + uncounted);
}

/// The file's path as a part of an address.
std::string escaped(const std::string& file)
{
    std::string text;
    for (const auto each : std::filesystem::absolute(file).string())
        text += each == '?' || each == '#' || each == '%' ? fmt::format("%{:02X}", each) : std::string{each};
    return text;
}

std::string address(const std::string& file, Connection::Access access)
{
    return "file://" + escaped(file) + (access == Connection::Access::frozen ? "?immutable=1" : "?mode=ro");
}

std::string connectString(const std::string& file, Connection::Access access)
{
    configureLibrary();
    const auto name = access == Connection::Access::readWrite ? file : address(file, access);
    return fmt::format("dbname=\"{}\" timeout={}", name,
                       std::chrono::duration_cast<std::chrono::seconds>(Patience::whole).count());
}

bool reads(std::string_view sql)
{
    const auto begin = sql.find_first_not_of(" \n");
    return begin != std::string_view::npos && sql.substr(begin).starts_with("SELECT");
}

void open(soci::session& session, const std::string& database, Connection::Access access)
{
    if (!DatabaseName::isAddress(database)) {
        session.open(soci::sqlite3, connectString(database, access));
        return;
    }
    try {
        session.open(soci::postgresql, PostgresqlSession::address(database, access));
    } catch (const soci::soci_error& failure) {
        throw DatabaseUnreachable{DatabaseFailure::words(failure)};
    }
}

/// The library shows the type of its backend, but not the type's description that a check of the cast would ask for.
[[clang::no_sanitize("vptr")]] sqlite_api::sqlite3* fileOf(soci::session& session)
{
    return static_cast<soci::sqlite3_session_backend*>(session.get_backend())->conn_;
}

std::unique_ptr<PreparedStatement> makeStatement(Connection::State& state, std::string_view sql)
{
    if (state.postgresql)
        return std::make_unique<ServedStatement>(state.session, sql);
    return std::make_unique<FileStatement>(fileOf(state.session), sql);
}

/// Has long statements end when the program is told to.
void heedInterruption(soci::session& session)
{
    constexpr int stepsBetweenLooks = 10'000; // of the library's own machine: a millisecond or so
    sqlite_api::sqlite3_progress_handler(
        fileOf(session), stepsBetweenLooks, [](void*) { return Interruption::isDue() ? 1 : 0; }, nullptr);
}

void setUpFile(soci::session& session)
{
    session << "PRAGMA journal_mode = WAL";
    session << "PRAGMA synchronous = FULL";
    session << "PRAGMA foreign_keys = ON";
    session << "PRAGMA temp_store = MEMORY";
    session << "PRAGMA journal_size_limit = 16777216"; // what the log keeps of its size when it begins anew
    session << "PRAGMA wal_autocheckpoint = 3000";     // pages: most of them are written again and again
    session << "PRAGMA cache_size = -8192";            // KiB: the pages of a large group of commands
}

/// Told after each commit how many pages the log holds.
int keepCount(void* pages, sqlite_api::sqlite3* file, const char* schema, int count)
{
    constexpr int mostPages = 12'000; // some 48 MiB
    *static_cast<std::atomic<int>*>(pages) = count;
    if (count >= mostPages)
        sqlite_api::sqlite3_wal_checkpoint_v2(file, schema, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
    return SQLITE_OK;
}

}

Connection::State::State(const std::string& database, Access access) : dialect(Dialect::of(database))
{
    open(session, database, access);
    if (dialect.isFile() && Interruption::isWatched())
        heedInterruption(session);
    if (!dialect.isFile())
        postgresql.emplace(session, access);
    else if (access == Access::readWrite)
        setUpFile(session);
}

PreparedStatement& Connection::State::prepared(std::string_view sql)
{
    auto found = statements.find(sql);
    if (found == statements.end()) {
        auto made = makeStatement(*this, sql);
        made->onlyReads = reads(sql);
        made->key = texts.emplace_back(sql);
        const auto key = made->key;
        found = statements.emplace(key, std::move(made)).first;
    }
    require(!found->second->inUse, "a statement is not run inside itself");
    found->second->inUse = true;
    return *found->second;
}

void Connection::State::giveBack(PreparedStatement& lent) noexcept
{
    lent.inUse = false;
    if (lent.finish())
        return;
    const auto key = lent.key;
    statements.erase(key);
}

void Connection::State::begin(std::string_view sql)
{
    if (postgresql)
        postgresql->begin(std::string{sql});
    else
        control(sql);
}

void Connection::State::beginUntil(std::chrono::steady_clock::time_point until, std::string_view sql)
{
    if (postgresql) {
        postgresql->beginUntil(until, std::string{sql});
        return;
    }
    constexpr auto restore = [](sqlite_api::sqlite3* file) {
        sqlite_api::sqlite3_busy_timeout(file, static_cast<int>(Patience::whole.count()));
    };
    // Only the beginning waits less; what follows in the transaction has the patience of any other.
    const std::unique_ptr<sqlite_api::sqlite3, decltype(restore)> hurried{fileOf(session), restore};
    sqlite_api::sqlite3_busy_timeout(hurried.get(), static_cast<int>(Patience::until(until).count()));
    control(sql);
}

void Connection::State::commit()
{
    if (postgresql)
        postgresql->commit();
    else
        control("COMMIT");
}

void Connection::State::control(std::string_view sql)
{
    if (postgresql) {
        postgresql->control(std::string{sql});
        return;
    }
    auto& lent = prepared(sql);
    try {
        lent.step();
    } catch (...) {
        giveBack(lent);
        throw;
    }
    giveBack(lent);
}

Connection::Connection(const std::string& database, Access access) : m_state(std::make_unique<State>(database, access))
{
}

Connection::~Connection() = default;

const Dialect& Connection::dialect() const
{
    return m_state->dialect;
}

bool Connection::isLost() const
{
    const auto& postgresql = m_state->postgresql;
    return postgresql && postgresql->isLost();
}

void Connection::setReadGate(std::shared_ptr<ReadGate> gate)
{
    m_state->gate = std::move(gate);
}

void LogPages::count(Connection& connection, std::shared_ptr<std::atomic<int>> pages)
{
    auto& state = connection.state();
    state.logPages = std::move(pages);
    sqlite_api::sqlite3_wal_hook(fileOf(state.session), keepCount, state.logPages.get());
}

std::int64_t Connection::rowsChanged()
{
    if (m_state->postgresql)
        return m_state->rowsChanged;
    return sqlite_api::sqlite3_total_changes64(fileOf(m_state->session));
}

void Connection::execute(const std::string& statement)
{
    auto& postgresql = m_state->postgresql;
    if (postgresql)
        postgresql->control(statement);
    else
        m_state->session << statement;
}

}

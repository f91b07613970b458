#pragma once

#include <chrono>
#include <cstdint>
#include <expected>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "LedgerService/Storage/Sql/Patience.h"
#include "LedgerService/Storage/TurnQueue.h"

namespace LedgerService {

class Connection;
class LogKeeper;
class ReadGate;
struct KnownSections;

/// Who brings what the log of a file holds into the file.
enum class LogKeeping {
    aside,     // a thread beside those who write
    byWriters, // whoever has just committed, before anybody hears of it
};

/// The service's database: its connections, one lent to each request at a time. Shared by all threads.
class Database {
public:
    /// Opens the database of this name, the path of a file or the address of a server's, makes what is missing of it
    /// and brings its schema up to date, or says in words why not.
    static std::expected<std::unique_ptr<Database>, std::string> open(const std::string& name,
                                                                      LogKeeping keeping = LogKeeping::aside);

    /// The same for one that must hold books already: a missing or empty one is refused and left as it is.
    static std::expected<std::unique_ptr<Database>, std::string> openExisting(const std::string& name);
    ~Database();

    /// Why there are no books to open: the database is missing, out of reach, empty or of another program.
    static std::optional<std::string> whyNotExisting(const std::string& name);

    /// A connection on loan; it goes back when this is gone.
    class Loan {
    public:
        Loan(Database& database, std::unique_ptr<Connection> connection);
        ~Loan();
        Loan(const Loan&) = delete;
        Loan& operator=(const Loan&) = delete;
        Connection& operator*() const { return *m_connection; }

    private:
        Database& m_database;
        std::unique_ptr<Connection> m_connection;
    };
    [[nodiscard]] Loan borrow();

    /// What is known of the sections of companies, by all that this process reads of them.
    [[nodiscard]] KnownSections& sections() { return *m_sections; }

    /// The right to write. When it is given back, the log that the file's changes are written to begins anew if it has
    /// grown long.
    class Turn {
    public:
        Turn(Database& database, std::chrono::steady_clock::time_point until);
        ~Turn();
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;

        /// Until when whoever has it waits for other processes.
        [[nodiscard]] std::chrono::steady_clock::time_point until() const { return m_until; }

    private:
        Database& m_database;
        std::chrono::steady_clock::time_point m_until;
    };
    using Instant = std::chrono::steady_clock::time_point;
    /// Held while writing: the threads of one process queue here, first come, first served, instead of at the lock that
    /// all processes share. Throws `DatabaseBusy` when the turn does not come in time.
    [[nodiscard]] Turn queueToWrite(Instant until = std::chrono::steady_clock::now() + Patience::whole);

private:
    Database(std::string name, LogKeeping keeping);
    void shortenLog();
    std::unique_ptr<Connection> takeIdle();
    void giveBack(std::unique_ptr<Connection> connection);

    std::string m_name;
    std::shared_ptr<ReadGate> m_gate;
    std::unique_ptr<Connection> m_shortener; // whoever writes has it; made when it is needed
    std::uintmax_t m_longLog;                // bytes
    std::unique_ptr<KnownSections> m_sections;
    TurnQueue m_writing;
    std::mutex m_guard;
    std::vector<std::unique_ptr<Connection>> m_idle;
    std::unique_ptr<LogKeeper> m_logKeeper; // of a file
};

}

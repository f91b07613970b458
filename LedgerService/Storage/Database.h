#pragma once

#include <expected>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace LedgerService {

class Connection;

/// The service's database: its connections, one lent to each request at a time. Shared by all threads.
class Database {
public:
    /// Opens the file, makes it if it is missing and brings its schema up to date, or says in words why not.
    static std::expected<std::unique_ptr<Database>, std::string> open(const std::string& file);

    /// The same for a file that must hold books already: a missing or empty one is refused and left as it is.
    static std::expected<std::unique_ptr<Database>, std::string> openExisting(const std::string& file);
    ~Database();

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

    using Turn = std::unique_lock<std::timed_mutex>;
    /// Held while writing: the threads of one process queue here instead of polling the file's lock. Throws
    /// `DatabaseBusy` when the turn does not come in time.
    [[nodiscard]] Turn queueToWrite();

private:
    explicit Database(std::string file);

    std::string m_file;
    std::timed_mutex m_writing;
    std::mutex m_guard;
    std::vector<std::unique_ptr<Connection>> m_idle;
};

}

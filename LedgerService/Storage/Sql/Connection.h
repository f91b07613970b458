#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace LedgerService {

class ReadGate;
struct Dialect;

/// One connection to the database, with the statements that it has prepared. Used by one thread at a time.
/// A database that fails (disk full, file damaged) throws `soci::soci_error`; the HTTP room turns that into a 500.
class Connection {
public:
    /// What may be done with the file. `frozen`: it is read as if nobody else could change it meanwhile, which also
    /// works where nothing beside it can be written.
    enum class Access { readWrite, readOnly, frozen };

    /// Opens the SQLite file, or makes it if it may, or connects to the server that the address names. Every commit is
    /// durable before it returns. Throws `DatabaseUnreachable` when there is no such server.
    explicit Connection(const std::string& database, Access access = Access::readWrite);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Runs a statement that has no parameters and gives no rows, such as those of migrations.
    void execute(const std::string& statement);

    /// How many rows its statements have added, changed or removed so far, undone ones included.
    [[nodiscard]] std::int64_t rowsChanged();

    [[nodiscard]] const Dialect& dialect() const;

    /// Whether its server has ended the connection, so that it is of no use any more.
    [[nodiscard]] bool isLost() const;

    /// From now on its reading transactions pass the gate.
    void setReadGate(std::shared_ptr<ReadGate> gate);

    struct State;
    [[nodiscard]] State& state() { return *m_state; }

private:
    std::unique_ptr<State> m_state;
};

}

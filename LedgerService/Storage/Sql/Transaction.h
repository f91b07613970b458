#pragma once

#include <chrono>

namespace LedgerService {

class Connection;
class ReadGate;

/// A transaction on a connection, rolled back unless committed. A reader sees one state of the database throughout;
/// a writer starts as the only one, so what it reads stays true until it commits.
class Transaction {
public:
    /// `making`: the schema is made, of which nothing may be there yet.
    enum class Mode { reading, writing, making };

    Transaction(Connection& connection, Mode mode);
    /// A writing one, which waits until then for other processes to end theirs.
    Transaction(Connection& connection, std::chrono::steady_clock::time_point until);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void commit();

private:
    /// Holds the gate open for a reader.
    class Passage {
    public:
        explicit Passage(ReadGate* gate);
        ~Passage();
        Passage(const Passage&) = delete;
        Passage& operator=(const Passage&) = delete;

    private:
        ReadGate* m_gate;
    };

    Connection& m_connection;
    Passage m_passage;
    bool m_open = true;
};

/// A part of a writing transaction that can be undone by itself. It ends with `keep` or `undo`; both throw when the
/// database has given up the whole transaction meanwhile, which must not be committed then. Without either, which
/// happens only when something is thrown past it, the whole transaction is to be left uncommitted.
class Savepoint {
public:
    explicit Savepoint(Connection& connection);
    Savepoint(const Savepoint&) = delete;
    Savepoint& operator=(const Savepoint&) = delete;

    void keep();
    void undo();

private:
    Connection& m_connection;
};

}

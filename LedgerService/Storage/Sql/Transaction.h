#pragma once

namespace LedgerService {

class Connection;

/// A transaction on a connection, rolled back unless committed. A reader sees one state of the database throughout;
/// a writer starts as the only one, so what it reads stays true until it commits.
class Transaction {
public:
    enum class Mode { reading, writing };

    Transaction(Connection& connection, Mode mode);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void commit();

private:
    Connection& m_connection;
    bool m_open = true;
};

}

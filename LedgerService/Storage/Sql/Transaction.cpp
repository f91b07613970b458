#include "LedgerService/Storage/Sql/Transaction.h"

#include <exception>

#include "LedgerService/Storage/Sql/Connection.h"

namespace LedgerService {

Transaction::Transaction(Connection& connection, Mode mode) : m_connection(connection)
{
    m_connection.execute(mode == Mode::writing ? "BEGIN IMMEDIATE" : "BEGIN");
}

Transaction::~Transaction()
{
    if (!m_open)
        return;
    try {
        m_connection.execute("ROLLBACK");
    } catch (const std::exception&) { // a failed statement has rolled back already
        m_open = false;
    }
}

void Transaction::commit()
{
    m_connection.execute("COMMIT");
    m_open = false;
}

}

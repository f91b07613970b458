#include "LedgerService/Storage/Sql/Transaction.h"

#include <exception>

#include "LedgerService/Storage/Sql/ConnectionState.h"
#include "LedgerService/Storage/Sql/Dialect.h"
#include "LedgerService/Storage/Sql/ReadGate.h"

namespace LedgerService {

namespace {

std::string_view beginning(const Dialect& dialect, Transaction::Mode mode)
{
    switch (mode) {
    case Transaction::Mode::reading:
        return dialect.beginReading;
    case Transaction::Mode::writing:
        return dialect.beginWriting;
    case Transaction::Mode::making:
        return dialect.beginMaking;
    }
    return {};
}

}

Transaction::Passage::Passage(ReadGate* gate) : m_gate(gate)
{
    if (m_gate)
        m_gate->enter();
}

Transaction::Passage::~Passage()
{
    if (m_gate)
        m_gate->leave();
}

Transaction::Transaction(Connection& connection, Mode mode)
    : m_connection(connection), m_passage(mode == Mode::reading ? connection.state().gate.get() : nullptr)
{
    auto& state = m_connection.state();
    state.begin(beginning(state.dialect, mode));
}

Transaction::Transaction(Connection& connection, std::chrono::steady_clock::time_point until)
    : m_connection(connection), m_passage(nullptr)
{
    auto& state = m_connection.state();
    state.beginUntil(until, beginning(state.dialect, Mode::writing));
}

Transaction::~Transaction()
{
    if (!m_open)
        return;
    try {
        m_connection.state().control("ROLLBACK");
    } catch (const std::exception&) { // a failed statement has rolled back already
        m_open = false;
    }
}

void Transaction::commit()
{
    m_connection.state().commit();
    m_open = false;
}

Savepoint::Savepoint(Connection& connection) : m_connection(connection)
{
    m_connection.state().control("SAVEPOINT part");
}

void Savepoint::keep()
{
    m_connection.state().control("RELEASE part");
}

void Savepoint::undo()
{
    m_connection.state().control("ROLLBACK TO part");
    m_connection.state().control("RELEASE part");
}

}

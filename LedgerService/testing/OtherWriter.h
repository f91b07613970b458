#pragma once

#include <string>

#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

/// Another process writes from here on, until this is gone.
class OtherWriter {
public:
    explicit OtherWriter(const std::string& file)
        : m_connection(file), m_transaction(m_connection, Transaction::Mode::writing)
    {
    }

private:
    Connection m_connection;
    Transaction m_transaction;
};

}

#pragma once

#include <string>

#include <QCoro/QCoroTask>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerCore/Domain/Records/Account.h"

class OperationRunner;

/// What the store can have done to accounts. Each ends with the new snapshot in place.
class AccountOperations {
public:
    QCoro::Task<Result<void>> createAccount(AccountCreate account);
    /// Only the fields that are set change.
    QCoro::Task<Result<void>> updateAccount(std::string id, AccountUpdate update);
    QCoro::Task<Result<void>> archiveAccount(std::string id);

protected:
    explicit AccountOperations(OperationRunner& runner) : m_runner{runner} {}
    ~AccountOperations() = default;

private:
    OperationRunner& m_runner;
};

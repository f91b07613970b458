#include "LedgerCore/Client/Operations/AccountOperations.h"

#include "LedgerCore/Client/Operations/OperationRunner.h"

using enum OperationRunner::Publishing;

QCoro::Task<Result<void>> AccountOperations::createAccount(AccountCreate account)
{
    return m_runner.change({.method = "POST", .path = "v1/accounts", .body = Json::encode(account)}, on);
}

QCoro::Task<Result<void>> AccountOperations::updateAccount(std::string id, AccountUpdate update)
{
    return m_runner.change({.method = "PATCH", .path = "v1/accounts/" + id, .body = Json::encode(update)}, on);
}

QCoro::Task<Result<void>> AccountOperations::archiveAccount(std::string id)
{
    return m_runner.change({.method = "PATCH", .path = "v1/accounts/" + id, .body = Json::encode(Archive{true})}, on);
}

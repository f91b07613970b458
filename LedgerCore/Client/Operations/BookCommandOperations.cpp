#include "LedgerCore/Client/Operations/BookCommandOperations.h"

#include <utility>

#include "LedgerCore/Client/Operations/OperationRunner.h"
#include "LedgerCore/Domain/Settings/FinancialSettingsCommand.h"

QCoro::Task<Result<void>> BookCommandOperations::submitCapital(CapitalCommand command, bool publishError)
{
    return m_runner.submitSection(std::move(command), OperationRunner::publishing(publishError));
}

QCoro::Task<Result<void>> BookCommandOperations::submitDividend(DividendCommand command, bool publishError)
{
    return m_runner.submitSection(std::move(command), OperationRunner::publishing(publishError));
}

QCoro::Task<Result<void>> BookCommandOperations::submitFinancialSettings(FinancialSettingsCommand command,
                                                                         bool publishError)
{
    return m_runner.submit({.method = "POST", .path = "v1/financial-settings/commands", .body = Json::encode(command)},
                           OperationRunner::publishing(publishError));
}

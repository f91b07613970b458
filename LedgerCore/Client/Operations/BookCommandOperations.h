#pragma once

#include <QCoro/QCoroTask>

#include "LedgerCore/Client/Errors/Failure.h"

class OperationRunner;
struct CapitalCommand;
struct DividendCommand;
struct FinancialSettingsCommand;

/// The commands on capital, dividends and financial settings. Each succeeds once the service has carried it out; that
/// the books could not be reloaded then is published.
class BookCommandOperations {
public:
    QCoro::Task<Result<void>> submitCapital(CapitalCommand command, bool publishError);
    QCoro::Task<Result<void>> submitDividend(DividendCommand command, bool publishError);
    QCoro::Task<Result<void>> submitFinancialSettings(FinancialSettingsCommand command, bool publishError);

protected:
    explicit BookCommandOperations(OperationRunner& runner) : m_runner{runner} {}
    ~BookCommandOperations() = default;

private:
    OperationRunner& m_runner;
};

#pragma once

#include <string>

#include <QCoro/QCoroTask>

#include "LedgerCore/Client/Errors/Failure.h"

class OperationRunner;
struct LedgerExportRequest;
struct ReportExportAuthorization;

/// A file that is ready to be written where the person wants it.
struct ExportedFile {
    std::string name;
    std::string content;

    bool operator==(const ExportedFile&) const = default;
};

/// What leaves the books as a file. Each loads the books anew and fails where they no longer are what the person saw
/// or may see.
class ExportOperations {
public:
    QCoro::Task<Result<void>> validateReportExport(ReportExportAuthorization authorization, bool publishError);
    QCoro::Task<Result<ExportedFile>> exportCSVAsync(LedgerExportRequest request, bool publishError);
    QCoro::Task<Result<ExportedFile>> exportCapitalCSVAsync(bool publishError);
    QCoro::Task<Result<ExportedFile>> exportDividendsCSVAsync(bool publishError);

protected:
    explicit ExportOperations(OperationRunner& runner) : m_runner{runner} {}
    ~ExportOperations() = default;

private:
    OperationRunner& m_runner;
};

#include "LedgerCore/Client/Operations/ExportOperations.h"

#include <utility>

#include "LedgerCore/Client/Operations/OperationRunner.h"
#include "LedgerCore/Client/Snapshots/ReleasedByWorker.h"
#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Exports/CapitalCSV.h"
#include "LedgerCore/Domain/Exports/DividendCSV.h"
#include "LedgerCore/Domain/Exports/LedgerExportAuthorization.h"
#include "LedgerCore/Domain/Exports/ReportExportAuthorization.h"

namespace {

Failure failureOf(ExportRefusal refusal)
{
    return APIError{.status = status(refusal), .code = std::string{code(refusal)}, .message = {}};
}

Failure forbidden()
{
    return failureOf(ExportRefusal::forbidden);
}

Result<void> validated(const auto& authorization, const LedgerSnapshot& books)
{
    const auto valid = authorization.validate(books);
    return valid ? Result<void>{} : std::unexpected(failureOf(valid.error()));
}

}

QCoro::Task<Result<void>> ExportOperations::validateReportExport(ReportExportAuthorization authorization,
                                                                 bool publishError)
{
    return m_runner.checkFreshBooks(OperationRunner::publishing(publishError),
                                    [held = releasedByWorker<ReportExportAuthorization>(std::move(authorization))](
                                        const LedgerSnapshot& books) { return validated(*held, books); });
}

QCoro::Task<Result<ExportedFile>> ExportOperations::exportCSVAsync(LedgerExportRequest request, bool publishError)
{
    // It holds a copy of every entry of the file, which must be taken apart where nobody waits for it.
    return m_runner.fromFreshBooks<ExportedFile>(
        OperationRunner::publishing(publishError),
        [held = releasedByWorker<LedgerExportRequest, FreedRoom::handedBack>(std::move(request))](
            const LedgerSnapshot& books) -> Result<ExportedFile> {
            if (const auto valid = validated(held->authorization, books); !valid)
                return std::unexpected(valid.error());
            return ExportedFile{.name = held->filename, .content = held->content};
        });
}

QCoro::Task<Result<ExportedFile>> ExportOperations::exportCapitalCSVAsync(bool publishError)
{
    return m_runner.fromFreshBooks<ExportedFile>(
        OperationRunner::publishing(publishError),
        [today = m_runner.today()](const LedgerSnapshot& books) -> Result<ExportedFile> {
            if (!books.capital || !MemberRights::canExportCapital(books.currentMember))
                return std::unexpected(forbidden());
            return ExportedFile{.name = CapitalCSV::fileName(today), .content = CapitalCSV::render(*books.capital)};
        });
}

QCoro::Task<Result<ExportedFile>> ExportOperations::exportDividendsCSVAsync(bool publishError)
{
    return m_runner.fromFreshBooks<ExportedFile>(
        OperationRunner::publishing(publishError),
        [today = m_runner.today(), locale = m_runner.locale()](const LedgerSnapshot& books) -> Result<ExportedFile> {
            if (!books.dividends || !MemberRights::canExportDividends(books.currentMember))
                return std::unexpected(forbidden());
            return ExportedFile{.name = DividendCSV::fileName(today),
                                .content = DividendCSV::render(*books.dividends, locale)};
        });
}

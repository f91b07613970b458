#include <limits>
#include <utility>

#include <QPointer>

#include "LedgerCore/Client/Http/APIClient.h"
#include "LedgerCore/Client/Session/Clock.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Client/Store/StoreOperation.h"
#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Exports/CapitalCSV.h"
#include "LedgerCore/Domain/Exports/DividendCSV.h"
#include "LedgerCore/Domain/Exports/LedgerExportAuthorization.h"
#include "LedgerCore/Domain/Exports/ReportExportAuthorization.h"

namespace {

constexpr auto onWorker = std::numeric_limits<std::size_t>::max();

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

template <class Value>
QCoro::Task<Result<Value>> LedgerStore::loadAndMake(FromBooks<Value> make)
{
    auto loading = load();
    const auto loaded = co_await loading;
    if (!loaded)
        co_return std::unexpected(loaded.error());
    const auto made = std::make_shared<Result<Value>>(std::unexpected(Failure{Cancelled{}}));
    auto making = runForSize(onWorker, [make = std::move(make), books = m_snapshot, made] { *made = make(*books); });
    co_await making;
    co_return std::move(*made);
}

template <class Value>
QCoro::Task<Result<Value>> LedgerStore::fromFreshBooks(bool publishError, FromBooks<Value> make)
{
    return operation<Value>(publishing(publishError), [this, make = std::move(make)] { return loadAndMake(make); });
}

QCoro::Task<Result<void>> LedgerStore::validateReportExport(ReportExportAuthorization authorization, bool publishError)
{
    return fromFreshBooks<void>(publishError, [authorization = std::move(authorization)](const LedgerSnapshot& books) {
        return validated(authorization, books);
    });
}

QCoro::Task<Result<ExportedFile>> LedgerStore::exportCSVAsync(LedgerExportRequest request, bool publishError)
{
    return fromFreshBooks<ExportedFile>(
        publishError, [request = std::move(request)](const LedgerSnapshot& books) -> Result<ExportedFile> {
            if (const auto valid = validated(request.authorization, books); !valid)
                return std::unexpected(valid.error());
            return ExportedFile{.name = request.filename, .content = request.content};
        });
}

QCoro::Task<Result<ExportedFile>> LedgerStore::exportCapitalCSVAsync(bool publishError)
{
    return fromFreshBooks<ExportedFile>(
        publishError, [today = today()](const LedgerSnapshot& books) -> Result<ExportedFile> {
            if (!books.capital || !MemberRights::canExportCapital(books.currentMember))
                return std::unexpected(forbidden());
            return ExportedFile{.name = CapitalCSV::fileName(today), .content = CapitalCSV::render(*books.capital)};
        });
}

QCoro::Task<Result<ExportedFile>> LedgerStore::exportDividendsCSVAsync(bool publishError)
{
    return fromFreshBooks<ExportedFile>(
        publishError, [today = today(), locale = locale()](const LedgerSnapshot& books) -> Result<ExportedFile> {
            if (!books.dividends || !MemberRights::canExportDividends(books.currentMember))
                return std::unexpected(forbidden());
            return ExportedFile{.name = DividendCSV::fileName(today),
                                .content = DividendCSV::render(*books.dividends, locale)};
        });
}

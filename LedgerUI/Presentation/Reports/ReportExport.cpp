#include "LedgerUI/Presentation/Reports/ReportExport.h"

#include <limits>
#include <memory>
#include <utility>

#include <QPointer>

#include "LedgerCore/Client/Http/APIClient.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Exports/ReportExportAuthorization.h"

namespace {

constexpr auto onWorker = std::numeric_limits<std::size_t>::max();

using Prepared = std::expected<std::vector<ReportExportAuthorization>, ExportRefusal>;

/// The chosen accounts that hold the currency: others have no part in its figures.
std::optional<ReportExportAuthorization::AccountIDs> accountsOf(const ReportSheet& sheet, std::string_view currency)
{
    if (!sheet.query.accountIDs)
        return std::nullopt;
    ReportExportAuthorization::AccountIDs ids;
    for (const auto& account : sheet.books->snapshot->accounts) {
        if (account.holds(currency) && sheet.query.accountIDs->contains(account.id))
            ids.insert(account.id);
    }
    return ids;
}

Prepared prepared(const ReportSheet& sheet, ReportPart part)
{
    std::vector<ReportExportAuthorization> all;
    for (const auto& currency : ReportParts::currencies(sheet, part)) {
        auto authorization =
            ReportExportAuthorization::create(*sheet.books->snapshot, currency, accountsOf(sheet, currency));
        if (!authorization)
            return std::unexpected(authorization.error());
        all.push_back(*std::move(authorization));
    }
    return all;
}

}

QCoro::Task<Result<void>> ReportExport::permission(LedgerStore* store, ReportSheetPointer sheet, ReportPart part)
{
    const QPointer<LedgerStore> guard{store};
    const auto all = std::make_shared<Prepared>();
    auto preparing = runForSize(onWorker, [all, sheet, part] { *all = prepared(*sheet, part); });
    co_await preparing;
    if (!*all)
        co_return std::unexpected(
            Failure{APIError{.status = status(all->error()), .code = std::string{code(all->error())}, .message = {}}});
    for (auto& each : **all) {
        if (!guard)
            co_return std::unexpected(Failure{Cancelled{}});
        auto checking = guard->validateReportExport(std::move(each), false);
        auto checked = co_await checking;
        if (!checked)
            co_return checked;
    }
    co_return Result<void>{};
}

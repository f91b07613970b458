#include "LedgerUI/Presentation/Reports/Output/ReportExport.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <utility>

#include <QPointer>
#include <QStringList>

#include "LedgerCore/Client/Http/APIClient.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Exports/ReportExportAuthorization.h"
#include "LedgerUI/Presentation/Forms/SavedFile.h"
#include "LedgerUI/Presentation/Text/ExportChangesText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

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

/// All movements of funds leave the page, however many of them it shows.
ReportGrid wholeTable(const ReportSheet& sheet, ReportPart part, std::string_view tableID)
{
    if (tableID == FundMovementGrids::tableID)
        return FundMovementGrids::of(*sheet.books, sheet.query, sheet.locale, FundMovementGrids::all).list;
    for (const auto* table : ReportParts::tables(sheet, part)) {
        if (table->id == tableID)
            return *table;
    }
    return {};
}

std::unexpected<Failure> refused(ExportRefusal refusal)
{
    return std::unexpected(
        Failure{APIError{.status = status(refusal), .code = std::string{code(refusal)}, .message = {}}});
}

/// Takes them apart as well, where nobody waits for it.
Result<void> compared(std::vector<ReportExportAuthorization>& all, const LedgerSnapshot& books)
{
    Result<void> outcome;
    for (const auto& each : all) {
        if (const auto valid = each.validate(books); !valid) {
            outcome = refused(valid.error());
            break;
        }
    }
    all.clear();
    return outcome;
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
        co_return refused(all->error());
    if (!guard)
        co_return std::unexpected(Failure{Cancelled{}});
    if ((*all)->empty())
        co_return Result<void>{};
    auto checking = guard->validateReportExport(std::move((*all)->back()), false);
    (*all)->pop_back();
    auto checked = co_await checking;
    if (!checked)
        co_return checked;
    const auto books = guard ? guard->snapshot() : nullptr;
    if (!books)
        co_return std::unexpected(Failure{Cancelled{}});
    if (!MemberRights::canExport(books->currentMember))
        co_return refused(ExportRefusal::forbidden); // seeing the accounts is not enough
    // The other currencies are compared with the books that were loaded for the first.
    const auto outcome = std::make_shared<Result<void>>();
    auto comparing = runForSize(onWorker, [all, books, outcome] { *outcome = compared(**all, *books); });
    co_await comparing;
    co_return *outcome;
}

ReportSheet ReportExport::ofBooks(const ReportSheet& shown, SnapshotPointer books, std::string locale)
{
    auto held = shown.books->snapshot == books ? shown.books : std::make_shared<const ReportBooks>(std::move(books));
    return reportSheet(std::move(held), shown.query, std::move(locale));
}

QCoro::Task<Result<void>> ReportExport::permissionNow(LedgerStore* store, ReportSheetPointer shown,
                                                      SnapshotPointer books, ReportPart part)
{
    const QPointer<LedgerStore> guard{store};
    if (shown->books->snapshot != books) {
        const auto renewed = std::make_shared<ReportSheetPointer>();
        auto renewing = runForSize(onWorker, [renewed, shown, books] {
            *renewed = std::make_shared<const ReportSheet>(ofBooks(*shown, books, shown->locale));
        });
        co_await renewing;
        shown = *renewed;
    }
    if (!guard)
        co_return std::unexpected(Failure{Cancelled{}});
    auto asking = permission(guard, shown, part);
    co_return co_await asking;
}

QCoro::Task<QString> ReportExport::changes(ReportSheetPointer before, ReportSheetPointer now, ReportPart part)
{
    const auto text = std::make_shared<QString>();
    auto comparing = runForSize(onWorker, [text, before, now, part] {
        const auto earlier = prepared(*before, part);
        const auto later = prepared(*now, part);
        if (!earlier || !later)
            return;
        QStringList parts;
        for (const auto& each : *earlier) {
            const auto same = std::ranges::find(*later, each.currency, &ReportExportAuthorization::currency);
            if (same == later->end())
                continue;
            const auto what = exportChangesText(ExportChanges::between(each.evidence, same->evidence), now->locale);
            if (!what.isEmpty())
                parts << wordIn(now->locale, reportWords(), "export.changedIn", {each.currency, what.toStdString()});
        }
        *text = parts.join(QLatin1Char('\n'));
    });
    co_await comparing;
    co_return *text;
}

bool ReportExport::saysChanged(const Failure& failure)
{
    const auto* error = std::get_if<APIError>(&failure);
    return error && (error->code == code(ExportRefusal::reportChanged) ||
                     error->code == code(ExportRefusal::reportScopeChanged));
}

std::vector<ReportExport::Choice> ReportExport::choices(const ReportSheet& sheet, ReportPart part,
                                                        const PrintMoment& moment)
{
    std::vector<Choice> all;
    const auto days = PrintHead::days(sheet.query.period, moment);
    for (const auto* table : ReportParts::tables(sheet, part)) {
        const bool isFunds = table->id == FundMovementGrids::tableID;
        const auto stem = isFunds ? QStringLiteral("Brightbook-fundMovements-")
                                  : QStringLiteral("tallyfold-report-%1-").arg(qString(table->id));
        all.push_back({.tableID = table->id,
                       .name = table->name,
                       .rows = isFunds ? sheet.funds.count : table->rows.size(),
                       .fileName = stem + days + QStringLiteral(".csv")});
    }
    return all;
}

std::vector<PrintedFact> ReportExport::scope(const ReportSheet& sheet, ReportPart part)
{
    std::vector<std::string> names;
    for (const auto& account : sheet.books->snapshot->accounts) {
        if (sheet.query.accountIDs && sheet.query.accountIDs->contains(account.id))
            names.push_back(account.name);
    }
    std::vector<PrintedFact> facts{PrintHead::period(sheet.query.period, sheet.locale),
                                   PrintHead::accounts(names, sheet.locale)};
    if (part != ReportPart::overview && part != ReportPart::summary)
        facts.push_back(PrintHead::currency(sheet.query.currency, sheet.locale));
    return facts;
}

QCoro::Task<QString> ReportExport::spreadsheetText(ReportSheetPointer sheet, ReportPart part, std::string tableID)
{
    const auto text = std::make_shared<QString>();
    auto making = runForSize(onWorker, [text, sheet = std::move(sheet), part, tableID = std::move(tableID)] {
        *text = ReportGrids::spreadsheetText(wholeTable(*sheet, part, tableID));
    });
    co_await making;
    co_return *text;
}

QCoro::Task<ReportExport::Outcome> ReportExport::save(LedgerStore* store, ReportSheetPointer sheet, ReportPart part,
                                                      std::string tableID, std::filesystem::path path)
{
    auto asking = permission(store, sheet, part);
    const auto allowed = co_await asking;
    if (!allowed)
        co_return allowed.error();
    auto writing = SavedFile::write(std::move(path), [sheet, part, tableID = std::move(tableID)] {
        return ReportGrids::csvText(wholeTable(*sheet, part, tableID));
    });
    const auto problem = co_await writing;
    if (problem)
        co_return *problem;
    co_return Saved{};
}

#include "LedgerUI/Presentation/Exports/LedgerExportForm.h"

#include <algorithm>
#include <limits>
#include <memory>

#include <QPointer>

#include "LedgerCore/Client/Http/APIClient.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Exports/LedgerExportAuthorization.h"
#include "LedgerUI/Presentation/Entry/EntryDay.h"
#include "LedgerUI/Presentation/Exports/ExportWords.h"
#include "LedgerUI/Presentation/Forms/SavedFile.h"
#include "LedgerUI/Presentation/Ledger/LedgerFilter.h"
#include "LedgerUI/Presentation/Text/Words.h"

namespace {

constexpr auto onWorker = std::numeric_limits<std::size_t>::max();

/// The kinds of entry behind what the ledger page filters by, which tells transfers and dividends apart.
LedgerExportForm::Choices kindsBehind(const LedgerFilter::Choices& displayed)
{
    if (displayed.empty())
        return {EntryKind::all.begin(), EntryKind::all.end()};
    LedgerExportForm::Choices kinds;
    for (const auto& kind : displayed) {
        if (kind == TransferPurpose::funding || kind == TransferPurpose::returning)
            kinds.insert(std::string{EntryKind::transfer});
        else
            kinds.insert(kind.substr(0, kind.find('.')));
    }
    return kinds;
}

std::pair<std::string, std::string> daysOfAll(const LedgerSnapshot& snapshot, std::string_view today)
{
    std::string first{today};
    std::string last{today};
    for (const auto& entry : snapshot.transactions) {
        first = std::min(first, entry.date);
        last = std::max(last, entry.date);
    }
    return {first, last};
}

template <class Each>
void forEachVisibleAccount(const LedgerSnapshot& snapshot, Each each)
{
    for (const auto& account : snapshot.accounts) {
        if (snapshot.currentMember.can(AccountAction::view, account.id))
            each(account);
    }
}

QCoro::Task<std::expected<LedgerExportRequest, ExportRefusal>> requestFor(LedgerExport::Preview previewed,
                                                                          std::string locale)
{
    using Made = std::expected<LedgerExportRequest, ExportRefusal>;
    const auto made = std::make_shared<Made>();
    auto making = runForSize(onWorker, [made, previewed = std::move(previewed), locale = std::move(locale)] {
        *made = LedgerExportRequest::create(*previewed.books, previewed.scope, locale);
    });
    co_await making;
    co_return std::move(*made);
}

}

LedgerExportForm LedgerExport::opened(const LedgerFilter& filter, const LedgerSnapshot& snapshot,
                                      std::string_view today)
{
    LedgerExportForm form;
    form.accountIDs = filter.accountIDs;
    form.currencies = filter.currencies;
    form.kinds = kindsBehind(filter.kinds);
    if (filter.period.isAllTime()) {
        std::tie(form.firstDay, form.lastDay) = daysOfAll(snapshot, today);
    } else {
        form.firstDay = LedgerDay::format(filter.period.firstDay());
        form.lastDay = LedgerDay::format(filter.period.lastDay());
    }
    return form;
}

LedgerExportScope LedgerExport::scopeOf(const LedgerExportForm& form)
{
    return {.startDate = form.firstDay,
            .endDate = form.lastDay,
            .accountIDs = form.accountIDs,
            .currencies = form.currencies,
            .kinds = form.kinds,
            .includesAllVisibleAccounts = form.accountIDs.empty(),
            .includesAllVisibleCurrencies = form.currencies.empty(),
            .includesReceiptIndex = form.includesReceiptIndex};
}

std::vector<LedgerExport::Choice> LedgerExport::accounts(const LedgerSnapshot& snapshot)
{
    std::vector<Choice> choices;
    forEachVisibleAccount(snapshot,
                          [&](const Account& account) { choices.push_back({account.id, qString(account.name)}); });
    return choices;
}

std::vector<LedgerExport::Choice> LedgerExport::currencies(const LedgerSnapshot& snapshot)
{
    std::vector<Choice> choices;
    forEachVisibleAccount(snapshot, [&](const Account& account) {
        for (const auto& currency : account.currencies) {
            if (std::ranges::find(choices, currency, &Choice::id) == choices.end())
                choices.push_back({currency, qString(currency)});
        }
    });
    return choices;
}

LedgerExport::Problems LedgerExport::problems(const LedgerExportForm& form, std::string_view today,
                                              std::string_view locale)
{
    const auto unreadable = [&](const std::string& day) {
        return day.empty()
                   ? wordIn(locale, exportWords(), "day.unreadable", {EntryDay::written(today, locale).toStdString()})
                   : QString{};
    };
    Problems problems{.firstDay = unreadable(form.firstDay), .lastDay = unreadable(form.lastDay), .kinds = {}};
    if (!problems.any() && form.lastDay < form.firstDay)
        problems.lastDay = wordIn(locale, exportWords(), "days.order");
    if (form.kinds.empty())
        problems.kinds = wordIn(locale, exportWords(), "kinds.none");
    return problems;
}

Failure LedgerExport::failureOf(ExportRefusal refusal)
{
    return APIError{.status = status(refusal), .code = std::string{code(refusal)}, .message = {}};
}

QCoro::Task<LedgerExport::Preview> LedgerExport::preview(SnapshotPointer books, LedgerExportScope scope)
{
    const auto made = std::make_shared<Preview>(Preview{books, std::move(scope), LedgerExportPreview{}});
    auto counting = runForSize(onWorker, [made] {
        const auto selection = LedgerExportSelection::create(*made->books, made->scope);
        if (selection)
            made->counts = selection->preview();
        else
            made->counts = std::unexpected(selection.error());
    });
    co_await counting;
    co_return std::move(*made);
}

QCoro::Task<LedgerExport::Outcome> LedgerExport::save(LedgerStore* store, Preview previewed, std::filesystem::path path,
                                                      std::string locale)
{
    const QPointer<LedgerStore> guard{store};
    auto making = requestFor(std::move(previewed), std::move(locale));
    auto request = co_await making;
    if (!request)
        co_return failureOf(request.error());
    if (!guard)
        co_return Failure{Cancelled{}};
    auto checking = guard->exportCSVAsync(std::move(*request), false);
    auto file = co_await checking;
    if (!file)
        co_return file.error();
    auto writing = SavedFile::write(std::move(path), [content = std::move(file->content)] { return content; });
    const auto problem = co_await writing;
    if (problem)
        co_return *problem;
    co_return Saved{};
}

#include "LedgerUI/Presentation/Exports/LedgerExportForm.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <memory>
#include <utility>

#include <QPointer>

#include "LedgerCore/Client/Http/APIClient.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Exports/LedgerExportAuthorization.h"
#include "LedgerUI/Presentation/Exports/LedgerPrint.h"
#include "LedgerUI/Presentation/Forms/SavedFile.h"
#include "LedgerUI/Presentation/Period/DayTyping.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

using Part = LedgerFilter::Part;
using Source = LedgerExportForm::Source;

constexpr auto onWorker = std::numeric_limits<std::size_t>::max();

/// What the ledger page filters by are kinds of entries; without a choice there it shows all of them.
LedgerExportForm::Choices kindsBehind(const LedgerFilter::Choices& displayed)
{
    if (displayed.empty())
        return {EntryKind::all.begin(), EntryKind::all.end()};
    return displayed;
}

struct Days {
    std::string first;
    std::string last;

    void take(const std::string& day)
    {
        first = std::min(first, day);
        last = std::max(last, day);
    }
};

/// A book knows which day is the last one and which the first, where all of them are days.
bool tellsDays(const LedgerExport::Page& page, const LedgerSnapshot& snapshot)
{
    const auto* book = page.book.get();
    return book && &book->snapshot() == &snapshot && book->size() > 0 && book->entry(book->order().back()).day != 0;
}

Days daysOfAll(const LedgerExport::Page& page, const LedgerSnapshot& snapshot)
{
    Days days{page.today, page.today};
    if (tellsDays(page, snapshot)) {
        days.take(page.book->transaction(page.book->order().front()).date);
        days.take(page.book->transaction(page.book->order().back()).date);
        return days;
    }
    for (const auto& entry : snapshot.transactions)
        days.take(entry.date);
    return days;
}

/// What the form asks for by itself.
LedgerExportScope chosenScope(const LedgerExportForm& form)
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

/// The accounts of a figure, and those that the page is narrowed to beside it.
LedgerExportForm::Choices accountsOf(const LedgerFilter& filter)
{
    if (!filter.figure || !filter.figure->scope.accountIDs)
        return filter.accountIDs;
    const auto& ofFigure = *filter.figure->scope.accountIDs;
    if (filter.accountIDs.empty())
        return ofFigure;
    LedgerExportForm::Choices both;
    std::ranges::set_intersection(ofFigure, filter.accountIDs, std::inserter(both, both.end()));
    return both;
}

LedgerFilter filterOf(const LedgerExport::Page& page, Source source)
{
    auto filter = page.filter;
    if (source == Source::selected)
        filter.entryIDs = page.selectedIDs;
    return filter;
}

/// The entries of the page, with those of their legs that the page is about.
LedgerExportScope pageScope(const LedgerBook& book, const LedgerFilter& filter, const std::string& today)
{
    auto narrowed = LedgerExport::narrowing(filter);
    LedgerExportScope scope{.startDate = {},
                            .endDate = {},
                            .accountIDs = std::move(narrowed.accountIDs),
                            .currencies = std::move(narrowed.currencies),
                            .kinds = {EntryKind::all.begin(), EntryKind::all.end()}};
    scope.includesAllVisibleAccounts = filter.accountIDs.empty() && scope.accountIDs.empty();
    scope.includesAllVisibleCurrencies = scope.currencies.empty();
    if (filter.figure)
        scope.direction = filter.figure->direction;
    scope.entryIDs.emplace();
    std::optional<Days> days;
    for (const auto at : matching(book, filter)) {
        const auto& entry = book.transaction(at);
        scope.entryIDs->push_back(entry.id);
        if (days)
            days->take(entry.date);
        else
            days = Days{entry.date, entry.date};
    }
    if (!filter.period.isAllTime())
        days = Days{LedgerDay::format(filter.period.firstDay()), LedgerDay::format(filter.period.lastDay())};
    scope.startDate = days ? days->first : today;
    scope.endDate = days ? days->last : today;
    return scope;
}

LedgerBookPointer bookOf(const LedgerBookPointer& shown, const SnapshotPointer& books, const std::string& locale)
{
    if (shown && shown->snapshotPointer() == books && shown->locale() == locale)
        return shown;
    return std::make_shared<const LedgerBook>(books, locale, shown.get());
}

LedgerExportScope scopeOf(const LedgerExportForm& form, const LedgerExport::Page& page, const LedgerBook& book)
{
    auto scope = pageScope(book, filterOf(page, form.source), page.today);
    scope.includesReceiptIndex = form.includesReceiptIndex;
    return scope;
}

/// What is different from the preview before.
ExportChanges changesSince(const LedgerExport::Preview& before, const LedgerExportSelection& now)
{
    auto earlier = LedgerExportSelection::create(*before.books, before.scope);
    using Evidence = LedgerExportAuthorization::Evidence;
    return earlier ? ExportChanges::between(Evidence::of(*std::move(earlier)), Evidence::of(now)) : ExportChanges{};
}

LedgerExport::Preview previewOf(const LedgerExport::Question& question)
{
    const auto& [books, form, page, locale, before] = question;
    LedgerExport::Preview made{
        .books = books, .form = form, .scope = {}, .counts = LedgerExportPreview{}, .facts = {}, .changes = {}};
    if (form.source == Source::chosen) {
        made.scope = chosenScope(form);
    } else {
        const auto book = bookOf(page->book, books, locale);
        made.scope = scopeOf(form, *page, *book);
        made.facts = LedgerPrint::facts(*book, filterOf(*page, form.source));
    }
    const auto selection = LedgerExportSelection::create(*books, made.scope);
    if (!selection) {
        made.counts = std::unexpected(selection.error());
        return made;
    }
    made.counts = selection->preview();
    if (before && before->form == form && before->books != books)
        made.changes = changesSince(*before, *selection);
    return made;
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

/// Whether the page would show the same entries of newer books: one that has come is in no comparison of those that
/// were previewed.
QCoro::Task<bool> hasSameAnswer(SnapshotPointer now, LedgerExport::PagePointer page, LedgerExport::Preview previewed,
                                std::string locale)
{
    if (previewed.form.source == Source::chosen || now == previewed.books)
        co_return true;
    const auto isSame = std::make_shared<bool>(false);
    auto asking = runForSize(onWorker, [isSame, now = std::move(now), page = std::move(page),
                                        previewed = std::move(previewed), locale = std::move(locale)] {
        *isSame = scopeOf(previewed.form, *page, *bookOf(page->book, now, locale)) == previewed.scope;
    });
    co_await asking;
    co_return *isSame;
}

}

LedgerExportForm LedgerExport::opened(const Page& page, const LedgerSnapshot& snapshot)
{
    const auto& filter = page.filter;
    LedgerExportForm form;
    form.source = sources(page).front();
    form.accountIDs = filter.accountIDs;
    form.currencies = filter.currencies;
    form.kinds = kindsBehind(filter.kinds);
    auto days = filter.period.isAllTime()
                    ? daysOfAll(page, snapshot)
                    : Days{LedgerDay::format(filter.period.firstDay()), LedgerDay::format(filter.period.lastDay())};
    form.firstDay = std::move(days.first);
    form.lastDay = std::move(days.last);
    return form;
}

LedgerExport::Narrowing LedgerExport::narrowing(const LedgerFilter& filter)
{
    Narrowing narrowed{.accountIDs = accountsOf(filter), .currencies = filter.currencies};
    if (filter.figure)
        narrowed.currencies = {filter.figure->scope.currency};
    return narrowed;
}

std::vector<LedgerExportForm::Source> LedgerExport::sources(const Page& page)
{
    std::vector<Source> sources;
    if (!page.selectedIDs.empty())
        sources.push_back(Source::selected);
    if (page.filter.without(Part::kinds).without(Part::accounts).without(Part::currencies).narrows())
        sources.push_back(Source::shown);
    sources.push_back(Source::chosen);
    return sources;
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
    if (form.source != Source::chosen)
        return {};
    const auto unreadable = [&](const std::string& day) {
        return day.empty()
                   ? wordIn(locale, exportWords(), "day.unreadable", {DayTyping::written(today, locale).toStdString()})
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

QCoro::Task<LedgerExport::Preview> LedgerExport::preview(Question question)
{
    const auto made = std::make_shared<Preview>();
    auto counting = runForSize(onWorker, [made, question = std::move(question)] { *made = previewOf(question); });
    co_await counting;
    co_return std::move(*made);
}

QCoro::Task<LedgerExport::Outcome> LedgerExport::save(LedgerStore* store, PagePointer page, Preview previewed,
                                                      std::filesystem::path path, std::string locale)
{
    const QPointer<LedgerStore> guard{store};
    auto making = requestFor(previewed, locale);
    auto request = co_await making;
    if (!request)
        co_return failureOf(request.error());
    if (!guard)
        co_return Failure{Cancelled{}};
    auto checking = guard->exportCSVAsync(std::move(*request), false);
    auto file = co_await checking;
    if (!file)
        co_return file.error();
    const auto now = guard ? guard->snapshot() : nullptr;
    if (!now)
        co_return Failure{Cancelled{}};
    auto asking = hasSameAnswer(now, std::move(page), std::move(previewed), std::move(locale));
    const bool isSame = co_await asking;
    if (!isSame)
        co_return failureOf(ExportRefusal::ledgerChanged);
    auto writing = SavedFile::write(std::move(path), [content = std::move(file->content)] { return content; });
    const auto problem = co_await writing;
    if (problem)
        co_return *problem;
    co_return Saved{};
}

bool LedgerExport::saysChanged(const Failure& failure)
{
    const auto* error = std::get_if<APIError>(&failure);
    return error && error->code == code(ExportRefusal::ledgerChanged);
}

#include "LedgerUI/Presentation/Exports/LedgerPrint.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <memory>
#include <utility>

#include <QPointer>
#include <QStringList>

#include "LedgerCore/Client/Http/APIClient.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Exports/ExportRefusal.h"
#include "LedgerUI/Presentation/Exports/AccountStatement.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerFilterChoices.h"
#include "LedgerUI/Presentation/Ledger/Rows/LedgerDayRow.h"
#include "LedgerUI/Presentation/Ledger/Rows/LedgerEntryDetail.h"
#include "LedgerUI/Presentation/Ledger/Rows/LedgerRow.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

using Side = PrintedColumn::Side;
using Width = PrintedColumn::Width;

constexpr auto onWorker = std::numeric_limits<std::size_t>::max();

std::unexpected<Failure> refused(ExportRefusal refusal)
{
    return std::unexpected(
        Failure{APIError{.status = status(refusal), .code = std::string{code(refusal)}, .message = {}}});
}

QString lines(QStringList parts)
{
    parts.removeAll(QString{});
    return parts.join(QLatin1Char('\n'));
}

QString amountsText(const std::vector<MoneyText>& amounts)
{
    QStringList texts;
    for (const auto& each : amounts)
        texts << each.text();
    return lines(texts);
}

PrintedCell entryCell(const LedgerRow& row, std::string_view locale)
{
    QStringList second{row.kindTitle == row.title ? QString{} : row.kindTitle, row.note};
    second.removeAll(QString{});
    auto title = row.title;
    if (row.isReversed)
        title = wordIn(locale, exportWords(), "print.reversed", {title.toStdString()});
    return {.text = title, .second = second.join(QStringLiteral(" · "))};
}

/// A day, and what it brought.
PrintedRow headRow(const LedgerListing& listing, std::uint32_t day)
{
    const auto row = dayRowFor(listing, *listing.head(day));
    QStringList parts{row.day, row.entries};
    for (const auto& net : row.nets)
        parts << net.text();
    return {.cells = {{parts.join(QStringLiteral(" · "))}, {}, {}, {}, {}}, .level = PrintedRow::Level::group};
}

PrintedTable entriesOf(const LedgerListing& listing)
{
    const auto& book = *listing.book;
    const auto word = [&](std::string_view key) { return wordIn(book.locale(), ledgerWords(), key); };
    PrintedTable table{.columns = {{.head = word("column.date")},
                                   {.head = word("column.entry"), .width = Width::rest},
                                   {.head = word("column.account"), .width = Width::rest},
                                   {.head = word("column.member"), .width = Width::rest},
                                   {.head = word("column.amount"), .side = Side::end}},
                       .rows = {}};
    const auto today = LedgerDay::format(listing.query.today);
    table.rows.reserve(listing.lines.size());
    for (const auto line : listing.lines) {
        if (line.isHead()) {
            table.rows.push_back(headRow(listing, line.day()));
            continue;
        }
        const auto at = line.entry();
        const auto row = rowFor(book, at, today);
        const auto account =
            row.destination.isEmpty() ? row.account : QStringLiteral("%1 → %2").arg(row.account, row.destination);
        table.rows.push_back({.cells = {{DayText::shortDate(book.transaction(at).date, book.locale())},
                                        entryCell(row, book.locale()),
                                        {account},
                                        {row.member},
                                        {amountsText(row.amounts)}}});
    }
    return table;
}

PrintedTable totalsOf(const LedgerListing& listing)
{
    const auto& locale = listing.book->locale();
    const auto word = [&](std::string_view key) { return wordIn(locale, ledgerWords(), key); };
    PrintedTable table{.title = word("totals.all"),
                       .columns = {{.head = word("filter.currencies"), .width = Width::rest},
                                   {.head = word("totals.in"), .side = Side::end},
                                   {.head = word("totals.out"), .side = Side::end},
                                   {.head = word("totals.net"), .side = Side::end}},
                       .rows = {},
                       .note = listing.query.filter.figure ? QString{} : word("totals.hint")};
    for (const auto& total : listing.totals) {
        const auto cell = [&](const std::optional<std::int64_t>& minor) {
            return PrintedCell{
                (minor ? movementText(*minor, total.currency, locale) : unknownMoney(total.currency)).figure()};
        };
        table.rows.push_back(
            {.cells = {{qString(total.currency)}, cell(total.incoming), cell(total.outgoing), cell(total.net)}});
    }
    return table;
}

}

std::vector<PrintedFact> LedgerPrint::facts(const LedgerBook& book, const LedgerFilter& filter)
{
    using Part = LedgerFilter::Part;
    std::vector<PrintedFact> facts{PrintHead::period(filter.period, book.locale())};
    for (const auto part : {Part::text, Part::kinds, Part::accounts, Part::categories, Part::currencies, Part::receipts,
                            Part::members, Part::amounts, Part::standings, Part::figure, Part::selection}) {
        if (filter.isSet(part))
            facts.push_back({partName(part, book.locale()), partValue(book, filter, part)});
        else if (part == Part::accounts && !(filter.figure && filter.figure->scope.accountIDs))
            facts.push_back(PrintHead::accounts({}, book.locale()));
    }
    return facts;
}

namespace {

using MadeOf = std::function<PrintedDocument(const SnapshotPointer&)>;

/// Whether what is made of the books that were asked about is also made of those that the service has now.
QCoro::Task<Result<void>> sameOfNewBooks(LedgerStore* store, SnapshotPointer asked, MadeOf made)
{
    const QPointer<LedgerStore> guard{store};
    auto loading = store->refresh(false);
    const auto loaded = co_await loading;
    if (!loaded)
        co_return loaded;
    const auto now = guard ? guard->snapshot() : nullptr;
    if (!now)
        co_return std::unexpected(Failure{Cancelled{}});
    if (!MemberRights::canExport(now->currentMember))
        co_return refused(ExportRefusal::forbidden);
    if (now == asked)
        co_return Result<void>{};
    const auto isSame = std::make_shared<bool>(false);
    auto comparing =
        runForSize(onWorker, [isSame, now, asked, made = std::move(made)] { *isSame = made(asked) == made(now); });
    co_await comparing;
    co_return *isSame ? Result<void>{} : refused(ExportRefusal::ledgerChanged);
}

}

PrintedDocument LedgerPrint::list(const LedgerListing& listing, const PrintMoment& moment)
{
    const auto& book = *listing.book;
    const auto& filter = listing.query.filter;
    if (auto statement = AccountStatement::document(book, filter, moment))
        return *std::move(statement);
    PrintedDocument document{.locale = book.locale(),
                             .company = qString(book.snapshot().company.name),
                             .title = wordIn(book.locale(), ledgerWords(), "title"),
                             .facts = facts(book, filter),
                             .fileName = QStringLiteral("tallyfold-ledger-") + PrintHead::days(filter.period, moment)};
    document.facts.push_back(PrintHead::asOf(moment, book.locale()));
    document.tables.push_back(entriesOf(listing));
    if (!listing.totals.empty())
        document.tables.push_back(totalsOf(listing));
    document.notes.push_back(countedIn(book.locale(), ledgerWords(), "entries", listing.rows.size()));
    return document;
}

PrintedDocument LedgerPrint::list(const Asked& asked, const std::string& locale)
{
    const auto& shown = *asked.shown;
    auto query = shown.query;
    if (!asked.selectedIDs.empty())
        query.filter.entryIDs = asked.selectedIDs;
    const bool isOfThisBook = shown.book->snapshotPointer() == asked.snapshot && shown.book->locale() == locale;
    if (isOfThisBook && query == shown.query)
        return list(shown, asked.moment);
    auto book =
        isOfThisBook ? shown.book : std::make_shared<const LedgerBook>(asked.snapshot, locale, shown.book.get());
    return list(listingOf(std::move(book), std::move(query)), asked.moment);
}

QCoro::Task<Result<void>> LedgerPrint::permission(LedgerStore* store, Asked asked)
{
    const auto made = [asked](const SnapshotPointer& books) {
        return list({books, asked.shown, asked.moment, asked.selectedIDs}, asked.shown->book->locale());
    };
    return sameOfNewBooks(store, asked.snapshot, made);
}

PrintedDocument LedgerPrint::statement(const AskedStatement& asked, const std::string& locale)
{
    const auto today = LedgerDay::parse(asked.moment.day).value_or(asked.period.lastDay());
    return list(
        listingOf(std::make_shared<const LedgerBook>(asked.snapshot, locale),
                  {.filter = {.period = asked.period, .accountIDs = {asked.accountID}}, .sort = {}, .today = today}),
        asked.moment);
}

QCoro::Task<Result<void>> LedgerPrint::permission(LedgerStore* store, AskedStatement asked, std::string locale)
{
    const auto made = [asked, locale = std::move(locale)](const SnapshotPointer& books) {
        return statement({books, asked.accountID, asked.period, asked.moment}, locale);
    };
    return sameOfNewBooks(store, asked.snapshot, made);
}

PrintedDocument LedgerPrint::entry(const LedgerBook& book, std::uint32_t at, const PrintMoment& moment)
{
    const auto& locale = book.locale();
    const auto word = [&](std::string_view key) { return wordIn(locale, ledgerWords(), key); };
    const auto detail = detailOf(book, at);
    const auto& transaction = book.transaction(at);
    PrintedDocument document{.locale = locale,
                             .company = qString(book.snapshot().company.name),
                             .title = detail.title.isEmpty() ? detail.kindTitle
                                                             : detail.kindTitle + QStringLiteral(": ") + detail.title,
                             .fileName = QStringLiteral("tallyfold-entry-") + qString(transaction.date)};
    if (detail.isReversed)
        document.title = wordIn(locale, exportWords(), "print.reversed", {document.title.toStdString()});
    for (const auto& line : detail.lines)
        document.facts.push_back({line.label, line.value});
    document.facts.push_back({wordIn(locale, exportWords(), "print.id"), qString(detail.id)});
    document.facts.push_back(PrintHead::asOf(moment, locale));
    const bool hasBalances =
        std::ranges::any_of(detail.legs, [](const auto& leg) { return leg.balanceAfter.has_value(); });
    PrintedTable legs{.title = word("detail.movements"),
                      .columns = {{.head = word("column.account"), .width = Width::rest},
                                  {.head = word("column.amount"), .side = Side::end}},
                      .rows = {}};
    if (hasBalances)
        legs.columns.push_back({.head = word("detail.balanceAfter"), .side = Side::end});
    for (const auto& leg : detail.legs) {
        PrintedRow row{.cells = {{leg.account}, {leg.amount.text()}}};
        if (hasBalances)
            row.cells.push_back({leg.balanceAfter ? leg.balanceAfter->text() : QStringLiteral("–")});
        legs.rows.push_back(std::move(row));
    }
    document.tables.push_back(std::move(legs));
    const std::vector<PrintedColumn> named{{.head = {}}, {.head = {}, .width = Width::rest}};
    PrintedTable links{.title = word("detail.links"), .columns = named, .rows = {}};
    for (const auto& link : detail.links)
        links.rows.push_back({.cells = {{link.label}, {link.text}}});
    PrintedTable receipts{.title = word("detail.receipts"), .columns = named, .rows = {}};
    for (const auto& receipt : detail.receipts)
        receipts.rows.push_back({.cells = {{receipt.size}, {receipt.name}}});
    for (auto* table : {&links, &receipts}) {
        if (!table->rows.empty())
            document.tables.push_back(std::move(*table));
    }
    return document;
}

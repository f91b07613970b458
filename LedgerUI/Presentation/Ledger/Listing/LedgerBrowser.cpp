#include "LedgerUI/Presentation/Ledger/Listing/LedgerBrowser.h"

#include <algorithm>
#include <utility>

#include <QThreadPool>

#include "LedgerCore/Client/Snapshots/ReleasedByWorker.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerUI/Presentation/Period/PeriodGrid.h"

LedgerBrowser::LedgerBrowser(QObject* parent)
    : QObject{parent}, m_answers{this,
                                 {.entriesAtOnce = 2000,
                                  .question = [this] { return question(); },
                                  .answer = &LedgerBrowser::answer,
                                  .take =
                                      [this](Answer answered, bool isLast) {
                                          m_latest = answered.listing->book;
                                          if (isLast)
                                              adopt(std::move(answered));
                                      }}}
{
}

bool LedgerBrowser::open(SnapshotPointer snapshot, std::string locale, std::chrono::year_month_day today)
{
    if (snapshot == m_snapshot && locale == m_locale && today == m_query.today)
        return false;
    m_snapshot = std::move(snapshot);
    m_locale = std::move(locale);
    m_query.today = today;
    ask();
    return true;
}

void LedgerBrowser::setFilter(LedgerFilter filter)
{
    if (filter == m_query.filter)
        return;
    m_query.filter = std::move(filter);
    m_hasFilter = true;
    ask();
}

void LedgerBrowser::setSort(LedgerSort sort)
{
    if (sort == m_query.sort)
        return;
    m_query.sort = sort;
    ask();
}

void LedgerBrowser::setGrouping(LedgerGrouping grouping)
{
    auto query = m_query;
    query.grouping = grouping;
    if (grouping == LedgerGrouping::byDay && !query.isByDay())
        query.sort = {};
    if (query == m_query)
        return;
    m_query = std::move(query);
    ask();
}

bool LedgerBrowser::reveal(std::string_view id)
{
    const auto shown = book();
    const auto at = shown ? shown->find(id) : LedgerBook::none;
    if (at == LedgerBook::none)
        return false;
    if (!isPreparing() && m_listing->places[at] >= 0)
        return true;
    LedgerFilter wider{.period = m_query.filter.period};
    const auto& date = shown->transaction(at).date;
    if (!wider.period.contains(date)) {
        const auto day = LedgerDay::parse(date);
        wider.period = day ? Period::containing(Period::Span::month, *day) : Period::allTime();
    }
    setFilter(std::move(wider));
    return true;
}

bool LedgerBrowser::reveal(std::span<const std::string> ids)
{
    const auto shown = book();
    std::string first;
    std::string last;
    bool isHidden = isPreparing();
    for (const auto& id : ids) {
        const auto at = shown ? shown->find(id) : LedgerBook::none;
        if (at == LedgerBook::none)
            return false;
        const auto& date = shown->transaction(at).date;
        first = first.empty() ? date : std::min(first, date);
        last = std::max(last, date);
        isHidden = isHidden || m_listing->places[at] < 0;
    }
    if (!isHidden)
        return true;
    const auto firstDay = LedgerDay::parse(first);
    const auto lastDay = LedgerDay::parse(last);
    const auto days = firstDay && lastDay ? Period::between(*firstDay, *lastDay) : std::nullopt;
    setFilter({.period = days.value_or(Period::allTime())});
    return true;
}

LedgerFilter LedgerBrowser::clearedFilter() const
{
    return {.period = openingPeriod(counts(), m_query.today)};
}

bool LedgerBrowser::showsLatestInstead() const
{
    return m_listing && m_listing->book->size() > 0 && m_query.filter == clearedFilter() &&
           m_query.filter.period != Period::containing(Period::Span::month, m_query.today);
}

LedgerBrowser::Answer LedgerBrowser::answer(const Question& question)
{
    const auto* before = question.before.get();
    auto book = question.latest;
    if (!book || book->snapshotPointer() != question.snapshot || book->locale() != question.locale)
        book = releasedByWorker<LedgerBook>(question.snapshot, question.locale, book.get());
    const auto texts = book->texts();
    auto query = question.query;
    if (question.choosesPeriod)
        query.filter.period = openingPeriod(book->counts(), query.today);
    auto listing = releasedByWorker<LedgerListing>(listingOf(std::move(book), std::move(query)));
    auto change = changeBetween(before, *listing);
    QThreadPool::globalInstance()->start([texts] { texts->make(); }); // before somebody searches
    return {std::move(listing), std::move(change)};
}

LedgerBrowser::Question LedgerBrowser::question() const
{
    return {m_snapshot, m_locale, m_query, m_listing, m_latest, !m_listing && !m_hasFilter};
}

void LedgerBrowser::ask()
{
    if (!m_snapshot) {
        m_answers.forget();
        m_listing.reset();
        m_latest.reset();
        m_hasFilter = false;
        m_change = {};
        Q_EMIT changed();
        return;
    }
    const bool wasPreparing = isPreparing();
    m_answers.ask(m_snapshot->transactions.size());
    if (isPreparing() && !wasPreparing)
        Q_EMIT changed();
}

void LedgerBrowser::adopt(Answer answered)
{
    m_query.filter = answered.listing->query.filter;
    m_listing = std::move(answered.listing);
    m_change = std::move(answered.change);
    Q_EMIT changed();
}

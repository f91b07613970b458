#include "LedgerUI/Presentation/Ledger/LedgerBrowser.h"

#include <utility>

#include <QCoro/QCoroFuture>
#include <QtConcurrent/QtConcurrentRun>

#include "LedgerCore/Client/Snapshots/ReleasedByWorker.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerUI/Presentation/Period/PeriodGrid.h"

namespace {

constexpr std::size_t answeredAtOnce = 2000; // entries that are looked through within a frame

}

/// All that an answer depends on, held so that a worker may look at it.
struct LedgerBrowser::Question {
    SnapshotPointer snapshot;
    std::string locale;
    LedgerQuery query;
    LedgerListingPointer before;
    LedgerBookPointer latest;   // the newest book at hand, of these books or of earlier ones
    bool choosesPeriod = false; // nobody has asked for one yet
};

struct LedgerBrowser::Answer {
    SnapshotPointer snapshot; // the books that it is about
    LedgerListingPointer listing;
    RowChange change;
};

LedgerBrowser::LedgerBrowser(QObject* parent) : QObject{parent} {}

void LedgerBrowser::open(SnapshotPointer snapshot, std::string locale, std::chrono::year_month_day today)
{
    m_snapshot = std::move(snapshot);
    m_locale = std::move(locale);
    m_query.today = today;
    ask();
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

bool LedgerBrowser::reveal(std::string_view id)
{
    const auto shown = book();
    const auto at = shown ? shown->find(id) : LedgerBook::none;
    if (at == LedgerBook::none)
        return false;
    if (!m_isWorking && m_listing->places[at] >= 0)
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
    auto query = question.query;
    if (question.choosesPeriod)
        query.filter.period = openingPeriod(book->counts(), query.today);
    auto listing = releasedByWorker<LedgerListing>(listingOf(std::move(book), std::move(query)));
    auto change = changeBetween(before, *listing);
    return {question.snapshot, std::move(listing), std::move(change)};
}

QCoro::Task<LedgerBrowser::Answer> LedgerBrowser::answerOnWorker(Question question)
{
    auto future = QtConcurrent::run([](const Question& asked) { return answer(asked); }, std::move(question));
    auto answer = co_await future;
    co_return answer;
}

LedgerBrowser::Question LedgerBrowser::question() const
{
    return {m_snapshot, m_locale, m_query, m_listing, m_latest, !m_listing && !m_hasFilter};
}

void LedgerBrowser::ask()
{
    if (!m_snapshot) {
        m_listing.reset();
        m_latest.reset();
        m_hasFilter = false;
        m_change = {};
        Q_EMIT changed();
        return;
    }
    if (m_isWorking) {
        m_hasChanged = true;
        return;
    }
    if (m_snapshot->transactions.size() <= answeredAtOnce) {
        adopt(answer(question()));
        return;
    }
    m_isWorking = true;
    m_hasChanged = false;
    Q_EMIT changed();
    QCoro::connect(answerOnWorker(question()), this, [this](Answer answered) {
        m_isWorking = false;
        m_latest = answered.listing->book;
        // An answer about other books, or to a question that has changed, is never shown.
        if (m_hasChanged)
            ask();
        else
            adopt(std::move(answered));
    });
}

void LedgerBrowser::adopt(Answer answered)
{
    m_query.filter = answered.listing->query.filter;
    m_latest = answered.listing->book;
    m_listing = std::move(answered.listing);
    m_change = std::move(answered.change);
    Q_EMIT changed();
}

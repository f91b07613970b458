#include "LedgerUI/Presentation/Ledger/LedgerBrowser.h"

#include <algorithm>
#include <utility>

#include <QCoro/QCoroFuture>
#include <QtConcurrent/QtConcurrentRun>

#include "LedgerCore/Client/ReleasedByWorker.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerUI/Presentation/Period/PeriodGrid.h"

namespace {

constexpr std::size_t preparedAtOnce = 2000; // entries that are ready within a frame

LedgerBookPointer makeLargeBook(SnapshotPointer snapshot, std::string locale)
{
    return releasedByWorker<LedgerBook>(std::move(snapshot), std::move(locale));
}

}

QCoro::Task<LedgerBookPointer> prepareLedgerBook(SnapshotPointer snapshot, std::string locale)
{
    auto future = QtConcurrent::run(makeLargeBook, std::move(snapshot), std::move(locale));
    auto book = co_await future;
    co_return book;
}

LedgerBrowser::LedgerBrowser(QObject* parent) : QObject{parent} {}

void LedgerBrowser::open(SnapshotPointer snapshot, std::string locale, std::chrono::year_month_day today)
{
    m_today = today;
    const auto asked = ++m_asked;
    if (!snapshot) {
        m_isPreparing = false;
        m_book.reset();
        compute();
        return;
    }
    if (snapshot->transactions.size() <= preparedAtOnce) {
        adopt(std::make_shared<const LedgerBook>(std::move(snapshot), std::move(locale)));
        return;
    }
    m_isPreparing = true;
    Q_EMIT changed();
    QCoro::connect(prepareLedgerBook(std::move(snapshot), std::move(locale)), this,
                   [this, asked](LedgerBookPointer book) {
                       if (asked == m_asked)
                           adopt(std::move(book));
                   });
}

void LedgerBrowser::adopt(LedgerBookPointer book)
{
    const bool isFirst = m_book == nullptr;
    m_isPreparing = false;
    m_book = std::move(book);
    m_counts = m_book->counts();
    if (isFirst) {
        m_filter.period = openingPeriod(m_counts, m_today);
        if (m_filter.period != Period::containing(Period::Span::month, m_today))
            m_latestInstead = m_filter.period;
    }
    compute();
}

void LedgerBrowser::setFilter(LedgerFilter filter)
{
    if (filter == m_filter)
        return;
    m_filter = std::move(filter);
    compute();
}

void LedgerBrowser::setSort(LedgerSort sort)
{
    if (sort == m_sort)
        return;
    m_sort = sort;
    compute();
}

bool LedgerBrowser::reveal(std::string_view id)
{
    const auto at = m_book ? m_book->find(id) : LedgerBook::none;
    if (at == LedgerBook::none)
        return false;
    if (std::ranges::find(m_rows, at) != m_rows.end())
        return true;
    LedgerFilter wider{.period = m_filter.period};
    const auto& date = m_book->transaction(at).date;
    if (!wider.period.contains(date)) {
        const auto day = LedgerDay::parse(date);
        wider.period = day ? Period::containing(Period::Span::month, *day) : Period::allTime();
    }
    setFilter(std::move(wider));
    return true;
}

bool LedgerBrowser::showsLatestInstead() const
{
    return m_latestInstead && *m_latestInstead == m_filter.period;
}

void LedgerBrowser::compute()
{
    m_rows.clear();
    m_totals.clear();
    if (m_book) {
        m_rows = sorted(*m_book, matching(*m_book, m_filter), m_sort);
        m_totals = ::totals(*m_book, m_rows);
    }
    Q_EMIT changed();
}

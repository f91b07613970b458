#include "LedgerUI/Presentation/Accounts/AccountBrowser.h"

#include <utility>

#include <QCoro/QCoroFuture>
#include <QtConcurrent/QtConcurrentRun>

#include "LedgerCore/Client/Snapshots/ReleasedByWorker.h"

namespace {

constexpr std::size_t madeAtOnce = 2000; // entries that are gone through within a frame

}

AccountBrowser::AccountBrowser(QObject* parent) : QObject{parent} {}

void AccountBrowser::open(SnapshotPointer snapshot, std::string locale, std::chrono::year_month_day today)
{
    m_snapshot = std::move(snapshot);
    m_locale = std::move(locale);
    m_today = today;
    ask();
}

void AccountBrowser::setQuery(AccountQuery query)
{
    if (query == m_query)
        return;
    m_query = std::move(query);
    if (m_listing)
        list(m_listing->book);
}

QCoro::Task<AccountBookPointer> AccountBrowser::bookOnWorker(SnapshotPointer snapshot,
                                                             std::chrono::year_month_day today)
{
    auto future =
        QtConcurrent::run([today](const SnapshotPointer& asked) { return releasedByWorker<AccountBook>(asked, today); },
                          std::move(snapshot));
    auto book = co_await future;
    co_return book;
}

void AccountBrowser::ask()
{
    if (!m_snapshot) {
        m_listing.reset();
        Q_EMIT changed();
        return;
    }
    if (m_listing && m_listing->book->snapshotPointer() == m_snapshot && m_listing->book->today() == m_today) {
        list(m_listing->book);
        return;
    }
    if (m_isWorking)
        return; // asked again once that is done
    if (m_snapshot->transactions.size() <= madeAtOnce) {
        list(releasedByWorker<AccountBook>(m_snapshot, m_today));
        return;
    }
    m_isWorking = true;
    Q_EMIT changed();
    QCoro::connect(bookOnWorker(m_snapshot, m_today), this, [this](AccountBookPointer book) {
        m_isWorking = false;
        const bool isLatest = m_snapshot && book->snapshotPointer() == m_snapshot && book->today() == m_today;
        if (isLatest)
            list(std::move(book));
        else
            ask();
    });
}

void AccountBrowser::list(AccountBookPointer book)
{
    m_listing = std::make_shared<const AccountListing>(accountListing(std::move(book), m_query, m_locale));
    Q_EMIT changed();
}

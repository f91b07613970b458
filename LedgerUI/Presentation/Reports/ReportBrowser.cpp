#include "LedgerUI/Presentation/Reports/ReportBrowser.h"

#include <utility>

#include <QCoro/QCoroFuture>
#include <QtConcurrent/QtConcurrentRun>

#include "LedgerCore/Client/Snapshots/ReleasedByWorker.h"
#include "LedgerUI/Presentation/Period/PeriodGrid.h"

namespace {

constexpr std::size_t answeredAtOnce = 1000; // entries whose figures take less than a frame

}

/// All that an answer depends on, held so that a worker may look at it.
struct ReportBrowser::Question {
    SnapshotPointer snapshot;
    std::string locale;
    ReportQuery query;
    ReportBooksPointer books; // of this or an earlier snapshot
    bool isPeriodOpen = false;
};

void ReportBrowser::open(SnapshotPointer snapshot, std::string locale, std::chrono::year_month_day today)
{
    m_snapshot = std::move(snapshot);
    m_locale = std::move(locale);
    m_query.today = today;
    ask();
}

void ReportBrowser::ask(ReportQuery query)
{
    if (query == m_query)
        return;
    m_isPeriodOpen = m_isPeriodOpen && query.period == m_query.period;
    m_query = std::move(query);
    ask();
}

ReportSheetPointer ReportBrowser::answer(const Question& question)
{
    auto books = question.books;
    if (!books || books->snapshot != question.snapshot)
        books = releasedByWorker<ReportBooks>(question.snapshot);
    auto query = question.query;
    if (question.isPeriodOpen)
        query.period = openingPeriod(books->counts, query.today);
    return releasedByWorker<ReportSheet>(reportSheet(std::move(books), std::move(query), question.locale));
}

QCoro::Task<ReportSheetPointer> ReportBrowser::answerOnWorker(Question question)
{
    auto future = QtConcurrent::run([](const Question& asked) { return answer(asked); }, std::move(question));
    auto sheet = co_await future;
    co_return sheet;
}

ReportBrowser::Question ReportBrowser::question() const
{
    return {m_snapshot, m_locale, m_query, m_sheet ? m_sheet->books : nullptr, m_isPeriodOpen};
}

void ReportBrowser::ask()
{
    if (!m_snapshot) {
        m_sheet.reset();
        m_isPeriodOpen = true;
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
    QCoro::connect(answerOnWorker(question()), this, [this](ReportSheetPointer sheet) {
        m_isWorking = false;
        // An answer about other books, or to a question that has changed, is never shown.
        if (m_hasChanged)
            ask();
        else
            adopt(std::move(sheet));
    });
}

void ReportBrowser::adopt(ReportSheetPointer sheet)
{
    m_sheet = std::move(sheet);
    m_query = m_sheet->query;
    m_isPeriodOpen = false;
    Q_EMIT changed();
}

#include "LedgerUI/Presentation/Reports/Sheets/ReportBrowser.h"

#include <utility>

#include "LedgerCore/Client/Snapshots/ReleasedByWorker.h"
#include "LedgerUI/Presentation/Period/PeriodGrid.h"

ReportBrowser::ReportBrowser(ReportPart report, QObject* parent)
    : QObject{parent}, m_query{.report = report}, m_answers{this,
                                                            {.entriesAtOnce = 1000,
                                                             .question = [this] { return question(); },
                                                             .answer = &ReportBrowser::answer,
                                                             .take =
                                                                 [this](ReportSheetPointer sheet, bool isLast) {
                                                                     if (isLast)
                                                                         adopt(std::move(sheet));
                                                                 }}}
{
}

bool ReportBrowser::open(SnapshotPointer snapshot, std::string locale, std::chrono::year_month_day today)
{
    if (snapshot == m_snapshot && locale == m_locale && today == m_query.today)
        return false;
    m_snapshot = std::move(snapshot);
    m_locale = std::move(locale);
    m_query.today = today;
    ask();
    return true;
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

ReportBrowser::Question ReportBrowser::question() const
{
    return {m_snapshot, m_locale, m_query, m_sheet ? m_sheet->books : nullptr, m_isPeriodOpen};
}

void ReportBrowser::ask()
{
    if (m_snapshot) {
        m_answers.ask(m_snapshot->transactions.size());
        return;
    }
    m_answers.forget();
    m_sheet.reset();
    m_isPeriodOpen = true;
    Q_EMIT changed();
}

void ReportBrowser::adopt(ReportSheetPointer sheet)
{
    m_sheet = std::move(sheet);
    m_query = m_sheet->query;
    m_isPeriodOpen = false;
    Q_EMIT changed();
}

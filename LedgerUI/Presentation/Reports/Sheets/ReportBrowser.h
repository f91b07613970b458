#pragma once

#include <string>

#include <QObject>

#include "LedgerCore/Client/Snapshots/LatestAnswer.h"
#include "LedgerUI/Presentation/Reports/Sheets/ReportSheet.h"

/// Where a person stands in the reports. Lives as long as the page, through refreshes and changes of language. Large
/// books are looked at on a worker; what is shown stays until the answer to the last question is there.
class ReportBrowser final : public QObject {
    Q_OBJECT
public:
    /// Begins with this report.
    explicit ReportBrowser(ReportPart report, QObject* parent = nullptr);

    /// Goes on with another snapshot, language or day. The first one decides the period to begin with. Null forgets
    /// all. False when nothing is new, so that what was asked for already is neither asked nor told again.
    bool open(SnapshotPointer snapshot, std::string locale, std::chrono::year_month_day today);
    void ask(ReportQuery query);

    /// What is asked for; what is shown may still answer the question before.
    [[nodiscard]] const ReportQuery& query() const { return m_query; }
    [[nodiscard]] const ReportSheetPointer& sheet() const { return m_sheet; } // null until there is one

Q_SIGNALS:
    void changed();

private:
    /// All that an answer depends on, held so that a worker may look at it.
    struct Question {
        SnapshotPointer snapshot;
        std::string locale;
        ReportQuery query;
        ReportBooksPointer books; // of this or an earlier snapshot
        bool isPeriodOpen = false;
    };
    static ReportSheetPointer answer(const Question& question);
    [[nodiscard]] Question question() const;
    void ask();
    void adopt(ReportSheetPointer sheet);

    SnapshotPointer m_snapshot;
    std::string m_locale;
    ReportQuery m_query;
    ReportSheetPointer m_sheet;
    bool m_isPeriodOpen = true; // the first books decide which one is shown
    LatestAnswer<Question, ReportSheetPointer> m_answers;
};

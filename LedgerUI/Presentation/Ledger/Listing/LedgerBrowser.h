#pragma once

#include <chrono>
#include <span>
#include <string>
#include <vector>

#include <QObject>

#include "LedgerCore/Client/Snapshots/LatestAnswer.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerListing.h"

/// Where a person stands in the ledger: the books, what narrows them, their order, and the entries that result. Lives
/// as long as the page, through refreshes and changes of language. A large ledger is looked through on a worker; what
/// is shown stays until the answer to the last question is there.
class LedgerBrowser final : public QObject {
    Q_OBJECT
public:
    explicit LedgerBrowser(QObject* parent = nullptr);

    /// Goes on with another snapshot, language or day. The first book decides the period to begin with. Null forgets
    /// all. False when nothing is new, so that what was asked for already is neither asked nor told again.
    bool open(SnapshotPointer snapshot, std::string locale, std::chrono::year_month_day today);
    void setFilter(LedgerFilter filter);
    void setSort(LedgerSort sort);
    /// By day brings the entries into the order of their days, where they stand in another one.
    void setGrouping(LedgerGrouping grouping);
    /// Makes sure that the entry is among those shown, whatever narrows them now. False when the book has no such
    /// entry.
    bool reveal(std::string_view id);
    /// The same for several, in the days from the first to the last of them where one is hidden now.
    bool reveal(std::span<const std::string> ids);
    /// Without search and filters, in the period that the page opens with.
    [[nodiscard]] LedgerFilter clearedFilter() const;

    [[nodiscard]] const LedgerListingPointer& listing() const { return m_listing; } // null until there is one
    /// How the listing came from the one before.
    [[nodiscard]] const RowChange& change() const { return m_change; }
    [[nodiscard]] LedgerBookPointer book() const { return m_listing ? m_listing->book : nullptr; }
    /// What is asked for; what is shown may still answer the question before.
    [[nodiscard]] const LedgerFilter& filter() const { return m_query.filter; }
    [[nodiscard]] LedgerSort sort() const { return m_query.sort; }
    /// Whether each day is to have a head.
    [[nodiscard]] bool isByDay() const { return m_query.isByDay(); }
    [[nodiscard]] std::chrono::year_month_day today() const { return m_query.today; }
    [[nodiscard]] PeriodCounts counts() const { return m_listing ? m_listing->book->counts() : PeriodCounts{}; }
    /// Whether an answer is still being worked out.
    [[nodiscard]] bool isPreparing() const { return m_answers.isWorking(); }
    /// Whether the page opened on another month because this one has no entries, and still shows it.
    [[nodiscard]] bool showsLatestInstead() const;

Q_SIGNALS:
    void changed();

private:
    /// All that an answer depends on, held so that a worker may look at it.
    struct Question {
        SnapshotPointer snapshot;
        std::string locale;
        LedgerQuery query;
        LedgerListingPointer before;
        LedgerBookPointer latest;   // the newest book at hand, of these books or of earlier ones
        bool choosesPeriod = false; // nobody has asked for one yet
    };
    struct Answer {
        LedgerListingPointer listing;
        RowChange change;
    };
    static Answer answer(const Question& question);
    [[nodiscard]] Question question() const;
    void ask();
    void adopt(Answer answer);

    SnapshotPointer m_snapshot;
    std::string m_locale;
    LedgerQuery m_query;
    LedgerListingPointer m_listing;
    LedgerBookPointer m_latest;
    RowChange m_change;
    bool m_hasFilter = false; // asked for, rather than the one that the page opens with
    LatestAnswer<Question, Answer> m_answers;
};

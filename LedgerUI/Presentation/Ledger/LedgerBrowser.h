#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include <QCoro/QCoroTask>
#include <QObject>

#include "LedgerUI/Presentation/Ledger/LedgerAmounts.h"
#include "LedgerUI/Presentation/Ledger/LedgerFilter.h"
#include "LedgerUI/Presentation/Ledger/LedgerSort.h"

/// Makes a book; a large one on a worker, so that the screen never waits for it.
QCoro::Task<LedgerBookPointer> prepareLedgerBook(SnapshotPointer snapshot, std::string locale);

/// Where a person stands in the ledger: the book, what narrows it, its order, and the entries that result. Lives as
/// long as the page, through refreshes and changes of language.
class LedgerBrowser final : public QObject {
    Q_OBJECT
public:
    explicit LedgerBrowser(QObject* parent = nullptr);

    /// Goes on with another snapshot or language. The first book decides the period to begin with. Null forgets all.
    void open(SnapshotPointer snapshot, std::string locale, std::chrono::year_month_day today);
    void setFilter(LedgerFilter filter);
    void setSort(LedgerSort sort);
    /// Makes sure that the entry is among those shown, whatever narrows them now. False when the book has no such
    /// entry.
    bool reveal(std::string_view id);

    [[nodiscard]] const LedgerBookPointer& book() const { return m_book; } // null until the first one is ready
    [[nodiscard]] const LedgerFilter& filter() const { return m_filter; }
    [[nodiscard]] LedgerSort sort() const { return m_sort; }
    [[nodiscard]] const std::vector<std::uint32_t>& rows() const { return m_rows; }
    [[nodiscard]] const std::vector<LedgerTotal>& totals() const { return m_totals; }
    [[nodiscard]] const PeriodCounts& counts() const { return m_counts; }
    [[nodiscard]] std::chrono::year_month_day today() const { return m_today; }
    [[nodiscard]] bool isPreparing() const { return m_isPreparing; }
    /// Whether the page opened on another month because this one has no entries, and still shows it.
    [[nodiscard]] bool showsLatestInstead() const;

Q_SIGNALS:
    void changed();

private:
    void adopt(LedgerBookPointer book);
    void compute();

    LedgerBookPointer m_book;
    LedgerFilter m_filter;
    LedgerSort m_sort;
    std::vector<std::uint32_t> m_rows;
    std::vector<LedgerTotal> m_totals;
    PeriodCounts m_counts;
    std::chrono::year_month_day m_today{};
    std::optional<Period> m_latestInstead;
    unsigned m_asked = 0; // books asked for; only the last one is adopted
    bool m_isPreparing = false;
};

#pragma once

#include <chrono>
#include <expected>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>

#include "LedgerCore/Domain/Entries/VisibleBooks.h"
#include "LedgerCore/Domain/Reports/ReportBook.h"
#include "LedgerUI/Presentation/Period/PeriodCounts.h"
#include "LedgerUI/Presentation/Reports/ReportSort.h"

/// One snapshot laid out for reports. Immutable, so that workers and screens may share it.
class ReportBooks {
public:
    explicit ReportBooks(SnapshotPointer held);

    /// For questions whose answers are gathered in passes over all entries and stay for the next one. Whoever holds it
    /// is the only one who asks.
    struct Lookup {
        std::unique_lock<std::mutex> turn;
        const VisibleBooks& books;
    };
    [[nodiscard]] Lookup lookUp() const { return {std::unique_lock{m_turn}, m_visible}; }

    SnapshotPointer snapshot;
    std::expected<ReportBook, ReportError> book; // points into the snapshot
    PeriodCounts counts;
    std::chrono::year_month_day firstDay; // of the earliest entry; the first of 1970 where there is none

private:
    mutable std::mutex m_turn;
    VisibleBooks m_visible;
};

using ReportBooksPointer = std::shared_ptr<const ReportBooks>;

/// The reports: each on a tab of its own, and the summary of a member who does not see the company's.
enum class ReportPart { overview, income, matrix, movements, summary };

/// What a person asks of the reports page.
struct ReportQuery {
    ReportPart report = ReportPart::overview; // the one in sight
    Period period = Period::allTime();
    std::string currency = {};                                         // that charts and lists are about
    std::optional<std::set<std::string, std::less<>>> accountIDs = {}; // unset: all that the member sees
    std::chrono::year_month_day today{};
    std::optional<Period::Span> grain = {}; // of the trend; unset for the one that suits the period
    std::optional<Period> part = {};        // of the trend, that the categories are of
    Movement side = Movement::expense;      // of the categories
    bool hidesStillColumns = true;          // of the account matrix: those in which nothing moved
    ReportSorts sorts = {};                 // of its tables

    bool operator==(const ReportQuery&) const = default;
};

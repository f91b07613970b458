#pragma once

#include <chrono>
#include <expected>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "LedgerCore/Domain/Reports/ReportBook.h"
#include "LedgerUI/Presentation/Period/PeriodCounts.h"
#include "LedgerUI/Presentation/Reports/ReportAttention.h"
#include "LedgerUI/Presentation/Reports/ReportGrid.h"
#include "LedgerUI/Presentation/Reports/ReportOverview.h"

/// One snapshot laid out for reports. Immutable, so that workers and screens may share it.
struct ReportBooks {
    explicit ReportBooks(SnapshotPointer held);

    SnapshotPointer snapshot;
    std::expected<ReportBook, ReportError> book; // points into the snapshot
    PeriodCounts counts;
    std::chrono::year_month_day firstDay; // of the earliest entry; today's epoch where there is none
};

using ReportBooksPointer = std::shared_ptr<const ReportBooks>;

/// What a person asks of the reports page.
struct ReportQuery {
    Period period = Period::allTime();
    std::string currency = {};                                          // that chart and lists are about
    std::optional<std::set<std::string, std::less<>>> accountIDs = {}; // unset: all that the member sees
    std::chrono::year_month_day today{};

    bool operator==(const ReportQuery&) const = default;
};

/// The answer, one for all tabs, so that they cannot disagree. Immutable: made on a worker and shown at once.
struct ReportSheet {
    ReportBooksPointer books;
    ReportQuery query; // with a currency that the books know
    std::string locale;
    std::optional<ReportError> failure; // then there is nothing else
    ReportOverview overview;
    ReportGrid currencies;
    ReportGrid largestExpenses;
    std::vector<AttentionItem> attention;
};

using ReportSheetPointer = std::shared_ptr<const ReportSheet>;

/// Everything that the page shows, in one look at the books.
ReportSheet reportSheet(ReportBooksPointer books, ReportQuery query, std::string locale);

#include "LedgerUI/Presentation/Reports/ReportSheet.h"

#include <algorithm>
#include <utility>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerUI/Presentation/Reports/ReportOverviewGrids.h"

namespace {

struct Days {
    std::vector<std::uint32_t> numbers;
    std::string_view earliest;
};

Days daysOf(const LedgerSnapshot& snapshot)
{
    Days days;
    days.numbers.reserve(snapshot.transactions.size());
    std::string_view lastText;
    std::uint32_t last = 0;
    for (const auto& entry : snapshot.transactions) {
        if (entry.date != lastText) { // neighbours mostly share their day
            const auto day = LedgerDay::parse(entry.date);
            lastText = entry.date;
            last = day ? dayNumber(*day) : 0;
            if (day && (days.earliest.empty() || lastText < days.earliest))
                days.earliest = lastText;
        }
        days.numbers.push_back(last);
    }
    return days;
}

}

ReportBooks::ReportBooks(SnapshotPointer held) : snapshot(std::move(held)), book(ReportBook::create(*snapshot))
{
    auto days = daysOf(*snapshot);
    firstDay = LedgerDay::parse(days.earliest).value_or(std::chrono::sys_days{});
    counts = PeriodCounts{std::move(days.numbers)};
}

ReportSheet reportSheet(ReportBooksPointer books, ReportQuery query, std::string locale)
{
    ReportSheet sheet{.books = std::move(books), .query = std::move(query), .locale = std::move(locale)};
    const auto& book = sheet.books->book;
    if (!book) {
        sheet.failure = book.error();
        return sheet;
    }
    const auto& snapshot = *sheet.books->snapshot;
    auto overview = ReportOverviews::overview(*book, snapshot,
                                              {.period = sheet.query.period,
                                               .currency = sheet.query.currency,
                                               .accountIDs = sheet.query.accountIDs,
                                               .today = sheet.query.today},
                                              sheet.locale);
    if (!overview) {
        sheet.failure = overview.error();
        return sheet;
    }
    sheet.overview = std::move(*overview);
    sheet.query.currency = sheet.overview.currency;
    const ReportOverviewGrids::Frame frame{
        .period = sheet.query.period, .accountIDs = sheet.query.accountIDs, .firstDay = sheet.books->firstDay};
    sheet.currencies = ReportOverviewGrids::currencies(sheet.overview, frame, sheet.locale);
    sheet.largestExpenses = ReportOverviewGrids::largestExpenses(sheet.overview, frame, sheet.locale);
    auto trend = ReportTrends::trend(*sheet.books, sheet.query, sheet.locale);
    auto matrix = ReportMatrixGrids::of(*sheet.books, sheet.query, sheet.locale);
    auto own = ReportOwnGrids::of(*sheet.books, sheet.query, sheet.locale);
    if (!trend || !matrix || !own) {
        sheet.failure = !trend ? trend.error() : !matrix ? matrix.error() : own.error();
        return sheet;
    }
    sheet.own = std::move(*own);
    sheet.trend = std::move(*trend);
    sheet.matrix = std::move(*matrix);
    sheet.funds = FundMovementGrids::of(*sheet.books, sheet.query, sheet.locale);
    sheet.attention = ReportAttention::items(snapshot, sheet.query.period, sheet.locale);
    return sheet;
}

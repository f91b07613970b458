#include "LedgerUI/Presentation/Reports/Sheets/ReportSheet.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportOverviewGrids.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportSorting.h"

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

/// Takes accounts out that the member does not see any more, rather than show nothing; says how many.
std::size_t takeOutUnseen(ReportQuery& query, const LedgerSnapshot& snapshot)
{
    if (!query.accountIDs)
        return 0;
    const auto lost = std::erase_if(*query.accountIDs, [&](const auto& id) { return !snapshot.account(id); });
    if (query.accountIDs->empty())
        query.accountIDs.reset();
    return lost;
}

/// The parts of the report in sight; says what keeps it from being made.
std::optional<ReportError> fill(ReportSheet& sheet)
{
    const auto& books = sheet.books;
    const auto& query = sheet.query;
    const auto& locale = sheet.locale;
    const ReportOverviewGrids::Frame frame{
        .period = query.period, .accountIDs = query.accountIDs, .firstDay = books->firstDay};
    const auto take = [](auto made, auto& part) -> std::optional<ReportError> {
        if (!made)
            return made.error();
        part = *std::move(made);
        return std::nullopt;
    };
    const auto lookAround = [&] {
        sheet.largestExpenses = ReportOverviewGrids::largestExpenses(sheet.overview, frame, locale);
        sheet.attention = ReportAttention::items(books->lookUp().books, query.period, query.today, locale);
    };
    switch (query.report) {
    case ReportPart::overview:
        sheet.currencies = ReportOverviewGrids::currencies(sheet.overview, frame, locale);
        sheet.months = ReportOverviewGrids::months(sheet.overview, frame, locale);
        sheet.largestIncome = ReportOverviewGrids::largestIncome(sheet.overview, frame, locale);
        lookAround();
        break;
    case ReportPart::income:
        return take(ReportTrends::trend(*books, query, locale), sheet.trend);
    case ReportPart::matrix:
        return take(ReportMatrixGrids::of(*books, query, locale), sheet.matrix);
    case ReportPart::movements:
        sheet.funds = FundMovementGrids::of(*books, query, locale);
        break;
    case ReportPart::summary:
        lookAround();
        std::ranges::move(ReportAttention::reversedByOthers(*books->snapshot, query.period, locale),
                          std::back_inserter(sheet.attention));
        return take(ReportOwnGrids::of(*books, query, locale), sheet.own);
    }
    return std::nullopt;
}

/// The list of the movements of funds is in its order before it is cut.
void putInOrder(ReportSheet& sheet)
{
    for (auto* grid :
         {&sheet.currencies, &sheet.months, &sheet.trend.table, &sheet.trend.categories, &sheet.matrix.movements,
          &sheet.matrix.monthEnds, &sheet.funds.sums, &sheet.own.accounts, &sheet.own.latest})
        ReportSorting::apply(*grid, sheet.query.sorts, sheet.locale);
}

}

ReportBooks::ReportBooks(SnapshotPointer held)
    : snapshot(std::move(held)), book(ReportBook::create(*snapshot)), m_visible(*snapshot)
{
    auto days = daysOf(*snapshot);
    firstDay = LedgerDay::parse(days.earliest).value_or(std::chrono::sys_days{});
    counts = PeriodCounts{std::move(days.numbers)};
}

ReportSheet reportSheet(ReportBooksPointer books, ReportQuery query, std::string locale)
{
    ReportSheet sheet{.books = std::move(books), .query = std::move(query), .locale = std::move(locale)};
    sheet.lostAccounts = takeOutUnseen(sheet.query, *sheet.books->snapshot);
    const auto& book = sheet.books->book;
    if (!book) {
        sheet.failure = book.error();
        return sheet;
    }
    auto overview = ReportOverviews::overview(*book, *sheet.books->snapshot,
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
    sheet.failure = fill(sheet);
    putInOrder(sheet);
    return sheet;
}

#include "LedgerUI/Presentation/Ledger/Listing/LedgerListing.h"

#include <algorithm>
#include <utility>

namespace {

/// Puts the rows into lines, each day below its head where they are grouped.
void layOutLines(LedgerListing& listing)
{
    const auto& book = *listing.book;
    const bool isByDay = listing.query.isByDay();
    listing.places.assign(book.size(), -1);
    listing.lines.reserve(listing.rows.size());
    for (std::size_t row = 0; row < listing.rows.size(); ++row) {
        const auto at = listing.rows[row];
        const auto day = book.entry(at).day;
        if (isByDay && (listing.days.empty() || listing.days.back().day != day)) {
            listing.days.push_back({.day = day, .line = static_cast<int>(listing.lines.size()), .first = row});
            listing.lines.push_back(LedgerLine::headOf(day));
        }
        if (isByDay)
            ++listing.days.back().count;
        listing.places[at] = static_cast<int>(listing.lines.size());
        listing.lines.push_back(LedgerLine::ofEntry(at));
    }
}

std::vector<std::uint32_t> widestOf(const LedgerBook& book, const std::vector<std::uint32_t>& rows)
{
    struct Widest {
        std::uint32_t entry = LedgerBook::none;
        std::uint64_t magnitude = 0;
    };
    std::vector<Widest> byCurrency(book.currencies().size());
    for (const auto at : rows) {
        for (const auto& leg : book.legs(at)) {
            const auto bits = static_cast<std::uint64_t>(leg.amountMinor);
            const auto magnitude = leg.amountMinor < 0 ? std::uint64_t{0} - bits : bits;
            auto& widest = byCurrency[leg.currency];
            if (widest.entry == LedgerBook::none || magnitude > widest.magnitude)
                widest = {at, magnitude};
        }
    }
    std::vector<std::uint32_t> result;
    for (const auto& each : byCurrency) {
        if (each.entry != LedgerBook::none)
            result.push_back(each.entry);
    }
    return result;
}

/// Where each entry of before stands in the book of now. Where that is not known, entries have come and gone at few
/// places, so most stand as far from their old place as the one before.
class CarriedOver {
public:
    CarriedOver(const LedgerBook& before, const LedgerBook& now)
        : m_before(before), m_now(now), m_isKnown(now.keepsPlacesOf(before))
    {
    }

    std::uint32_t operator()(std::uint32_t at)
    {
        if (m_isKnown)
            return at;
        const auto& id = m_before.transaction(at).id;
        const std::uint32_t guess = at + m_shift;
        if (guess < m_now.size() && m_now.transaction(guess).id == id)
            return guess;
        const auto found = m_now.find(id);
        if (found != LedgerBook::none)
            m_shift = found - at;
        return found;
    }

private:
    const LedgerBook& m_before;
    const LedgerBook& m_now;
    bool m_isKnown;
    std::uint32_t m_shift = 0; // forward, or backward past zero
};

}

int LedgerListing::lineOf(std::string_view id) const
{
    const auto at = book->find(id);
    return at == LedgerBook::none ? -1 : places[at];
}

const LedgerDayHead* LedgerListing::head(std::uint32_t day) const
{
    const bool isAscending = query.sort.direction == LedgerSort::Direction::ascending;
    const auto comesFirst = [&](std::uint32_t left, std::uint32_t right) {
        return isAscending ? left < right : left > right;
    };
    const auto found = std::ranges::lower_bound(days, day, comesFirst, &LedgerDayHead::day);
    return found == days.end() || found->day != day ? nullptr : &*found;
}

std::optional<std::size_t> placeOfDay(const LedgerListing& listing, std::chrono::year_month_day day)
{
    const auto wanted = dayNumber(day);
    std::optional<std::size_t> before;
    std::optional<std::size_t> after;
    const auto dayAt = [&](std::size_t row) { return listing.book->entry(listing.rows[row]).day; };
    for (std::size_t row = 0; row < listing.rows.size(); ++row) {
        if (dayAt(row) <= wanted && (!before || dayAt(row) > dayAt(*before)))
            before = row;
        if (dayAt(row) > wanted && (!after || dayAt(row) < dayAt(*after)))
            after = row;
    }
    return before ? before : after;
}

std::vector<LedgerTotal> totalsOf(const LedgerListing& listing, std::span<const std::uint32_t> rows)
{
    const auto& figure = listing.query.filter.figure;
    return figure ? std::vector{figureTotal(figure->scope.currency, listing.figureLegs, rows)}
                  : totals(*listing.book, rows);
}

LedgerListing listingOf(LedgerBookPointer book, LedgerQuery query)
{
    LedgerListing listing;
    listing.book = std::move(book);
    listing.query = std::move(query);
    const auto& shown = *listing.book;
    const auto& [filter, sort, today, grouping] = listing.query;
    listing.rows = sorted(shown, matching(shown, filter), sort);
    layOutLines(listing);
    listing.figureLegs = figureLegs(shown, filter);
    std::ranges::sort(listing.figureLegs, {}, &ReportFigureLeg::entry);
    listing.totals = totalsOf(listing, listing.rows);
    listing.balances = balancesOn(shown, balanceDay(shown, filter.period, today));
    listing.statement = statementOf(shown, filter, listing.places, listing.lines.size());
    listing.widest = widestOf(shown, listing.rows);
    const auto year = static_cast<std::uint32_t>(static_cast<int>(today.year()));
    listing.isOfThisYear =
        std::ranges::all_of(listing.rows, [&](std::uint32_t at) { return shown.entry(at).day / 10000 == year; });
    if (listing.rows.empty())
        listing.notice = noticeFor(shown, filter, shown.counts(), today);
    return listing;
}

RowChange changeBetween(const LedgerListing* before, const LedgerListing& now)
{
    std::vector<int> moved;
    if (before) {
        CarriedOver carriedOver{*before->book, *now.book};
        moved.reserve(before->lines.size());
        for (const auto line : before->lines) {
            if (line.isHead()) {
                const auto* head = now.head(line.day());
                moved.push_back(head ? head->line : -1);
                continue;
            }
            const auto carried = carriedOver(line.entry());
            moved.push_back(carried == LedgerBook::none ? -1 : now.places[carried]);
        }
    }
    return rowChange(std::move(moved), static_cast<int>(now.lines.size()));
}

#include "LedgerUI/Presentation/Ledger/LedgerListing.h"

#include <algorithm>
#include <utility>

namespace {

std::vector<int> placesOf(const LedgerBook& book, const std::vector<std::uint32_t>& rows)
{
    std::vector<int> places(book.size(), -1);
    int row = 0;
    for (const auto at : rows)
        places[at] = row++;
    return places;
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

/// Where each row of before stands in the book of now. Where that is not known, entries have come and gone at few
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

int LedgerListing::rowOf(std::string_view id) const
{
    const auto at = book->find(id);
    return at == LedgerBook::none ? -1 : places[at];
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

LedgerListing listingOf(LedgerBookPointer book, LedgerQuery query)
{
    LedgerListing listing;
    listing.rows = sorted(*book, matching(*book, query.filter), query.sort);
    listing.places = placesOf(*book, listing.rows);
    const auto& figure = query.filter.figure;
    listing.totals =
        figure ? std::vector{figureTotal(figure->scope.currency, figureLegs(*book, query.filter), listing.rows)}
               : totals(*book, listing.rows);
    listing.balances = balancesOn(*book, balanceDay(*book, query.filter.period, query.today));
    listing.statement = statementOf(*book, query.filter, listing.places, listing.rows.size());
    listing.widest = widestOf(*book, listing.rows);
    const auto year = static_cast<std::uint32_t>(static_cast<int>(query.today.year()));
    listing.isOfThisYear =
        std::ranges::all_of(listing.rows, [&](std::uint32_t at) { return book->entry(at).day / 10000 == year; });
    if (listing.rows.empty())
        listing.notice = noticeFor(*book, query.filter, book->counts(), query.today);
    listing.book = std::move(book);
    listing.query = std::move(query);
    return listing;
}

RowChange changeBetween(const LedgerListing* before, const LedgerListing& now)
{
    std::vector<int> moved;
    if (before) {
        CarriedOver carriedOver{*before->book, *now.book};
        moved.reserve(before->rows.size());
        for (const auto at : before->rows) {
            const auto carried = carriedOver(at);
            moved.push_back(carried == LedgerBook::none ? -1 : now.places[carried]);
        }
    }
    return rowChange(std::move(moved), static_cast<int>(now.rows.size()));
}

#include "LedgerUI/Presentation/LedgerSort.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <tuple>

#include "LedgerCore/Domain/CurrencyInfo.h"
#include "LedgerUI/Presentation/LedgerAmounts.h"

namespace {

using Key = LedgerSort::Key;

/// What an entry is compared by: a place among names or currencies, then an amount.
struct Rank {
    std::uint32_t place = 0;
    std::int64_t amount = 0;

    auto operator<=>(const Rank&) const = default;
};

/// For each number its place in alphabetical order.
std::vector<std::uint32_t> alphabeticalPlaces(const LedgerKeys& keys)
{
    std::vector<std::uint32_t> numbers(keys.size());
    std::iota(numbers.begin(), numbers.end(), 0U);
    std::ranges::sort(numbers, {},
                      [&](std::uint32_t number) { return std::tie(keys.folded(number), keys.id(number)); });
    std::vector<std::uint32_t> places(keys.size());
    for (std::uint32_t at = 0; at < numbers.size(); ++at)
        places[numbers[at]] = at;
    return places;
}

std::vector<std::uint32_t> places(const LedgerBook& book, Key key)
{
    switch (key) {
    case Key::date:
        break;
    case Key::entry:
        return alphabeticalPlaces(book.titles());
    case Key::account:
        return alphabeticalPlaces(book.accounts());
    case Key::member:
        return alphabeticalPlaces(book.members());
    case Key::amount:
        return alphabeticalPlaces(book.currencies());
    }
    return {};
}

Rank rank(const LedgerBook& book, std::uint32_t at, Key key, const std::vector<std::uint32_t>& places)
{
    const auto& entry = book.entry(at);
    if (key == Key::entry)
        return {places[entry.title]};
    if (key == Key::member)
        return {places[entry.member]};
    const auto* leg = leadingLeg(book, at);
    if (!leg)
        return {};
    if (key == Key::account)
        return {places[leg->account]};
    return {places[leg->currency], shownAmount(book, at, *leg)};
}

}

std::vector<std::uint32_t> sorted(const LedgerBook& book, std::vector<std::uint32_t> rows, LedgerSort sort)
{
    const bool descending = sort.direction == LedgerSort::Direction::descending;
    if (sort.key == Key::date) {
        if (!descending)
            std::ranges::reverse(rows);
        return rows;
    }
    const auto order = places(book, sort.key);
    struct Ranked {
        Rank rank;
        std::size_t before; // its place in the book's own order
        std::uint32_t at;
    };
    std::vector<Ranked> ranked;
    ranked.reserve(rows.size());
    for (const auto at : rows)
        ranked.push_back({rank(book, at, sort.key, order), ranked.size(), at});
    std::ranges::sort(ranked, [&](const Ranked& left, const Ranked& right) {
        if (left.rank != right.rank)
            return (left.rank < right.rank) != descending;
        return left.before < right.before;
    });
    std::ranges::transform(ranked, rows.begin(), &Ranked::at);
    return rows;
}

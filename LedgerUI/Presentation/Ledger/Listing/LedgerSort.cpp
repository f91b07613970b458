#include "LedgerUI/Presentation/Ledger/Listing/LedgerSort.h"

#include <algorithm>
#include <compare>
#include <iterator>
#include <numeric>
#include <tuple>

#include "LedgerCore/Domain/Text/Collation.h"
#include "LedgerUI/Presentation/Ledger/LedgerAmounts.h"

namespace {

using Key = LedgerSort::Key;

/// What an entry is compared by: a place among names or currencies, then an amount.
struct Rank {
    std::uint32_t place = 0;
    std::int64_t amount = 0;
};

/// A rank and behind it the entry's place in the book's own order, packed so that whole ledgers sort by plain numbers
/// of two words.
struct SortKey {
    std::uint64_t high = 0;
    std::uint64_t low = 0;

    auto operator<=>(const SortKey&) const = default;
};

SortKey keyOf(const Rank& rank, LedgerSort::Direction direction, std::uint32_t before)
{
    constexpr auto signBit = std::uint64_t{1} << 63; // turned, amounts compare as numbers without a sign
    auto place = rank.place;
    auto amount = static_cast<std::uint64_t>(rank.amount) ^ signBit;
    if (direction == LedgerSort::Direction::descending) {
        place = ~place;
        amount = ~amount;
    }
    return {std::uint64_t{place} << 32 | amount >> 32, amount << 32 | before};
}

/// For each number its place in the alphabetical order of the language.
std::vector<std::uint32_t> alphabeticalPlaces(const LedgerKeys& keys, std::string_view locale)
{
    std::vector<std::uint32_t> numbers(keys.size());
    std::iota(numbers.begin(), numbers.end(), 0U);
    std::vector<std::string> sortKeys;
    sortKeys.reserve(keys.size());
    for (const auto number : numbers)
        sortKeys.push_back(Collation::sortKey(keys.shown(number), locale));
    std::ranges::sort(numbers, {}, [&](std::uint32_t number) { return std::tie(sortKeys[number], keys.id(number)); });
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
        return alphabeticalPlaces(book.titles(), book.locale());
    case Key::account:
        return alphabeticalPlaces(book.accounts(), book.locale());
    case Key::member:
        return alphabeticalPlaces(book.members(), book.locale());
    case Key::amount:
        return alphabeticalPlaces(book.currencies(), book.locale());
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
    if (sort.key == Key::date) {
        if (sort.direction == LedgerSort::Direction::ascending)
            std::ranges::reverse(rows);
        return rows;
    }
    const auto order = places(book, sort.key);
    std::vector<SortKey> keys;
    keys.reserve(rows.size());
    for (const auto at : rows)
        keys.push_back(keyOf(rank(book, at, sort.key, order), sort.direction, static_cast<std::uint32_t>(keys.size())));
    std::ranges::sort(keys);
    std::vector<std::uint32_t> result;
    result.reserve(rows.size());
    std::ranges::transform(keys, std::back_inserter(result),
                           [&](const SortKey& key) { return rows[static_cast<std::uint32_t>(key.low)]; });
    return result;
}

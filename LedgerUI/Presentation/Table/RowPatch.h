#pragma once

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "LedgerUI/Presentation/Table/RowChange.h"

/// What a model that holds its rows in a vector does with a change of them.
namespace RowPatch {

/// For each row of before, the place of its identity in the rows of now, or -1.
template <class Row>
std::vector<int> moved(const std::vector<Row>& before, const std::vector<Row>& now)
{
    std::unordered_map<std::string_view, int> places;
    int place = 0;
    for (const auto& row : now)
        places.emplace(row.id, place++);
    std::vector<int> moved;
    for (const auto& row : before) {
        const auto found = places.find(row.id);
        moved.push_back(found == places.end() ? -1 : found->second);
    }
    return moved;
}

/// The place of an identity, or -1.
template <class Row>
int placeOf(std::string_view id, const std::vector<Row>& rows)
{
    const auto found = std::ranges::find(rows, id, &Row::id);
    return found == rows.end() ? -1 : static_cast<int>(found - rows.begin());
}

template <class Row>
void drop(const RowChange::Range& range, std::vector<Row>& rows)
{
    rows.erase(rows.begin() + range.first, rows.begin() + range.last + 1);
}

/// The rows of now without the fresh ones.
template <class Row>
std::vector<Row> known(const RowChange& change, const std::vector<Row>& now)
{
    std::vector<Row> known;
    known.reserve(now.size());
    int row = 0;
    for (const auto& fresh : change.fresh) { // they follow one by one
        known.insert(known.end(), now.begin() + row, now.begin() + fresh.first);
        row = fresh.last + 1;
    }
    known.insert(known.end(), now.begin() + row, now.end());
    return known;
}

/// Takes these rows of now in at their places.
template <class Row>
void insert(const RowChange::Range& range, std::vector<Row>& rows, const std::vector<Row>& now)
{
    rows.insert(rows.begin() + range.first, now.begin() + range.first, now.begin() + range.last + 1);
}

}

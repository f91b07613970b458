#include "LedgerUI/Presentation/Table/RowChange.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t rangesTold = 64; // more are cheaper as one replacement

/// The maximal runs of places up to `count` for which `holds` is true; one more than are told at most.
template <class Holds>
std::vector<RowChange::Range> runs(int count, Holds&& holds)
{
    std::vector<RowChange::Range> result;
    for (int at = 0; at < count && result.size() <= rangesTold; ++at) {
        if (!holds(at))
            continue;
        if (!result.empty() && result.back().last + 1 == at)
            result.back().last = at;
        else
            result.push_back({at, at});
    }
    return result;
}

}

RowChange rowChange(std::vector<int> moved, int count)
{
    using enum RowChange::Kind;
    std::vector<bool> wasShown(static_cast<std::size_t>(count));
    int staying = 0;
    int furthest = -1;
    bool keepsOrder = true;
    for (const int row : moved) {
        if (row < 0)
            continue;
        wasShown[static_cast<std::size_t>(row)] = true;
        keepsOrder = keepsOrder && row > furthest;
        furthest = std::max(furthest, row);
        ++staying;
    }
    const int before = static_cast<int>(moved.size());
    RowChange change{.kind = replacement, .moved = std::move(moved)};
    if (keepsOrder) {
        auto gone = runs(before, [&](int row) { return change.moved[static_cast<std::size_t>(row)] < 0; });
        auto fresh = runs(count, [&](int row) { return !wasShown[static_cast<std::size_t>(row)]; });
        if (gone.size() + fresh.size() <= rangesTold) {
            change.kind = patch;
            change.gone = std::move(gone);
            change.fresh = std::move(fresh);
        }
    } else if (staying == before && staying == count) {
        change.kind = reorder;
    }
    return change;
}

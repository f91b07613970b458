#include "LedgerUI/Presentation/Table/RowChange.h"

#include <gtest/gtest.h>

namespace {

using enum RowChange::Kind;
using Ranges = std::vector<RowChange::Range>;

TEST(RowChange, TellsWhatCameAndWentBetweenRowsThatKeepTheirOrder)
{
    const auto change = rowChange({-1, 0, 2, -1, -1, 3}, 6);
    EXPECT_EQ(change.kind, patch);
    EXPECT_EQ(change.gone, (Ranges{{0, 0}, {3, 4}}));
    EXPECT_EQ(change.fresh, (Ranges{{1, 1}, {4, 5}}));
    EXPECT_EQ(rowChange({}, 3).fresh, (Ranges{{0, 2}}));
}

TEST(RowChange, TellsAnotherOrderOnlyOfTheSameRows)
{
    EXPECT_EQ(rowChange({2, 0, 1}, 3).kind, reorder);
    EXPECT_EQ(rowChange({2, 0, 1}, 4).kind, replacement);
    EXPECT_EQ(rowChange({1, 0, -1}, 2).kind, replacement);
}

TEST(RowChange, GivesUpWhereTellingWouldTakeLongerThanShowingAnew)
{
    std::vector<int> everySecond;
    for (int row = 0; row < 200; ++row)
        everySecond.push_back(row % 2 ? -1 : row / 2);
    EXPECT_EQ(rowChange(everySecond, 100).kind, replacement);
}

}

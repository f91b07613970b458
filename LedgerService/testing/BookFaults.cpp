#include "LedgerService/testing/BookFaults.h"

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

#include "LedgerService/Books/BookInvariants.h"

namespace LedgerService {

void BookFault::expectIsFound(Books sound) const
{
    ASSERT_EQ(BookInvariants::broken(sound), std::vector<std::string>{});
    damage(sound);
    const auto said = BookInvariants::broken(sound);
    EXPECT_TRUE(std::ranges::any_of(said, [&](const auto& each) { return each.contains(words); }))
        << testing::PrintToString(said);
}

LedgerTransaction& entryOf(Books& company, std::string_view id)
{
    return *std::ranges::find(company.entries, id, &LedgerTransaction::id);
}

void walkOn(Books& company, const std::function<std::expected<void, Refusal>(Books&)>& command,
            const std::function<std::string(const Books&)>& nameOf, WalkTally& met)
{
    const auto before = company;
    if (const auto result = command(company)) {
        ++met.done[nameOf(company)];
    } else {
        met.refused.emplace(result.error().code);
        ASSERT_EQ(company, before) << "although refused: " << result.error().code;
    }
    ASSERT_EQ(BookInvariants::broken(company), std::vector<std::string>{});
}

}

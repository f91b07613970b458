#include "LedgerCore/Domain/Contract.h"

#include <memory>

#include <gtest/gtest.h>

TEST(Contract, HandsOutWhatWasPromised)
{
    const std::optional<int> kept{7};
    EXPECT_EQ(&promised(kept, "it is there"), &*kept) << "what somebody owns is not copied";
    auto owned = promised(std::optional{std::make_unique<int>(7)}, "it is there");
    EXPECT_EQ(*owned, 7);
}

TEST(ContractDeathTest, StopsTheProcessWhereAPromiseIsBroken)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const std::optional<int> missing;
    EXPECT_DEATH(require(missing.has_value(), "it is there"),
                 R"(ContractTests\.cpp:[0-9]+: broken promise: it is there)");
    EXPECT_DEATH((void)promised(missing, "it is there"), R"(ContractTests\.cpp:[0-9]+: broken promise: it is there)");
    EXPECT_DEATH((void)promised(std::optional<int>{}, "it is there"), "broken promise: it is there");
}

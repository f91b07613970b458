#include "LedgerCore/Domain/Money.h"
#include <gtest/gtest.h>
TEST(Money, Parses)
{
    EXPECT_EQ(Money::parse("1,234.56", "USD", "en"), 123456);
}

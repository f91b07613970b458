#include <gtest/gtest.h>

#include "LedgerCore/Client/testing/StoreUnderTest.h"

namespace {

TEST(LedgerStoreOperation, SignsInAndRefreshes)
{
    StoreUnderTest test;
    test.signIn(snapshot().account("bank", {"USD"}).grantAll());
    EXPECT_TRUE(test.store.snapshot());
    EXPECT_TRUE(resultOf(test.store.refreshFromUser()));
}

}

#include "LedgerCore/Client/Receipts/AttachmentCache.h"

#include <gtest/gtest.h>

TEST(AttachmentCache, KeepsEachReceiptWhereOnlyThisUserCanLook)
{
    namespace fs = std::filesystem;
    const AttachmentCache cache;
    const auto place = cache.place("r1/../x", "bill.pdf");
    ASSERT_TRUE(place);
    for (const auto& folder : {place->parent_path(), place->parent_path().parent_path()})
        EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all) << folder;
}

#include <gtest/gtest.h>

#include "LedgerCore/Domain/testing/DomainWordTables.h"
#include "LedgerCore/Domain/testing/WordTableAudit.h"

TEST(DomainWords, SpeakFourLanguagesWithTheSamePlaceholders)
{
    for (const auto* table : domainWordTables()) {
        EXPECT_FALSE(table->rows().empty());
        EXPECT_EQ(auditWords(*table), std::vector<std::string>{});
    }
}

TEST(DomainWords, NameTheStartOfTheBooksTransfersAndExchangesInOneWayInChinese)
{
    for (const auto* table : domainWordTables()) {
        for (const auto& row : table->rows()) {
            for (const auto* other : {"转账", "兑换", "启用日期", "账套"})
                EXPECT_EQ(row.chinese.find(other), std::string_view::npos) << row.key << ": " << row.chinese;
        }
    }
}

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

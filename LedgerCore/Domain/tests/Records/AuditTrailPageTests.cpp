#include "LedgerCore/Domain/Records/Requests/AuditTrailPage.h"

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"

TEST(AuditTrailPage, ReadsRecordsOfAnyShape)
{
    const auto page = Json::decode<AuditTrailPage>(
        R"({"records":[{"number":7,"at":"2026-11-20T02:14:00.000Z","origin":"operator","kind":"x","chain":"c",)"
        R"("before":null,"after":{"name":"A \"B\"","active":true,"amountMinor":-250,"empty":[],"note":null,)"
        R"("currencies":["IDR","USD"],"limits":{"day":3},)"
        R"("accountGrants":[{"accountID":"bank","actions":["view","income"]},{"accountID":"till","actions":[]}]}}],)"
        R"("next":6})");
    ASSERT_TRUE(page);
    EXPECT_EQ(page->next, 6);
    const auto& record = page->records.at(0);
    EXPECT_FALSE(record.memberID || record.before);
    const std::map<std::string, std::string, std::less<>> expected{
        {"name", "A \"B\""},
        {"active", "true"},
        {"amountMinor", "-250"},
        {"currencies", "IDR, USD"},
        {"limits.day", "3"},
        {"accountGrants 1.accountID", "bank"},
        {"accountGrants 1.actions", "view, income"},
        {"accountGrants 2.accountID", "till"},
    };
    EXPECT_EQ(record.after->texts, expected);
}

TEST(AuditTrailPage, RefusesABrokenRecord)
{
    EXPECT_FALSE(
        Json::decode<AuditTrailPage>(R"({"records":[{"number":7,"at":"x","origin":"o","kind":"k","after":{"a":[}}]})"));
    EXPECT_FALSE(Json::decode<AuditTrailPage>(R"({"records":[{"at":"x","origin":"o","kind":"k"}]})"));
}

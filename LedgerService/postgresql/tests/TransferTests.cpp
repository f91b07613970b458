#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Operations/Archives/CompanyTransfer.h"
#include "LedgerService/Operations/Databases/Verify.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/SampleReceipts.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

namespace {

using CompanyTransfer::Afterwards;

void move(const CompanyTransfer::Export& order, const std::string& database, const std::string& files)
{
    ASSERT_EQ(CompanyTransfer::carryOut(order).value_or(""), "");
    const auto imported = CompanyTransfer::importFrom(order.archive, database, files);
    ASSERT_TRUE(imported.has_value()) << imported.error();
    EXPECT_EQ(imported->receipts, 1U);
}

HttpAnswer post(TestService& service, const TransactionInput& input)
{
    return service.client().send("POST", "/v1/transactions", service.tokenOf("mira", "moving"), Json::encode(input));
}

std::string snapshotOf(TestService& service)
{
    return service.client().send("GET", "/v1/snapshot", service.tokenOf("mira", "moving")).body;
}

}

TEST(Transfer, TakesACompanyFromAServerToAFileAndBackAsItWas)
{
    const TemporaryFolder folder;
    TestService source;
    source.write([](Connection& connection) { foundSample(connection, "moving"); });
    auto input = SampleBooks::income();
    input.idempotencyKey = "before the move";
    const auto recorded = post(source, input);
    ASSERT_EQ(recorded.status, 200);
    ASSERT_EQ(source.client()
                  .send("POST", "/v1/attachments", source.tokenOf("mira", "moving"),
                        SampleReceipts::upload(SampleReceipts::pdf(900)))
                  .status,
              200);
    const auto before = snapshotOf(source);
    const auto file = folder.file("between.sqlite");
    ASSERT_TRUE(Database::open(file).has_value());
    TestService target;
    ASSERT_NO_FATAL_FAILURE(move({.database = source.databaseFile(),
                                  .files = source.files(),
                                  .companyID = "moving",
                                  .archive = folder.file("first.tar"),
                                  .afterwards = Afterwards::closed},
                                 file, {}));
    const auto between = Verify::database(file);
    ASSERT_TRUE(between.has_value()) << between.error();
    EXPECT_EQ(between->problems, std::vector<std::string>{});
    ASSERT_NO_FATAL_FAILURE(move({.database = file, .companyID = "moving", .archive = folder.file("second.tar")},
                                 target.databaseFile(), target.files()));
    EXPECT_EQ(snapshotOf(target), before);
    EXPECT_EQ(post(target, input).body, recorded.body) << "sent again, it is not recorded again";
    EXPECT_EQ(target.problems(), "");
}

}

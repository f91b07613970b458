#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/EntryTemplate.h"
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

/// What the service keeps of the member beside the books.
std::string keptBeside(TestService& service)
{
    const auto token = service.tokenOf("mira", "moving");
    return service.client().send("GET", "/v1/templates", token).body +
           service.client().send("GET", "/v1/me/drafts", token).body;
}

void keepBeside(TestService& service)
{
    const auto token = service.tokenOf("mira", "moving");
    const auto made =
        service.client().send("POST", "/v1/templates", token,
                              R"({"name":"Interest","shared":true,"idempotencyKey":"interest",)"
                              R"("entry":{"kind":"income","note":"","targetAccountID":"bank","currency":"IDR"},)"
                              R"("recurrence":{"unit":"month","every":1,"firstDay":"2026-03-01"}})");
    ASSERT_EQ(made.status, 200) << made.body;
    const auto id = Json::decode<EntryTemplateList>(made.body).value().templates.front().id;
    ASSERT_EQ(service.client()
                  .send("POST", "/v1/templates/" + id + "/days", token, R"({"day":"2026-03-01","skipped":true})")
                  .status,
              200);
    ASSERT_EQ(service.client()
                  .send("PUT", "/v1/me/drafts/begun", token,
                        R"({"entry":{"kind":"expense","date":"","note":"Half","currency":"IDR","targetCurrency":"",)"
                        R"("amount":"1","targetAmount":"","refundReference":"","attachments":[],)"
                        R"("idempotencyKey":"begun"},"locale":"en-US","writer":"window"})")
                  .status,
              200);
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
    ASSERT_NO_FATAL_FAILURE(keepBeside(source));
    const auto before = snapshotOf(source);
    const auto beside = keptBeside(source);
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
    EXPECT_EQ(keptBeside(target), beside);
    EXPECT_EQ(post(target, input).body, recorded.body) << "sent again, it is not recorded again";
    EXPECT_EQ(target.problems(), "");
}

}

#include <algorithm>
#include <array>
#include <set>
#include <thread>

#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Storage/Rows/Companies/CompanyRepository.h"
#include "LedgerService/Storage/Rows/Entries/AttachmentRepository.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/TimeZone.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

namespace {

constexpr auto path = "/v1/transactions";

std::string bodyOf(TransactionInput input, std::string key)
{
    input.idempotencyKey = std::move(key);
    return Json::encode(input);
}

std::string reversalBody(const std::string& key)
{
    auto command = SampleBooks::reversal();
    command.idempotencyKey = key;
    return Json::encode(command);
}

}

TEST(EntryRoutes, ReplyWithTheRecordedEntryAndMoveTheBalance)
{
    TestService service;
    const auto answer = service.as("mira", "POST", path, bodyOf(SampleBooks::expense(30'000), "k1"));
    ASSERT_EQ(answer.status, 200) << answer.body;
    const auto entry = Json::decode<LedgerTransaction>(answer.body);
    ASSERT_TRUE(entry.has_value());
    EXPECT_EQ(entry->memberID, "mira");
    EXPECT_EQ(entry->legs, (std::vector<LedgerLeg>{{"bank", "IDR", -30'000}}));
    const auto snapshot = service.snapshotOf("mira");
    EXPECT_EQ(snapshot.account("bank")->balance("IDR"), 970'000);
    EXPECT_EQ(snapshot.transactions.back(), *entry) << "entries stand in the order of recording";
    EXPECT_EQ(service.problems(), "");
}

TEST(EntryRoutes, CarryARepeatedCommandOutOnce)
{
    TestService service;
    const auto token = service.tokenOf("mira");
    auto client = service.client();
    const auto first = client.send("POST", path, token, bodyOf(SampleBooks::income(5'000), "same"));
    ASSERT_EQ(first.status, 200) << first.body;
    const auto again = client.send("POST", path, token, bodyOf(SampleBooks::income(5'000), "same"));
    EXPECT_EQ(again.status, 200);
    EXPECT_EQ(again.body, first.body);

    // The same command in other JSON: fields in another order, blanks, an unknown field, a null.
    const auto spelledOtherwise = client.send("POST", path, token, R"({ "idempotencyKey": "same", "attachmentIDs": [],
        "amountMinor": 5000, "currency": "IDR", "targetAccountID": "bank", "categoryID": "sales", "note": "",
        "sourceAccountID": null, "date": "2026-03-10", "kind": "income", "colour": "green" })");
    EXPECT_EQ(spelledOtherwise.body, first.body);

    const auto other = client.send("POST", path, token, bodyOf(SampleBooks::income(5'001), "same"));
    EXPECT_EQ(other.status, 409);
    EXPECT_EQ(other.code(), "idempotency_conflict");
    const auto onOtherRoute = client.send("POST", "/v1/transactions/sale/reverse", token, reversalBody("same"));
    EXPECT_EQ(onOtherRoute.code(), "idempotency_conflict");
    EXPECT_EQ(service.snapshotOf("mira").account("bank")->balance("IDR"), 1'005'000);
}

TEST(EntryRoutes, RefuseWithoutWaitingForAWriterWhatNeedsNone)
{
    TestService service;
    const auto token = service.tokenOf("mira");
    auto crowded = SampleBooks::income();
    crowded.attachmentIDs.resize(1'000);
    const auto sound = bodyOf(SampleBooks::income(), "k");
    service.write([&](Connection&) {
        auto client = service.client();
        EXPECT_EQ(client.send("POST", path, "no token", sound).status, 401);
        EXPECT_EQ(client.send("POST", path, token, "{}").status, 400);
        EXPECT_EQ(client.send("POST", path, token, bodyOf(crowded, "c")).status, 400);
        EXPECT_EQ(client.send("POST", path, token, bodyOf(SampleBooks::income(), " ")).status, 400);
        EXPECT_EQ(client.send("POST", "/v1/nothing", token, sound).status, 404);
    });
}

TEST(EntryRoutes, KeepKeysApartByMember)
{
    TestService service;
    ASSERT_EQ(service.as("mira", "POST", path, bodyOf(SampleBooks::funding(20'000), "shared")).status, 200);
    auto spending = SampleBooks::expense(5'000);
    spending.sourceAccountID = "float";
    const auto answer = service.as("rudi", "POST", path, bodyOf(spending, "shared"));
    EXPECT_EQ(answer.status, 200) << answer.body;
    EXPECT_EQ(service.snapshotOf("rudi").account("float")->balance("IDR"), 15'000);
}

TEST(EntryRoutes, RecordARowOfAnImportOnceWhoeverSendsIt)
{
    TestService service;
    const std::string row = "c115378a-9008-5529-9469-e9ae5ff9ab43";
    const auto first = service.as("mira", "POST", path, bodyOf(SampleBooks::income(5'000), row));
    ASSERT_EQ(first.status, 200) << first.body;
    EXPECT_EQ(Json::decode<LedgerTransaction>(first.body)->id, row);
    EXPECT_EQ(service.as("guest", "POST", path, bodyOf(SampleBooks::income(5'000), row)).body, first.body);
    EXPECT_EQ(service.as("rudi", "POST", path, bodyOf(SampleBooks::income(5'000), row)).code(), "not_found");
    EXPECT_EQ(service.snapshotOf("mira").account("bank")->balance("IDR"), 1'005'000);
}

TEST(EntryRoutes, LetARefusedCommandBeMendedWithItsKey)
{
    TestService service;
    auto input = SampleBooks::expense(10'000);
    input.categoryID = "fax";
    EXPECT_EQ(service.as("mira", "POST", path, bodyOf(input, "k")).code(), "CATEGORY_ARCHIVED");
    EXPECT_EQ(service.snapshotOf("mira").account("bank")->balance("IDR"), 1'000'000);
    input.categoryID = "rent";
    EXPECT_EQ(service.as("mira", "POST", path, bodyOf(input, "k")).status, 200);
}

TEST(EntryRoutes, RefuseKeysThatNameNothing)
{
    TestService service;
    for (const auto& key : {std::string{}, std::string{"  "}, std::string(201, 'k')})
        EXPECT_EQ(service.as("mira", "POST", path, bodyOf(SampleBooks::income(), key)).code(), "validation_error");
}

TEST(EntryRoutes, ReverseWithTheNewSnapshotAndLinkBothWays)
{
    TestService service;
    const auto token = service.tokenOf("mira");
    auto client = service.client();
    const auto posted = client.send("POST", path, token, bodyOf(SampleBooks::expense(30'000), "e"));
    const auto id = Json::decode<LedgerTransaction>(posted.body)->id;
    const auto reversePath = fmt::format("{}/{}/reverse", path, id);
    const auto answer = client.send("POST", reversePath, token, reversalBody("r"));
    ASSERT_EQ(answer.status, 200) << answer.body;
    const auto snapshot = Json::decode<LedgerSnapshot>(answer.body);
    ASSERT_TRUE(snapshot.has_value());
    const auto& reversal = snapshot->transactions.back();
    EXPECT_EQ(reversal.reversalOf, id);
    EXPECT_EQ(std::ranges::find(snapshot->transactions, id, &LedgerTransaction::id)->reversedBy, reversal.id);
    EXPECT_EQ(snapshot->account("bank")->balance("IDR"), 1'000'000);

    EXPECT_EQ(client.send("POST", reversePath, token, reversalBody("r")).body, answer.body);
    EXPECT_EQ(client.send("POST", reversePath, token, reversalBody("another")).code(), "already_reversed");
    EXPECT_EQ(service.problems(), "");
}

struct RefundStep {
    std::string_view name;
    TransactionInput input;
    std::string_view code; // empty: recorded
};

TEST(EntryRoutes, LinkNobodyElsesLooseReceipt)
{
    TestService service;
    service.write([](Connection& connection) {
        AttachmentRepository::insert(connection, "sample", {"loose", {}, "r.pdf", "application/pdf", 1, ""}, "rudi");
    });
    auto input = SampleBooks::expense(10);
    input.attachmentIDs = {"loose"};
    const auto refused = service.as("mira", "POST", "/v1/transactions", Json::encode(input));
    input.attachmentIDs = {"none"};
    EXPECT_EQ(refused.status, 404);
    EXPECT_EQ(refused.body, service.as("mira", "POST", "/v1/transactions", Json::encode(input)).body)
        << "it is as if there were none";
    EXPECT_EQ(service.snapshotOf("rudi").attachments.size(), 1U);
}

TEST(EntryRoutes, TellOfNoReferenceOnAnAccountThatTheMemberDoesNotSee)
{
    TestService service;
    service.write([](Connection& connection) { // rudi's own account for refunds, and no sight of mira's
        connection.execute(
            "INSERT INTO accounts SELECT company_id, 'own', 90, 'own', currencies, owner_member_id, 'rudi', "
            "purpose, return_account_id, archived FROM accounts WHERE id = 'refunds'");
        connection.execute("INSERT INTO balances VALUES ('sample', 'own', 'IDR', 0)");
        connection.execute(
            R"(UPDATE members SET account_grants = '[{"accountID":"own","actions":["view","refund","opening"]},)"
            R"({"accountID":"refunds","actions":[]}]' WHERE id = 'rudi')");
    });
    auto opening = SampleBooks::opening(9'000);
    opening.targetAccountID = "own";
    const auto opened = service.as("rudi", "POST", "/v1/transactions", Json::encode(opening));
    ASSERT_EQ(opened.status, 200) << opened.body;
    auto input = SampleBooks::refund(1'000);
    input.originalTransactionID.reset();
    input.externalReference = "BANK-77";
    EXPECT_EQ(service.as("mira", "POST", "/v1/transactions", Json::encode(input)).status, 200);
    input.sourceAccountID = "own";
    input.idempotencyKey = "of rudi";
    const auto other = service.as("rudi", "POST", "/v1/transactions", Json::encode(input));
    EXPECT_EQ(other.status, 200) << other.body;
    input.idempotencyKey = "once more";
    EXPECT_EQ(service.as("rudi", "POST", "/v1/transactions", Json::encode(input)).code(), "duplicate_refund");
    EXPECT_EQ(service.problems(), "");
}

TEST(EntryRoutes, KeepEachCompanyToTheDaysOfItsOwnTimeZone)
{
    TestService service;
    service.moveClock(std::chrono::hours{11}); // 20:30 UTC: the next day has begun in Auckland, not in Honolulu
    const auto statusIn = [&](const std::string& zone) {
        service.write([&](Connection& connection) { CompanyRepository::writeTimeZone(connection, "sample", zone); });
        auto input = SampleBooks::expense(10);
        input.idempotencyKey = zone;
        input.date = "2026-03-12"; // a command may be dated a day ahead
        return service.as("mira", "POST", "/v1/transactions", Json::encode(input)).status;
    };
    EXPECT_EQ(statusIn("Pacific/Auckland"), 200);
    EXPECT_EQ(statusIn("Pacific/Honolulu"), 400);
    EXPECT_TRUE(TimeZone::isKnown("Asia/Jakarta"));
    for (const auto* none : {"Asia/Nowhere", "", "../etc/passwd"})
        EXPECT_FALSE(TimeZone::isKnown(none)) << none;
}

TEST(EntryRoutes, RememberRefundsReferencesAndOpenings)
{
    TestService service;
    auto referenced = SampleBooks::refund(1'000);
    referenced.originalTransactionID.reset();
    referenced.externalReference = "BANK-77";
    auto inSmallLetters = referenced;
    inSmallLetters.externalReference = "bank-77";
    const RefundStep steps[] = {
        {"most of the sale", SampleBooks::refund(45'000), ""},
        {"more than the rest", SampleBooks::refund(35'001), "refund_limit"},
        {"by reference", referenced, ""},
        {"the reference again", referenced, "duplicate_refund"},
        {"the reference in small letters", inSmallLetters, "duplicate_refund"},
        {"the branch's opening", SampleBooks::opening(), ""},
        {"a second opening", SampleBooks::opening(), "financial_opening_exists"},
    };
    int key = 0;
    for (auto step : steps) {
        if (step.input.kind == EntryKind::opening)
            step.input.date = "2026-01-01";
        const auto answer = service.as("mira", "POST", path, bodyOf(step.input, fmt::format("k{}", ++key)));
        EXPECT_EQ(answer.code(), step.code) << step.name << ": " << answer.body;
    }
    EXPECT_EQ(service.as("mira", "POST", "/v1/transactions/sale/reverse", reversalBody("r")).code(), "refunds_exist");
    EXPECT_EQ(service.problems(), "");
}

TEST(EntryRoutes, HideOtherCompaniesAndAccountsBehindNotFound)
{
    TestService service;
    service.write([](Connection& connection) { foundSample(connection, "other"); });
    ASSERT_EQ(service.as("mira", "POST", path, bodyOf(SampleBooks::income(7'000), "mine")).status, 200);
    const auto mine = service.snapshotOf("mira").transactions.back().id;
    const auto stranger = service.tokenOf("mira", "other");
    auto client = service.client();
    const auto reversed = client.send("POST", fmt::format("{}/{}/reverse", path, mine), stranger, reversalBody("r"));
    EXPECT_EQ(reversed.status, 404);
    EXPECT_EQ(reversed.code(), "not_found");
    const auto theirs = Json::decode<LedgerSnapshot>(client.send("GET", "/v1/snapshot", stranger).body);
    ASSERT_TRUE(theirs.has_value());
    EXPECT_EQ(theirs->account("bank")->balance("IDR"), 1'000'000) << "the same ids, another company";
    EXPECT_FALSE(std::ranges::find(theirs->transactions, mine, &LedgerTransaction::id) != theirs->transactions.end());

    auto unseen = SampleBooks::expense();
    unseen.sourceAccountID = "hidden";
    EXPECT_EQ(service.as("mira", "POST", path, bodyOf(unseen, "u")).code(), "not_found");
}

TEST(EntryRoutes, ServeWritersAtOnceWithoutLosingOrDoublingAnEntry)
{
    TestService service;
    const auto token = service.tokenOf("mira");
    constexpr int writers = 4;
    constexpr int each = 15;
    std::array<int, writers> recorded{};
    {
        std::vector<std::jthread> threads;
        for (int writer = 0; writer < writers; ++writer)
            threads.emplace_back([&, writer] {
                auto client = service.client();
                for (int at = 0; at < each; ++at) {
                    const auto body = bodyOf(SampleBooks::expense(10), fmt::format("{}-{}", writer, at));
                    const auto answer = client.send("POST", path, token, body);
                    const auto again = client.send("POST", path, token, body);
                    recorded[static_cast<std::size_t>(writer)] += answer.status == 200 && again.body == answer.body;
                }
            });
    }
    EXPECT_EQ(recorded, (std::array{15, 15, 15, 15}));
    const auto snapshot = service.snapshotOf("mira");
    EXPECT_EQ(snapshot.account("bank")->balance("IDR"), 999'400);
    EXPECT_EQ(snapshot.transactions.size(), 64u) << "four of the sample and sixty";
    EXPECT_EQ(service.problems(), "");
}

TEST(EntryRoutes, RecordOneEntryWhenTheSameCommandArrivesManyTimesAtOnce)
{
    TestService service;
    const auto token = service.tokenOf("mira");
    std::array<std::string, 6> answers;
    {
        std::vector<std::jthread> threads;
        for (auto& answer : answers)
            threads.emplace_back([&] {
                answer = service.client().send("POST", path, token, bodyOf(SampleBooks::income(1), "once")).body;
            });
    }
    EXPECT_EQ(std::set(answers.begin(), answers.end()).size(), 1u);
    EXPECT_EQ(service.snapshotOf("mira").account("bank")->balance("IDR"), 1'000'001);
}

}

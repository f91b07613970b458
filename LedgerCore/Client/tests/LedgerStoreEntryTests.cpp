#include <gtest/gtest.h>

#include "LedgerCore/Client/testing/Failed.h"
#include "LedgerCore/Client/testing/SignalCount.h"
#include "LedgerCore/Client/testing/StoreSample.h"
#include "LedgerCore/Client/testing/StoreUnderTest.h"

namespace {

using StoreSample::books;
using StoreSample::expense;
using StoreSample::message;
using StoreSample::newerBooks;

TEST(LedgerStoreEntries, ReloadsAfterTheEntryIsRecorded)
{
    StoreUnderTest test;
    test.signIn(books);
    test.server.replace("POST v1/transactions", ServerReply::json(R"({"id":"t2","kind":"expense"})"));
    test.server.replace("GET v1/snapshot", ServerReply::json(newerBooks.json()));
    EXPECT_EQ(resultOf(test.store.postTransaction(expense(), true)), "t2");
    EXPECT_EQ(*test.store.snapshot(), newerBooks.build());
    const auto sent = test.server.requests("POST v1/transactions");
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_EQ(sent.front().header("authorization"), "Bearer token-1");
    EXPECT_EQ(Json::decode<TransactionInput>(sent.front().body), expense());
}

TEST(LedgerStoreEntries, TakesAnyReplyOfALedgerServiceForAcceptance)
{
    for (const auto* reply : {"", "{}", R"({"ok":true})"}) {
        StoreUnderTest test;
        test.signIn(books);
        test.server.replace("POST v1/transactions", ServerReply::json(reply));
        EXPECT_EQ(resultOf(test.store.postTransaction(expense(), true)), "") << reply;
        EXPECT_FALSE(test.store.keptEntry());
    }
}

TEST(LedgerStoreEntries, ReportsARecordedEntryAsRecordedEvenWhenItCannotBeReloaded)
{
    StoreUnderTest test;
    test.signIn(books);
    test.server.replace("POST v1/transactions", ServerReply::json("{}"));
    test.server.replace("GET v1/snapshot", ServerReply::dropped());
    EXPECT_TRUE(resultOf(test.store.postTransaction(expense(), false)));
    EXPECT_EQ(test.store.errorMessage(), message(0, "NETWORK"));
    EXPECT_FALSE(test.store.isBusy());

    test.server.replace("GET v1/snapshot", ServerReply::error(401, "expired"));
    EXPECT_TRUE(resultOf(test.store.postTransaction(expense(), false)));
    EXPECT_FALSE(test.store.snapshot());
    EXPECT_EQ(test.store.errorMessage(), message(401, "expired"));
}

TEST(LedgerStoreEntries, RepeatsAnUnconfirmedReversalAsItStood)
{
    StoreUnderTest test;
    test.signIn(books);
    test.server.answer("POST v1/transactions/t1/reverse", ServerReply::dropped());
    test.server.answer("POST v1/transactions/t1/reverse", ServerReply::error(503, "down"));
    test.server.answer("POST v1/transactions/t1/reverse", ServerReply::json("half an ans"));
    test.server.answer("POST v1/transactions/t1/reverse", ServerReply::json(newerBooks.json()));
    test.server.answer("POST v1/transactions/t2/reverse", ServerReply::dropped());
    EXPECT_FALSE(resultOf(test.store.reverseTransaction("t1", "typo")));
    EXPECT_FALSE(resultOf(test.store.reverseTransaction("t2", "other entry")));
    test.clock.advance(std::chrono::hours{48});
    EXPECT_FALSE(resultOf(test.store.reverseTransaction("t1", "changed my words")));
    EXPECT_FALSE(resultOf(test.store.reverseTransaction("t1", "typo")));
    EXPECT_TRUE(resultOf(test.store.reverseTransaction("t1", "typo")));
    EXPECT_EQ(*test.store.snapshot(), newerBooks.build());
    EXPECT_TRUE(resultOf(test.store.reverseTransaction("t1", "a new one")));

    const auto sent = test.server.requests("POST v1/transactions/t1/reverse");
    ASSERT_EQ(sent.size(), 5U);
    EXPECT_EQ(Json::decode<Reversal>(sent[0].body), (Reversal{"typo", "id-1", "2026-11-20"}));
    for (std::size_t at = 1; at < 4; ++at)
        EXPECT_EQ(sent[at].body, sent[0].body);
    EXPECT_EQ(Json::decode<Reversal>(sent[4].body), (Reversal{"a new one", "id-3", "2026-11-22"}));
    EXPECT_EQ(Json::decode<Reversal>(test.server.requests("POST v1/transactions/t2/reverse").front().body),
              (Reversal{"other entry", "id-2", "2026-11-20"}));
}

/// What an attempt leaves: "nothing", "kept" or "unconfirmed".
std::string leftBehind(const LedgerStore& store)
{
    const auto kept = store.keptEntry();
    return !kept ? "nothing" : kept->outcomeUnknown ? "unconfirmed" : "kept";
}

struct Attempt {
    const char* name;
    ServerReply reply;
    std::string afterFirst; // what the first attempt leaves
    std::string afterRetry; // what a retry leaves of an unconfirmed one
};

class KeptAfter : public testing::TestWithParam<Attempt> {};

TEST_P(KeptAfter, OnlyWhatMayHaveBeenRecordedOrWasNeverTried)
{
    for (const bool isRetry : {false, true}) {
        StoreUnderTest test;
        test.signIn(books);
        if (isRetry) {
            test.server.replace("POST v1/transactions", ServerReply::dropped());
            EXPECT_FALSE(resultOf(test.store.postTransaction(expense(), false)));
            EXPECT_EQ(test.store.keptEntry(),
                      (KeptEntry{test.server.url(), "c1", "m1", expense(), true, "2026-11-20T12:00:00.000Z"}));
        }
        const SignalCount changes{test.store, &LedgerStore::keptChanged};
        test.server.replace("POST v1/transactions", GetParam().reply);
        static_cast<void>(resultOf(test.store.postTransaction(expense(), false)));
        if (!test.store.snapshot())
            test.signIn(books);
        EXPECT_EQ(leftBehind(test.store), isRetry ? GetParam().afterRetry : GetParam().afterFirst);
        EXPECT_EQ(test.store.hasUnconfirmed(), leftBehind(test.store) == "unconfirmed");
        EXPECT_GE(changes.count(), 1);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Replies, KeptAfter,
    testing::Values(Attempt{"Recorded", ServerReply::json(R"({"id":"t2"})"), "nothing", "nothing"},
                    Attempt{"NoReply", ServerReply::dropped(), "unconfirmed", "unconfirmed"},
                    Attempt{"ServiceFails", ServerReply::error(500, "internal_error"), "unconfirmed", "unconfirmed"},
                    Attempt{"NoLedgerService", ServerReply::json("<html>"), "unconfirmed", "unconfirmed"},
                    Attempt{"BreaksOff", ServerReply::cutShort("{}"), "unconfirmed", "unconfirmed"},
                    Attempt{"Refused", ServerReply::error(409, "insufficient_funds"), "nothing", "nothing"},
                    Attempt{"Expired", ServerReply::error(401, "expired"), "kept", "unconfirmed"},
                    Attempt{"TooOften", ServerReply::error(429, "rate_limited"), "nothing", "unconfirmed"},
                    Attempt{"TurnedAway", ServerReply::error(403, "inactive_member"), "nothing", "unconfirmed"}),
    [](const auto& each) { return std::string{each.param.name}; });

TEST(LedgerStoreEntries, KeepsAnEntryThatWasGivenUpAfterItWasSent)
{
    StoreUnderTest test;
    test.signIn(books);
    test.server.replace("POST v1/transactions", ServerReply::parked());
    auto posting = test.store.postTransaction(expense(), false);
    waitUntil([&] { return test.server.parkedCount() == 1; });
    test.store.cancel();
    EXPECT_EQ(resultOf(std::move(posting)), failed(Cancelled{}));
    EXPECT_EQ(leftBehind(test.store), "unconfirmed");
    test.store.forgetEntry("another");
    EXPECT_EQ(leftBehind(test.store), "unconfirmed");
    test.store.forgetEntry(expense().idempotencyKey);
    EXPECT_EQ(leftBehind(test.store), "nothing");
}

TEST(LedgerStoreEntries, ShowsAKeptEntryOnlyToItsMemberInItsCompanyAtItsService)
{
    StoreUnderTest test;
    test.signIn(books);
    test.store.keepEntry(expense(), true);
    test.store.keepEntry(expense("key-2"), false);
    EXPECT_TRUE(resultOf(test.store.logout()));
    EXPECT_FALSE(test.store.keptEntry());
    EXPECT_TRUE(test.store.hasUnconfirmed());
    test.store.keepEntry(expense("key-3"), true);

    auto colleague = books;
    test.signIn(colleague.currentMember(SnapshotBuilder::person("m2", "Rini")));
    EXPECT_FALSE(test.store.keptEntry());
    EXPECT_TRUE(resultOf(test.store.logout()));
    test.store.setServerURL(test.server.url() + "/");
    test.signIn(books);
    EXPECT_FALSE(test.store.keptEntry());
    EXPECT_TRUE(resultOf(test.store.logout()));
    test.store.setServerURL(test.server.url());
    test.signIn(books);
    EXPECT_EQ(test.store.keptEntry()->input, expense()) << "the older of the two";
    test.store.forgetEntry(expense().idempotencyKey);
    EXPECT_EQ(test.store.keptEntry()->input, expense("key-2"));
    EXPECT_FALSE(test.store.hasUnconfirmed());
}

TEST(LedgerStoreEntries, TellsARefusedReversalFromOneOfUnknownOutcome)
{
    StoreUnderTest test;
    test.signIn(books);
    test.server.answer("POST v1/transactions/t1/reverse", ServerReply::error(409, "refunds_exist"));
    test.server.answer("POST v1/transactions/t1/reverse", ServerReply::dropped());
    test.server.answer("POST v1/transactions/t1/reverse", ServerReply::error(401, "expired"));
    const Reversal sent{"typo", "id-1", "2026-11-20"};
    constexpr auto since = "2026-11-20T12:00:00.000Z";
    EXPECT_FALSE(resultOf(test.store.reverseTransaction("t1", "typo")));
    EXPECT_EQ(test.store.keptReversal("t1"),
              (KeptReversal{sent, false, APIError{409, "refunds_exist", "not for people"}, since}));
    EXPECT_EQ(test.store.keptRequests().count(), 0U) << "it is certain that nothing was posted";
    test.clock.advance(std::chrono::hours{1});
    EXPECT_FALSE(resultOf(test.store.reverseTransaction("t1", "typo")));
    EXPECT_EQ(test.store.keptRequests().reversals.size(), 1U);
    EXPECT_EQ(test.store.keptReversal("t1"), (KeptReversal{sent, true, std::nullopt, since}));
    EXPECT_FALSE(resultOf(test.store.reverseTransaction("t1", "typo")));
    EXPECT_FALSE(test.store.snapshot());
    test.signIn(books);
    EXPECT_EQ(test.store.keptReversal("t1"), (KeptReversal{sent, true, std::nullopt, since})) << "outlives the session";
    test.server.replace("POST v1/transactions/t1/reverse", ServerReply::error(409, "already_reversed"));
    EXPECT_FALSE(resultOf(test.store.reverseTransaction("t1", "typo")));
    EXPECT_EQ(test.store.keptReversal("t1")->refusal, (APIError{409, "already_reversed", "not for people"}));
    EXPECT_TRUE(resultOf(test.store.logout()));
    test.signIn(books);
    EXPECT_FALSE(test.store.keptReversal("t1")) << "what was refused ends with the session";
}

}

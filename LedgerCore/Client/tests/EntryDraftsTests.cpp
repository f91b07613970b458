#include <gtest/gtest.h>

#include "LedgerCore/Client/Store/EntryDrafts.h"
#include "LedgerCore/Client/testing/SignalCount.h"
#include "LedgerCore/Client/testing/StoreUnderTest.h"

namespace {

using namespace std::chrono_literals;

constexpr auto all = "GET v1/me/drafts";

std::string at(const std::string& method, const std::string& key)
{
    return method + " v1/me/drafts/" + key;
}

TransactionDraft typed(const std::string& key, const std::string& amount)
{
    TransactionDraft entry;
    entry.kind = "expense";
    entry.amount = amount;
    entry.idempotencyKey = key;
    return entry;
}

TransactionInput inputOf(const std::string& key)
{
    TransactionInput input;
    input.kind = "expense";
    input.amountMinor = 500;
    input.idempotencyKey = key;
    return input;
}

EntryDraft left(const std::string& key, std::optional<TransactionInput> sent = {})
{
    return {.entry = typed(key, "5"),
            .locale = "en-US",
            .sent = std::move(sent),
            .writer = "a program that died",
            .changedAt = "2026-11-19T08:00:00.000Z"};
}

/// A member at a service of our own kind.
class Drafts : public testing::Test {
protected:
    void signIn(const std::vector<EntryDraft>& drafts = {})
    {
        under.server.replace(all, ServerReply::json(Json::encode(EntryDraftList{drafts})));
        enter("\"1\"");
        waitUntil([&] { return under.server.requests(all).size() == 1; });
    }
    void enter(const std::string& tag)
    {
        const auto books = snapshot();
        const auto tagged = [&](std::string body) {
            return ServerReply{.body = std::move(body), .headers = {"ETag: " + tag}};
        };
        under.server.replace("POST v1/auth/login", tagged(books.signInJson()));
        under.server.replace("GET v1/snapshot", tagged(books.json()));
        under.store.drafts().setPatience({.typing = 30ms, .failure = 30ms});
        ASSERT_TRUE(resultOf(under.store.login("m1@example.com", "secret")).has_value());
    }
    void answer(const std::string& key, const ServerReply& reply) { under.server.replace(at("PUT", key), reply); }
    std::vector<DraftKeep> told(const std::string& key)
    {
        std::vector<DraftKeep> bodies;
        for (const auto& request : under.server.requests(at("PUT", key)))
            bodies.push_back(Json::decode<DraftKeep>(request.body).value());
        return bodies;
    }
    std::string discarded(const std::string& key)
    {
        const auto route = at("DELETE", key);
        waitUntil([&] { return under.server.requests(route).size() == 1; });
        const auto path = under.server.requests(route).front().path;
        return path.substr(path.find('?') + 1);
    }
    void waitUntilTold(const std::string& key, std::size_t times)
    {
        waitUntil([&] { return under.server.requests(at("PUT", key)).size() == times; });
    }
    EntryDrafts& drafts() { return under.store.drafts(); }

    StoreUnderTest under;
};

TEST_F(Drafts, ComeBackAfterTheProgramDied)
{
    const SignalCount arrived{drafts(), &EntryDrafts::arrived};
    signIn({left("a"), left("s", inputOf("s")), left("b")});
    waitUntil([&] { return arrived.count() == 1; });
    EXPECT_EQ(drafts().left()->entry.idempotencyKey, "b");
    EXPECT_FALSE(drafts().own().has_value());
    const auto sent = under.store.keptEntry();
    ASSERT_TRUE(sent.has_value());
    EXPECT_EQ(sent->input, inputOf("s"));
    EXPECT_TRUE(sent->outcomeUnknown);
    EXPECT_EQ(sent->since, "2026-11-19T08:00:00.000Z");

    answer("b", ServerReply::json("{}"));
    drafts().takeOver("b");
    waitUntilTold("b", 1);
    EXPECT_EQ(told("b").front().takenFrom, "a program that died");
    EXPECT_EQ(drafts().own()->entry, typed("b", "5"));
    EXPECT_EQ(drafts().left()->entry.idempotencyKey, "a");
    under.server.replace(at("DELETE", "a"), ServerReply::json(R"({"ok":true})"));
    drafts().discard("a");
    const auto writer = "writer=" + told("b").front().writer;
    EXPECT_EQ(discarded("a"), writer + "&takenFrom=a%20program%20that%20died");
    EXPECT_FALSE(drafts().left().has_value());
}

TEST_F(Drafts, AreAskedForAtEachSignIn)
{
    signIn({left("a")});
    waitUntil([&] { return drafts().left().has_value(); });
    answer("own", ServerReply::json("{}"));
    drafts().keep(typed("own", "1"), "en-US");
    waitUntilTold("own", 1);
    ASSERT_TRUE(resultOf(under.store.logout()).has_value());
    EXPECT_FALSE(drafts().own() || drafts().left()) << "nobody's";
    auto mine = left("own");
    mine.writer = told("own").front().writer;
    under.server.replace(all, ServerReply::json(Json::encode(EntryDraftList{{mine, left("s", inputOf("s"))}})));
    enter("\"2\"");
    waitUntil([&] { return under.store.keptEntry().has_value(); });
    EXPECT_FALSE(drafts().left().has_value()) << "decided about elsewhere";
    EXPECT_EQ(drafts().own()->entry, typed("own", "1"));
}

TEST_F(Drafts, AreToldOneAfterTheOtherAndOnlyAsTheyStandNow)
{
    signIn();
    answer("k", ServerReply::parked());
    drafts().keep(typed("k", "1"), "en-US");
    drafts().keep(typed("k", "12"), "en-US");
    waitUntilTold("k", 1);
    EXPECT_EQ(told("k").front().entry.amount, "12");
    drafts().keep(typed("k", "123"), "en-US");
    drafts().keepSending(typed("k", "123"), "en-US", inputOf("k"));
    EXPECT_FALSE(drafts().own().has_value()) << "what is sent is a draft no more";
    EXPECT_FALSE(under.store.awaitsChange()) << "nobody is warned of losing it";
    ASSERT_TRUE(resultOf(under.store.refresh(false)).has_value());
    EXPECT_EQ(told("k").size(), 1U) << "an operation goes on beside it";
    answer("k", ServerReply::json("{}"));
    under.server.release(ServerReply::json("{}"));
    waitUntilTold("k", 2);
    EXPECT_EQ(told("k").back().sent, inputOf("k"));
}

TEST_F(Drafts, TakeThePlaceOfTheOneThatWasBegunBefore)
{
    signIn();
    answer("k", ServerReply::json("{}"));
    answer("l", ServerReply::json("{}"));
    under.server.replace(at("DELETE", "k"), ServerReply::json(R"({"ok":true})"));
    drafts().keep(typed("k", "1"), "en-US");
    waitUntilTold("k", 1);
    drafts().keep(typed("l", "2"), "en-US");
    waitUntilTold("l", 1);
    EXPECT_EQ(discarded("k"), "writer=" + told("k").front().writer) << "its own";
    drafts().keep(typed("never told", "3"), "en-US");
    drafts().settle("never told");
    EXPECT_FALSE(drafts().own().has_value());
}

TEST_F(Drafts, AreTriedAgainWithoutAWordWhenTheServiceIsAway)
{
    signIn();
    const SignalCount behind{drafts(), &EntryDrafts::isBehindChanged};
    answer("k", ServerReply::dropped());
    drafts().keep(typed("k", "1"), "en-US");
    waitUntil([&] { return drafts().isBehind(); });
    EXPECT_FALSE(under.store.errorMessage().has_value());
    EXPECT_EQ(drafts().own()->entry, typed("k", "1"));
    answer("k", ServerReply::json("{}"));
    waitUntil([&] { return !drafts().isBehind(); });
    EXPECT_EQ(behind.count(), 2);
    EXPECT_EQ(told("k").back().entry.amount, "1");

    answer("k", ServerReply::error(401, "unauthorized"));
    drafts().keep(typed("k", "2"), "en-US");
    waitUntil([&] { return drafts().isBehind(); });
    EXPECT_TRUE(under.store.snapshot()) << "the next operation ends the session";
}

TEST_F(Drafts, AreNotLostWithoutAQuestionWhereTheSessionEndedFirst)
{
    signIn();
    answer("k", ServerReply::error(401, "unauthorized"));
    under.server.replace("POST v1/transactions", ServerReply::error(401, "unauthorized"));
    drafts().keepSending(typed("k", "1"), "en-US", inputOf("k"));
    EXPECT_FALSE(resultOf(under.store.postTransaction(inputOf("k"), false)).has_value());
    ASSERT_FALSE(under.store.snapshot());
    waitUntil([&] { return drafts().wouldLose(); });
    answer("k", ServerReply::json("{}"));
    enter("\"2\"");
    waitUntil([&] { return !drafts().wouldLose(); });
    EXPECT_EQ(told("k").back().sent, inputOf("k")) << "kept once the member is back";
}

TEST_F(Drafts, LeaveTheirKeyToTheWindowThatGoesOn)
{
    signIn();
    std::vector<std::string> lost;
    QObject::connect(&drafts(), &EntryDrafts::takenOver, &under.store,
                     [&](const std::string& key) { lost.push_back(key); });
    answer("k", ServerReply::error(409, "conflict"));
    drafts().keep(typed("k", "1"), "en-US");
    waitUntil([&] { return !lost.empty(); });
    EXPECT_EQ(lost, std::vector<std::string>{"k"});
    EXPECT_FALSE(drafts().own().has_value());
}

TEST_F(Drafts, StayWithTheWindowThatGoesOnWhenTheyAreGivenUpHere)
{
    signIn();
    int lost = 0;
    QObject::connect(&drafts(), &EntryDrafts::takenOver, &under.store, [&] { ++lost; });
    int told = 0;
    QObject::connect(&drafts(), &EntryDrafts::idle, &under.store, [&] { ++told; });
    answer("k", ServerReply::json("{}"));
    drafts().keep(typed("k", "1"), "en-US");
    waitUntil([&] { return told == 1; });
    under.server.replace(at("DELETE", "k"), ServerReply::error(409, "conflict"));
    drafts().discard("k");
    drafts().keep(typed("other", "2"), "en-US");
    answer("other", ServerReply::json("{}"));
    waitUntilTold("other", 1);
    waitUntil([&] { return told >= 2; });
    EXPECT_EQ(under.server.requests(at("DELETE", "k")).size(), 1U) << "it is not asked for again";
    EXPECT_EQ(lost, 0) << "nothing here loses its key";
    EXPECT_EQ(drafts().own()->entry, typed("other", "2"));
    EXPECT_FALSE(under.store.errorMessage().has_value());
}

TEST_F(Drafts, GoWhenTheServiceSaysThatTheEntryIsRecorded)
{
    signIn();
    answer("k", ServerReply::json(R"({"recordedEntryID":"e7"})"));
    drafts().keep(typed("k", "1"), "en-US");
    waitUntil([&] { return !drafts().own().has_value(); });
}

TEST_F(Drafts, AreNotKeptAnewOnceTheirEntryIsRecorded)
{
    signIn();
    int told = 0;
    QObject::connect(&drafts(), &EntryDrafts::idle, &under.store, [&] { ++told; });
    answer("k", ServerReply::parked());
    drafts().keepSending(typed("k", "5"), "en-US", inputOf("k"));
    waitUntil([&] { return under.server.parkedCount() == 1; });
    drafts().settle("k"); // the entry's own reply came first
    under.server.release(ServerReply::error(503, "unavailable"));
    waitUntil([&] { return told == 1; });
    EXPECT_FALSE(drafts().isBehind());
    EXPECT_FALSE(drafts().wouldLose());
}

TEST_F(Drafts, LiveAsLongAsTheProgramWhereTheServiceKeepsNone)
{
    under.server.replace(all, ServerReply::error(404, "not_found"));
    enter("\"1\"");
    drafts().setPatience({.typing = 1h, .failure = 1h});
    drafts().keep(typed("k", "1"), "en-US");
    waitUntil([&] { return !drafts().isSafe(*under.store.signedIn(), "k"); }); // its answer is read
    drafts().keep(typed("k", "2"), "en-US");
    ASSERT_TRUE(resultOf(under.store.refresh(false)).has_value());
    resultOf(drafts().flush());
    EXPECT_TRUE(told("k").empty());
    EXPECT_EQ(drafts().own()->entry.amount, "2");
    EXPECT_EQ(under.server.requests(all).size(), 1U);
    EXPECT_TRUE(drafts().wouldLose());
}

TEST_F(Drafts, AreNeverToldToAServiceOfAnotherKind)
{
    drafts().setPatience({.typing = 0ms, .failure = 0ms});
    under.signIn(snapshot());
    drafts().keep(typed("k", "1"), "en-US");
    EXPECT_TRUE(drafts().wouldLose());
    drafts().letGo();
    EXPECT_FALSE(drafts().wouldLose()) << "the person agreed";
    drafts().takeOver("k");
    EXPECT_TRUE(drafts().wouldLose()) << "and goes on with it after all";
    drafts().keepSending(typed("k", "1"), "en-US", inputOf("k"));
    ASSERT_TRUE(resultOf(under.store.refresh(false)).has_value());
    EXPECT_TRUE(told("k").empty());
    EXPECT_TRUE(under.server.requests(all).empty());
}

TEST_F(Drafts, AreToldBeforeTheProgramEnds)
{
    signIn();
    drafts().setPatience({.typing = 1h, .failure = 1h});
    answer("k", ServerReply::json("{}"));
    drafts().keep(typed("k", "1"), "en-US");
    auto leaving = under.store.leave();
    waitUntil([&] { return leaving.isReady(); });
    EXPECT_EQ(told("k").size(), 1U);
}

}

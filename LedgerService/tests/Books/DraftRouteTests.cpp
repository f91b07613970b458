#include <string>
#include <vector>

#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Entries/Drafts/EntryDraft.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/Staff.h"

namespace LedgerService {

namespace {

DraftKeep typed(const std::string& key, const std::string& amount, const std::string& writer = "window")
{
    DraftKeep draft;
    draft.entry.kind = "expense";
    draft.entry.note = "Half a not";
    draft.entry.source = "bank";
    draft.entry.currency = "IDR";
    draft.entry.amount = amount;
    draft.entry.attachments = {"r1"};
    draft.entry.idempotencyKey = key;
    draft.locale = "en-US";
    draft.writer = writer;
    return draft;
}

TransactionInput posting(const std::string& key)
{
    auto input = SampleBooks::expense(25'000);
    input.idempotencyKey = key;
    return input;
}

DraftKeep sent(const std::string& key)
{
    auto draft = typed(key, "25,000");
    draft.sent = posting(key);
    return draft;
}

class DraftRoutes : public testing::Test {
protected:
    ~DraftRoutes() override { EXPECT_EQ(m_service.problems(), ""); }

    static std::string at(const std::string& key) { return "/v1/me/drafts/" + key; }
    HttpAnswer keep(const std::string& by, const DraftKeep& draft)
    {
        return m_service.as(by, "PUT", at(draft.entry.idempotencyKey), Json::encode(draft));
    }
    HttpAnswer discard(const std::string& by, const std::string& key, const std::string& query = "?writer=window")
    {
        return m_service.as(by, "DELETE", at(key) + query);
    }
    std::vector<EntryDraft> list(const std::string& by)
    {
        return Json::decode<EntryDraftList>(m_service.as(by, "GET", "/v1/me/drafts").body).value().drafts;
    }
    std::vector<std::string> keys(const std::string& by)
    {
        std::vector<std::string> keys;
        for (const auto& each : list(by))
            keys.push_back(each.entry.idempotencyKey);
        return keys;
    }
    HttpAnswer post(const std::string& by, const TransactionInput& input)
    {
        return m_service.as(by, "POST", "/v1/transactions", Json::encode(input));
    }

    TestService m_service;
};

TEST_F(DraftRoutes, KeepWhatAMemberHasBegunForThatMemberAlone)
{
    EXPECT_EQ(keep("mira", typed("a", "2")).body, "{}");
    m_service.moveClock(std::chrono::seconds{1});
    EXPECT_EQ(keep("mira", sent("b")).status, 200);
    m_service.moveClock(std::chrono::seconds{1});
    EXPECT_EQ(keep("mira", typed("a", "25,0")).status, 200);
    ASSERT_EQ(keys("mira"), (std::vector<std::string>{"b", "a"})) << "changed last, told last";
    EXPECT_EQ(list("mira").front().sent, posting("b"));
    EXPECT_EQ(list("mira").back().entry, typed("a", "25,0").entry);
    EXPECT_EQ(list("mira").back().locale, "en-US");

    Staff::set(m_service, "guest", "owner", {"viewCompany", "manageCompany"}, {Staff::every("bank")});
    EXPECT_EQ(keys("guest"), std::vector<std::string>{});
    EXPECT_EQ(keep("guest", typed("a", "1")).status, 200) << "another member's key is another draft";
    EXPECT_EQ(discard("guest", "b").body, R"({"ok":true})") << "there or not";
    EXPECT_EQ(keys("mira"), (std::vector<std::string>{"b", "a"}));
    EXPECT_EQ(discard("mira", "b").status, 200);
    EXPECT_EQ(keys("mira"), std::vector<std::string>{"a"});
}

TEST_F(DraftRoutes, AreNoPartOfTheBooks)
{
    const auto tag = m_service.as("mira", "GET", "/v1/snapshot").header("etag");
    Staff::set(m_service, "guest", "owner", {"viewCompany"}, {Staff::every("bank")});
    const auto audit = m_service.as("guest", "GET", "/v1/audit").body;
    keep("mira", typed("a", "2"));
    discard("mira", "a");
    EXPECT_EQ(m_service.as("mira", "GET", "/v1/snapshot").header("etag"), tag) << "nobody loads anything anew";
    EXPECT_EQ(m_service.as("guest", "GET", "/v1/audit").body, audit);
}

TEST_F(DraftRoutes, GoWithTheRecordingOfTheirEntryAndDoNotComeBack)
{
    keep("mira", typed("a", "25,000"));
    keep("mira", typed("b", "1"));
    Staff::set(m_service, "guest", "employee", {"viewCompany"}, {Staff::every("bank")});
    keep("guest", typed("a", "9"));
    auto refused = posting("a");
    refused.sourceAccountID = "nothing";
    EXPECT_GE(post("mira", refused).status, 400);
    EXPECT_EQ(keys("mira"), (std::vector<std::string>{"a", "b"})) << "what was refused is still begun";

    const auto recorded = post("mira", posting("a"));
    ASSERT_EQ(recorded.status, 200) << recorded.body;
    EXPECT_EQ(keys("mira"), std::vector<std::string>{"b"});
    EXPECT_EQ(keys("guest"), std::vector<std::string>{"a"}) << "the key of somebody else";
    const auto id = Json::decode<LedgerTransaction>(recorded.body).value().id;
    EXPECT_EQ(Json::decode<DraftKept>(keep("mira", sent("a")).body).value().recordedEntryID, id)
        << "kept too late, it names the entry";
    EXPECT_EQ(keys("mira"), std::vector<std::string>{"b"});
}

TEST_F(DraftRoutes, AreWrittenByOneProgramAtATime)
{
    keep("mira", typed("a", "2", "first"));
    EXPECT_EQ(keep("mira", typed("a", "3", "second")).code(), "conflict");
    auto taken = typed("a", "3", "second");
    taken.takenFrom = "first";
    EXPECT_EQ(keep("mira", taken).status, 200);
    EXPECT_EQ(keep("mira", typed("a", "4", "first")).code(), "conflict");
    EXPECT_EQ(keep("mira", taken).status, 200) << "its reply was lost";
    EXPECT_EQ(list("mira").front().entry.amount, "3");
}

TEST_F(DraftRoutes, AreGivenUpOnlyByWhoSawThemAsTheyAre)
{
    keep("mira", typed("a", "2", "first"));
    auto taken = typed("a", "3", "second");
    taken.takenFrom = "first";
    keep("mira", taken);
    EXPECT_EQ(discard("mira", "a", "?writer=first").code(), "conflict") << "it was taken over";
    EXPECT_EQ(discard("mira", "a", "?writer=third&takenFrom=first").code(), "conflict");
    ASSERT_EQ(list("mira").size(), 1U);
    EXPECT_EQ(list("mira").front().entry.amount, "3");
    EXPECT_EQ(discard("mira", "a", "?writer=third&takenFrom=second").status, 200);
    EXPECT_EQ(keys("mira"), std::vector<std::string>{});

    keep("mira", typed("a", "2", "one & two"));
    for (const auto* query : {"", "?writer=", "?writer=x&writer=y", "?takenFrom=window", "?writer=x&takenFrom="})
        EXPECT_EQ(discard("mira", "a", query).code(), "validation_error") << query;
    EXPECT_EQ(discard("mira", "a", "?writer=one%20%26+two").status, 200);
    EXPECT_EQ(keys("mira"), std::vector<std::string>{});
}

TEST_F(DraftRoutes, AreBoundedInNumberAndNeverLoseOneThatWasBeingSent)
{
    keep("mira", sent("s0"));
    for (int number = 0; number < 20; ++number) {
        m_service.moveClock(std::chrono::seconds{1});
        EXPECT_EQ(keep("mira", typed(fmt::format("t{}", number), "1")).status, 200);
    }
    auto now = keys("mira");
    ASSERT_EQ(now.size(), 20U);
    EXPECT_EQ(now[0], "s0");
    EXPECT_EQ(now[1], "t1") << "the oldest that was not sent has gone";
    for (int number = 1; number < 20; ++number) {
        m_service.moveClock(std::chrono::seconds{1});
        EXPECT_EQ(keep("mira", sent(fmt::format("s{}", number))).status, 200);
    }
    const auto refused = keep("mira", typed("more", "1"));
    EXPECT_EQ(refused.code(), "rate_limited");
    EXPECT_EQ(refused.header("retry-after"), "3600");
    EXPECT_EQ(keep("mira", sent("s7")).status, 200) << "one that is there may still change";
}

TEST_F(DraftRoutes, RefuseWhatIsNoDraft)
{
    const auto ask = [&](const std::string& key, const DraftKeep& draft) {
        return m_service.as("mira", "PUT", at(key), Json::encode(draft)).code();
    };
    EXPECT_EQ(ask("other", typed("a", "1")), "validation_error");
    EXPECT_EQ(ask("a", typed("a", "1", "")), "validation_error");
    auto mixed = sent("a");
    mixed.sent->idempotencyKey = "b";
    EXPECT_EQ(ask("a", mixed), "validation_error");
    const std::string longKey(201, 'k');
    EXPECT_EQ(ask(longKey, typed(longKey, "1")), "validation_error");
    auto large = typed("a", "1");
    large.entry.note.assign(70'000, 'n');
    EXPECT_EQ(ask("a", large), "payload_too_large");
    EXPECT_EQ(keys("mira"), std::vector<std::string>{});
}

}

}

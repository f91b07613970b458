#include <gtest/gtest.h>

#include "LedgerCore/Client/testing/StoreUnderTest.h"

namespace {

constexpr auto path = "POST v1/capital/commands";

CapitalCommand command(std::string key)
{
    CapitalCommand made;
    made.action = "createParticipant";
    made.idempotencyKey = std::move(key);
    return made;
}

struct Sections : StoreUnderTest {
    Sections() { signIn(SnapshotBuilder{}); }

    void submit(const ServerReply& reply, std::string key = "key-1")
    {
        server.replace(path, reply);
        std::ignore = resultOf(store.submitCapital(command(std::move(key)), false));
    }
    [[nodiscard]] std::string left() const
    {
        const auto kept = store.keptSectionCommand();
        if (!kept)
            return "nothing";
        return std::get<CapitalCommand>(kept->command).idempotencyKey + (kept->outcomeUnknown ? " unknown" : " unsent");
    }
};

}

TEST(LedgerStoreSections, KeepACommandWhileItsOutcomeIsOpen)
{
    Sections test;
    test.submit(ServerReply::error(409, "capital_revision_conflict"));
    EXPECT_EQ(test.left(), "nothing") << "the service decided about it";
    test.submit(ServerReply::dropped());
    EXPECT_EQ(test.left(), "key-1 unknown");
    EXPECT_TRUE(test.store.hasUnconfirmed());
    test.submit(ServerReply::error(429, "rate_limited"));
    EXPECT_EQ(test.left(), "key-1 unknown") << "a refusal of the way there tells nothing of the first attempt";
    test.submit(ServerReply::json("{}"));
    EXPECT_EQ(test.left(), "nothing");
    EXPECT_FALSE(test.store.hasUnconfirmed());
}

TEST(LedgerStoreSections, KeepACommandBeyondTheSessionForItsMember)
{
    Sections test;
    test.submit(ServerReply::error(401, "unauthorized"));
    EXPECT_EQ(test.left(), "nothing") << "nobody is signed in";
    EXPECT_FALSE(test.store.hasUnconfirmed());
    test.signIn(SnapshotBuilder{}.currentMember(SnapshotBuilder::person("m2", "Dewi")));
    EXPECT_EQ(test.left(), "nothing") << "it is somebody else's";
    std::ignore = resultOf(test.store.logout());
    test.signIn(SnapshotBuilder{});
    EXPECT_EQ(test.left(), "key-1 unsent");
    test.submit(ServerReply::dropped());
    test.submit(ServerReply::error(401, "unauthorized"));
    test.signIn(SnapshotBuilder{});
    EXPECT_EQ(test.left(), "key-1 unknown") << "it may have been carried out by the attempt before";
    test.store.forgetSectionCommand("key-1");
    EXPECT_EQ(test.left(), "nothing");
}

TEST(LedgerStoreSections, KeepEveryCommandUntilItIsSettledItself)
{
    Sections test;
    test.submit(ServerReply::dropped(), "key-1");
    test.clock.advance(std::chrono::hours{1});
    test.submit(ServerReply::dropped(), "key-2");
    test.clock.advance(std::chrono::hours{1});
    test.submit(ServerReply::dropped(), "key-1");
    const auto kept = test.store.keptRequests().sections;
    ASSERT_EQ(kept.size(), 2U) << "the second does not take the place of the first";
    EXPECT_EQ(kept[0].idempotencyKey() + " " + kept[0].since, "key-1 2026-11-20T12:00:00.000Z");
    EXPECT_EQ(kept[1].idempotencyKey() + " " + kept[1].since, "key-2 2026-11-20T13:00:00.000Z");
    test.submit(ServerReply::json("{}"), "key-2");
    EXPECT_EQ(test.left(), "key-1 unknown");
    EXPECT_TRUE(test.store.hasUnconfirmed());
}

#include <gtest/gtest.h>

#include <boost/describe.hpp>
#include <fmt/core.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Http/Dispatch/CommandFingerprint.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Query.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

namespace {

struct Line {
    std::string text;
    std::optional<int> count;
};
BOOST_DESCRIBE_STRUCT(Line, (), (text, count))

struct TurnedLine {
    std::optional<int> count;
    std::optional<std::string> note; // a newer program's field
    std::string text;
};
BOOST_DESCRIBE_STRUCT(TurnedLine, (), (count, note, text))

struct Letter {
    std::string to;
    std::vector<Line> lines;
};
BOOST_DESCRIBE_STRUCT(Letter, (), (to, lines))

struct TurnedLetter {
    std::vector<TurnedLine> lines;
    std::string to;
};
BOOST_DESCRIBE_STRUCT(TurnedLetter, (), (lines, to))

}

TEST(CommandFingerprint, KnowsACommandWhoseFieldsAreDeclaredInAnotherOrder)
{
    const auto kept = CommandFingerprint::of("letter", Letter{"Dewi", {{"a", 1}, {"b", {}}}}).text();
    const auto same = TurnedLetter{{{1, {}, "a"}, {{}, {}, "b"}}, "Dewi"};
    EXPECT_TRUE(CommandFingerprint::of("letter", same).matches(kept));
    EXPECT_FALSE(CommandFingerprint::of("card", same).matches(kept));
    EXPECT_FALSE(CommandFingerprint::of("letter", TurnedLetter{{{{}, {}, "b"}, {1, {}, "a"}}, "Dewi"}).matches(kept));
    EXPECT_FALSE(CommandFingerprint::of("letter", TurnedLetter{{{1, "n", "a"}, {{}, {}, "b"}}, "Dewi"}).matches(kept));
}

TEST(CommandOnce, GivesTheFirstOutcomeAgainWhateverBecameOfTheEntry)
{
    TestService service;
    const auto input = SampleBooks::expense(10);
    const auto post = [&] { return service.as("mira", "POST", "/v1/transactions", Json::encode(input)); };
    const auto first = post();
    ASSERT_EQ(first.status, 200) << first.body;
    const auto entry = Json::decode<LedgerTransaction>(first.body);
    ASSERT_TRUE(entry.has_value());
    auto reversal = SampleBooks::reversal();
    reversal.idempotencyKey = "another";
    EXPECT_EQ(service.as("mira", "POST", fmt::format("/v1/transactions/{}/reverse", entry->id), Json::encode(reversal))
                  .status,
              200);
    EXPECT_EQ(post().body, first.body);
    service.write([&](Connection& connection) { // as an earlier program kept it
        Query{connection, "UPDATE commands SET fingerprint = :digest WHERE idempotency_key = 'key'"}
            .bind("digest", Random::digest("entry\n" + Json::encode(input)))
            .run();
    });
    EXPECT_EQ(post().body, first.body);
    auto other = input;
    other.amountMinor = 11;
    EXPECT_EQ(service.as("mira", "POST", "/v1/transactions", Json::encode(other)).code(), "idempotency_conflict");
    EXPECT_EQ(service.problems(), "");
}

}

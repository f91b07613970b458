#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Access/SnapshotReader.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/Entries/AttachmentRepository.h"
#include "LedgerService/Storage/Rows/Entries/EntryRepository.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/testing/Random/RandomDays.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/SnapshotFollower.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

namespace {

constexpr auto path = "/v1/snapshot";

Attachment receipt(std::string id)
{
    Attachment each;
    each.id = std::move(id);
    each.name = "a.pdf";
    each.mime = "application/pdf";
    return each;
}

std::string drained(SnapshotAnswer& answer)
{
    auto text = answer.text;
    for (auto block = answer.more(); !block.empty(); block = answer.more())
        text += block;
    return text;
}

}

TEST(SnapshotDelta, LeadsEveryReaderToTheWholeWhateverHappens)
{
    TestService service;
    RandomDays days{service, 20'261'121};
    std::map<std::string, SnapshotFollower> followers;
    for (const auto* member : {"guest", "mira", "rudi"})
        followers.try_emplace(member, service, member).first->second.refresh();
    std::mt19937 engine{7};
    std::map<int, int> replies;
    for (int step = 0; step < 250 && !HasFailure(); ++step) {
        days.step(followers.at("guest").held());
        followers.at("guest").refresh();
        for (auto& [member, follower] : followers) {
            if (engine() % 3 != 0)
                continue; // some catch up with several changes at once
            ++replies[follower.refresh()];
            EXPECT_EQ(follower.held(), follower.whole()) << member << " at step " << step;
        }
    }
    EXPECT_GT(replies[226], 50);
    EXPECT_GT(replies[304], 50);
    EXPECT_GT(replies[200], 2) << "rights changed";
    EXPECT_EQ(service.problems(), "");
}

TEST(SnapshotDelta, HoldsJustWhatIsNewOrChanged)
{
    TestService service;
    const auto token = service.tokenOf("mira");
    auto client = service.client();
    const auto whole = client.send("GET", path, token);
    const auto tag = whole.header("etag");
    const auto unchanged = client.send("GET", path, token, "", SnapshotFollower::conditions(tag));
    EXPECT_EQ(unchanged.status, 304);
    EXPECT_EQ(unchanged.body, "");
    EXPECT_EQ(unchanged.header("etag"), tag);

    const auto command = Json::encode(SampleBooks::reversal());
    const auto minimal =
        client.send("POST", "/v1/transactions/sale/reverse", token, command, "Prefer: return=minimal\r\n");
    EXPECT_EQ(minimal.body, R"({"ok":true})");
    EXPECT_EQ(minimal.header("preference-applied"), "return=minimal");
    const auto delta = client.send("GET", path, token, "", SnapshotFollower::conditions(tag));
    ASSERT_EQ(delta.status, 226);
    EXPECT_EQ(delta.header("im"), "entries");
    EXPECT_EQ(delta.header("delta-base"), tag);
    const auto news = Json::decode<LedgerSnapshot>(delta.body).value();
    ASSERT_EQ(news.transactions.size(), 2u);
    EXPECT_EQ(news.transactions[0].id, "sale");
    EXPECT_EQ(news.transactions[0].reversedBy, news.transactions[1].id);
    EXPECT_EQ(news.account("bank")->balance("IDR"), 920'000);
    EXPECT_EQ(news.members.size(), 4u) << "everything small is whole";
}

struct Question {
    std::string name;
    std::string headers; // "{tag}" stands for the tag of a state one entry ago
    int status;
};

class SnapshotQuestion : public testing::TestWithParam<Question> {};

TEST_P(SnapshotQuestion, IsAnsweredByWhatTheClientHolds)
{
    TestService service;
    const auto token = service.tokenOf("mira");
    auto client = service.client();
    auto tag = client.send("GET", path, token).header("etag");
    ASSERT_EQ(client.send("POST", "/v1/transactions", token, Json::encode(SampleBooks::income())).status, 200);
    auto headers = GetParam().headers;
    if (const auto at = headers.find("{tag}"); at != std::string::npos)
        headers.replace(at, 5, tag);
    EXPECT_EQ(client.send("GET", path, token, "", headers).status, GetParam().status);
    const auto now = client.send("GET", path, token).header("etag");
    EXPECT_NE(now, tag);
    EXPECT_EQ(client.send("GET", path, token, "", SnapshotFollower::conditions(now)).status, 304);
    EXPECT_EQ(client.send("GET", path, service.tokenOf("guest"), "", SnapshotFollower::conditions(now)).status, 200)
        << "what one member holds says nothing to another";
}

INSTANTIATE_TEST_SUITE_P(
    Headers, SnapshotQuestion,
    testing::Values(Question{"Delta", "If-None-Match: {tag}\r\nA-IM: entries\r\n", 226},
                    Question{"AmongOthers", "If-None-Match: \"a,b\", {tag}\r\nA-IM: vcdiff, Entries;q=0.5\r\n", 226},
                    Question{"InSeveralLines", "If-None-Match: \"x\"\r\nIf-None-Match: W/{tag}\r\nA-IM: entries\r\n",
                             226},
                    Question{"NoDeltaAsked", "If-None-Match: {tag}\r\n", 200},
                    Question{"DeltaDeclined", "If-None-Match: {tag}\r\nA-IM: entries;q=0\r\n", 200},
                    Question{"OtherManipulation", "If-None-Match: {tag}\r\nA-IM: vcdiff\r\n", 200},
                    Question{"NothingHeld", "A-IM: entries\r\n", 200},
                    Question{"ForeignTag", "If-None-Match: \"0815\"\r\nA-IM: entries\r\n", 200},
                    Question{"FutureTag",
                             "If-None-Match: \"000000000001869f000000010123456789abcdef0123456789abcdef\"\r\n"
                             "A-IM: entries\r\n",
                             200},
                    Question{"HugeTag",
                             "If-None-Match: \"ffffffffffffffffffffffff0123456789abcdef0123456789abcdef\"\r\n"
                             "A-IM: entries\r\n",
                             200}),
    [](const auto& each) { return each.param.name; });

TEST(SnapshotTags, DoNotTellHowOftenSomethingChanges)
{
    TestService service;
    const auto token = service.tokenOf("rudi");
    auto client = service.client();
    std::vector<std::pair<std::size_t, std::string>> tags; // in the order of the numbers that they begin with, if any
    for (int each = 0; each < 12; ++each) {
        const auto tag = client.send("GET", path, token).header("etag");
        tags.emplace_back(tag.find('.'), tag);
        auto input = SampleBooks::income();
        input.idempotencyKey = std::to_string(each);
        ASSERT_EQ(service.as("mira", "POST", "/v1/transactions", Json::encode(input)).status, 200);
    }
    EXPECT_FALSE(std::ranges::is_sorted(tags));
    EXPECT_EQ((std::set<std::pair<std::size_t, std::string>>{tags.begin(), tags.end()}.size()), 12U);
}

TEST(SnapshotBlocks, ShowOneStateWhateverIsRecordedWhileTheyAreTaken)
{
    TestService service;
    service.write(
        [](Connection& connection) { AttachmentRepository::insert(connection, "sample", receipt("later"), "mira"); });
    const auto expected = service.snapshotOf("mira");
    auto database = Database::open(service.databaseFile());
    ASSERT_TRUE(database.has_value());
    auto answer = SnapshotReader::answer(**database, "sample", "mira", {});
    ASSERT_TRUE(answer.has_value());

    service.write(
        [](Connection& connection) { EntryRepository::linkReceipts(connection, "sample", "opening-bank", {"later"}); });
    const auto reversed =
        service.as("mira", "POST", "/v1/transactions/sale/reverse", Json::encode(SampleBooks::reversal()));
    ASSERT_EQ(reversed.status, 200) << reversed.body;
    EXPECT_EQ(Json::decode<LedgerSnapshot>(drained(*answer)).value(), expected);
}

TEST(SnapshotBlocks, AreSmallUntilTheClientIsSeenToRead)
{
    constexpr int entries = 3'000;
    TestService service;
    service.write([](Connection& connection) {
        auto entry = EntryRepository::find(connection, "sample", "sale").value();
        entry.reversedBy.reset();
        entry.attachmentIDs.clear();
        entry.note = std::string(2'000, 'n');
        for (int each = 0; each < entries; ++each) {
            entry.id = fmt::format("long{}", each);
            EntryRepository::append(connection, "sample", entry);
        }
    });
    const auto database = Database::open(service.databaseFile());
    ASSERT_TRUE(database.has_value());
    auto answer = SnapshotReader::answer(**database, "sample", "mira", {});
    ASSERT_TRUE(answer.has_value());
    auto text = answer->text;
    std::size_t largest = 0;
    std::size_t largestEarly = 0;
    for (auto block = answer->more(); !block.empty(); block = answer->more()) {
        auto& most = text.size() < 4'000'000 ? largestEarly : largest;
        most = std::max(most, block.size());
        text += block;
    }
    const auto end = text.substr(text.rfind("],\"transferDestinations\""));
    EXPECT_GE(answer->heldBytes, end.size()) << "it counts against the budget for replies";
    EXPECT_LE(largestEarly, 68'000u) << "of clients that may never read it";
    EXPECT_GE(largest, 256'000u) << "large blocks are quicker";
    EXPECT_LE(largest, 290'000u);
    const auto snapshot = Json::decode<LedgerSnapshot>(text);
    ASSERT_TRUE(snapshot.has_value());
    EXPECT_GE(snapshot->transactions.size(), static_cast<std::size_t>(entries));
}

TEST(SnapshotBlocks, ReachOlderClientsUntilTheConnectionEnds)
{
    TestService service;
    auto client = service.client();
    const auto answer = client.sendRaw(fmt::format("GET /v1/snapshot HTTP/1.0\r\nHost: localhost\r\nAuthorization: "
                                                   "Bearer {}\r\n\r\n",
                                                   service.tokenOf("mira")));
    EXPECT_EQ(answer.header("transfer-encoding"), "");
    EXPECT_EQ(Json::decode<LedgerSnapshot>(answer.body), service.snapshotOf("mira"));
}

}

#include <stdexcept>
#include <thread>

#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Http/BodyPacker.h"
#include "LedgerService/Http/Connections/ClientAddress.h"
#include "LedgerService/Http/ReplyPacking.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/SnapshotFollower.h"
#include "LedgerService/testing/TestService.h"
#include "LedgerService/testing/Unpacking.h"

namespace LedgerService {

namespace {

constexpr auto path = "/v1/snapshot";
/// From another machine, through the proxy that `served` believes.
constexpr std::string_view fromElsewhere = "X-Forwarded-For: 192.0.2.7\r\n";

TestService served()
{
    return TestService{[](ServerOptions& options) {
        options.behindProxy = true;
        options.trustedProxies = {"127.0.0.1"};
    }};
}

std::string taking(std::string_view codings, std::string_view origin = fromElsewhere)
{
    return fmt::format("{}Accept-Encoding: {}\r\n", origin, codings);
}

/// Entries for a snapshot of several blocks.
void recordMany(TestService& service)
{
    constexpr int entries = 120;
    constexpr std::size_t words = 20;
    const auto token = service.tokenOf("mira");
    auto client = service.client();
    for (int each = 0; each < entries; ++each) {
        auto input = SampleBooks::income(100 + each);
        for (std::size_t word = 0; word < words; ++word)
            input.note += Random::text(64) + " ";
        input.idempotencyKey = fmt::format("many-{}", each);
        ASSERT_EQ(client.send("POST", "/v1/transactions", token, Json::encode(input)).status, 200);
    }
}

std::optional<std::string> unpacked(const HttpAnswer& answer)
{
    return Unpacking::whole(answer.header("content-encoding"), answer.body);
}

struct Preference {
    std::string name;
    std::string accepted;
    ContentCoding coding;
};

class AcceptedCoding : public testing::TestWithParam<Preference> {};

class PackedReply : public testing::TestWithParam<std::string> {};

}

TEST_P(AcceptedCoding, IsTheOneThatTheClientLikesBest)
{
    EXPECT_EQ(ContentCodings::preferred(GetParam().accepted), GetParam().coding);
}

INSTANTIATE_TEST_SUITE_P(Lists, AcceptedCoding,
                         testing::Values(Preference{"Nothing", "", ContentCoding::identity},
                                         Preference{"Both", "gzip, deflate, br, zstd", ContentCoding::zstd},
                                         Preference{"ByWeight", "gzip;q=0.9, zstd;q=0.8", ContentCoding::gzip},
                                         Preference{"InAnyCase", "GZip ; Q=1.000", ContentCoding::gzip},
                                         Preference{"OldName", "x-gzip", ContentCoding::gzip},
                                         Preference{"OthersOnly", "br, deflate, gzippy", ContentCoding::identity},
                                         Preference{"Anything", "*", ContentCoding::gzip},
                                         Preference{"AnythingElse", "gzip;q=0, *", ContentCoding::identity},
                                         Preference{"AnythingButPlain", "*, identity;q=0", ContentCoding::gzip},
                                         Preference{"NothingAtAll", "*;q=0", ContentCoding::identity},
                                         Preference{"NeitherPlainNorKnown", "identity;q=0, br",
                                                    ContentCoding::identity},
                                         Preference{"NotGzip", "gzip;q=0.0", ContentCoding::identity},
                                         Preference{"RatherPlain", "identity, gzip;q=0.5", ContentCoding::identity},
                                         Preference{"AsWellPlain", "identity;q=0.5, gzip;q=0.5", ContentCoding::gzip},
                                         Preference{"Twice", "gzip, gzip;q=0", ContentCoding::identity},
                                         Preference{"WeightTooLarge", "gzip;q=1.5", ContentCoding::identity},
                                         Preference{"WeightTooLong", "gzip;q=0.1234", ContentCoding::identity},
                                         Preference{"NoWeight", "gzip;q=", ContentCoding::identity},
                                         Preference{"NoNumber", "gzip;q=-1, zstd;q=high", ContentCoding::identity},
                                         Preference{"SmallestWeight", "gzip;q=0.001", ContentCoding::gzip},
                                         Preference{"OtherParameters", "gzip;level=9;q=0.5;q", ContentCoding::identity},
                                         Preference{"Signs", ",;,=,;q=1,\"gzip\", ;;, gzip", ContentCoding::gzip},
                                         Preference{"OpenQuotation", "\"gzip, zstd", ContentCoding::identity}),
                         [](const auto& each) { return each.param.name; });

TEST_P(PackedReply, HoldsTheSameBytesAsAPlainOne)
{
    auto service = served();
    recordMany(service);
    service.write([](Connection& connection) { // who may read the trail
        connection.execute("UPDATE members SET role = 'owner' WHERE id = 'mira'");
    });
    const auto token = service.tokenOf("mira");
    auto client = service.client();
    for (const auto* target : {path, "/v1/audit?limit=500"}) {
        const auto plain = client.send("GET", target, token, "", fromElsewhere);
        const auto packed = client.send("GET", target, token, "", taking(GetParam()));
        ASSERT_EQ(packed.status, 200) << target;
        EXPECT_EQ(packed.header("content-encoding"), GetParam()) << target;
        EXPECT_EQ(packed.header("vary"), "Accept-Encoding") << target;
        EXPECT_EQ(packed.header("content-type"), "application/json") << target;
        EXPECT_LT(packed.body.size(), plain.body.size() * 9 / 10) << target;
        EXPECT_TRUE(unpacked(packed) == plain.body) << target << " of " << plain.body.size() << " bytes";
        EXPECT_EQ(plain.header("content-encoding"), "") << target;
        EXPECT_EQ(plain.header("vary"), "Accept-Encoding") << target;

        const auto head = client.send("HEAD", target, token, "", taking(GetParam()));
        EXPECT_EQ(head.status, 200) << target;
        EXPECT_EQ(head.body, "") << target;
        EXPECT_EQ(head.header("content-encoding"), GetParam()) << target;
        EXPECT_EQ(head.header("content-length"), packed.header("content-length")) << target;
        EXPECT_EQ(head.header("transfer-encoding"), packed.header("transfer-encoding")) << target;
    }
}

TEST_P(PackedReply, CarriesATagThatMatchesAgainAndThatADeltaBuildsOn)
{
    auto service = served();
    const auto token = service.tokenOf("mira");
    auto client = service.client();
    const auto strong = client.send("GET", path, token, "", fromElsewhere).header("etag");
    const auto tag = client.send("GET", path, token, "", taking(GetParam())).header("etag");
    EXPECT_EQ(tag, "W/" + strong) << "other bytes of the same state";
    const auto conditions = SnapshotFollower::conditions(tag) + taking(GetParam());

    const auto unchanged = client.send("GET", path, token, "", conditions);
    EXPECT_EQ(unchanged.status, 304);
    EXPECT_EQ(unchanged.body, "");
    EXPECT_EQ(unchanged.header("etag"), tag);
    EXPECT_EQ(unchanged.header("content-encoding"), "");

    recordMany(service);
    const auto delta = client.send("GET", path, token, "", conditions);
    EXPECT_EQ(delta.status, 226);
    EXPECT_EQ(delta.header("content-encoding"), GetParam());
    EXPECT_EQ(delta.header("delta-base"), strong);
    EXPECT_TRUE(delta.header("etag").starts_with("W/\""));
    EXPECT_TRUE(unpacked(delta) == client.send("GET", path, token, "", SnapshotFollower::conditions(strong)).body);
}

TEST_P(PackedReply, AnswersSignInsAndCommandsLikeAPlainOne)
{
    auto service = served();
    auto client = service.client();
    const auto signIn = client.send(
        "POST", "/v1/auth/login", "",
        fmt::format(R"({{"email":"mira@sample.example","password":"{}"}})", TestService::password), taking(GetParam()));
    EXPECT_EQ(signIn.header("content-encoding"), GetParam());
    EXPECT_TRUE(unpacked(signIn).value_or("").starts_with("{\"token\":")) << signIn.status;
    const auto token = service.tokenOf("mira");
    auto input = SampleBooks::income();
    input.idempotencyKey = "a key of its own";
    const auto recorded = client.send("POST", "/v1/transactions", token, Json::encode(input), taking(GetParam()));
    EXPECT_EQ(recorded.header("content-encoding"), "") << "it is short";
    EXPECT_TRUE(Json::decode<LedgerTransaction>(recorded.body).has_value());
    const auto reversed = client.send("POST", "/v1/transactions/sale/reverse", token,
                                      Json::encode(SampleBooks::reversal()), taking(GetParam()));
    EXPECT_EQ(reversed.header("content-encoding"), GetParam());
    EXPECT_TRUE(Json::decode<LedgerSnapshot>(unpacked(reversed).value_or("")).has_value());
    const auto refused = client.send("GET", path, "none", "", taking(GetParam()));
    EXPECT_EQ(refused.status, 401);
    EXPECT_EQ(refused.code(), "unauthorized");
}

TEST_P(PackedReply, CanBeUnpackedAsFarAsItHasCome)
{
    const auto packer = BodyPacker::create(GetParam() == "gzip" ? ContentCoding::gzip : ContentCoding::zstd);
    std::string packed;
    std::string plain;
    for (const std::size_t size : {1U, 70'000U, 32'768U, 300'000U}) {
        std::string piece;
        while (piece.size() < size)
            piece += Random::text(64);
        packed += packer->pack(piece);
        plain += piece;
        EXPECT_TRUE(Unpacking::begun(GetParam(), packed) == plain) << "before more is there: " << plain.size();
        EXPECT_FALSE(Unpacking::whole(GetParam(), packed).has_value()) << "nobody takes it for the whole";
    }
    packed += packer->end();
    EXPECT_TRUE(Unpacking::whole(GetParam(), packed) == plain);
    packed[packed.size() / 2] ^= 1;
    EXPECT_FALSE(Unpacking::whole(GetParam(), packed) == plain);
}

INSTANTIATE_TEST_SUITE_P(Codings, PackedReply, testing::Values("zstd", "gzip"),
                         [](const auto& each) { return each.param; });

TEST(PackedReplies, AreForOtherMachinesOnly)
{
    auto service = served();
    const auto token = service.tokenOf("mira");
    const auto codingFor = [&](HttpClient client, std::string_view origin) {
        const auto answer = client.send("GET", path, token, "", taking("gzip", origin));
        EXPECT_TRUE(Json::decode<LedgerSnapshot>(unpacked(answer).value_or("")).has_value());
        return answer.header("content-encoding");
    };
    EXPECT_EQ(codingFor(service.client(), ""), "") << "no address is forwarded: it is the proxy itself";
    EXPECT_EQ(codingFor(service.client(), "X-Forwarded-For: 127.0.0.1\r\n"), "");
    EXPECT_EQ(codingFor(service.client(), "X-Forwarded-For: ::1\r\n"), "");
    EXPECT_EQ(codingFor(service.client(), "X-Forwarded-For: 127.0.0.1, 192.0.2.7\r\n"), "gzip")
        << "what a client claims does not count";
    EXPECT_EQ(codingFor(service.client(), "X-Forwarded-For: 2001:db8::1\r\n"), "gzip");
    EXPECT_EQ(codingFor(service.clientFrom("127.0.0.2"), fromElsewhere), "") << "it is none of the proxies";
}

TEST(PackedReplies, KnowThisMachineByEachOfItsAddresses)
{
    const auto isHere = [](std::string_view client, std::string_view local) {
        return ClientAddress::isOfThisMachine(boost::asio::ip::make_address(std::string{client}),
                                              boost::asio::ip::make_address(std::string{local}));
    };
    EXPECT_TRUE(isHere("::ffff:127.0.0.1", "192.0.2.1"));
    EXPECT_TRUE(isHere("192.0.2.1", "::ffff:192.0.2.1"));
    EXPECT_FALSE(isHere("192.0.2.2", "192.0.2.1"));
    EXPECT_FALSE(isHere("192.0.2.2", "127.0.0.1"));
}

TEST(PackedReplies, ThatCannotBeFinishedHaveNoEnd)
{
    int blocks = 0;
    Reply reply{.body = "{\"transactions\":[",
                .more = [&]() -> std::string {
                    if (++blocks > 2)
                        throw std::runtime_error{"the disk is gone"};
                    return "1,";
                },
                .heldBytes = std::size_t{1} << 30};
    auto packed = ReplyPacking::packed(std::move(reply), ContentCoding::zstd);
    EXPECT_GT(packed.heldBytes, std::size_t{1} << 30) << "it counts against the budget";
    auto sent = packed.body + packed.more() + packed.more();
    EXPECT_THROW(sent += packed.more(), std::runtime_error);
    EXPECT_EQ(Unpacking::begun("zstd", sent), "{\"transactions\":[1,1,");
    EXPECT_FALSE(Unpacking::whole("zstd", sent).has_value());
}

TEST(PackedReplies, OfTheSlowestReaderEndWhenUnreadOnesTakeTooMuch)
{
    constexpr std::size_t nameBytes = 40'000'000; // packed half of it, still more than the sockets in between hold
    TestService service{[](ServerOptions& options) {
        options.behindProxy = true;
        options.limits.replyBytes = nameBytes * 3 / 4;
    }};
    service.write([](Connection& connection) {
        connection.execute(fmt::format("UPDATE companies SET name = hex(randomblob({}))", nameBytes / 2));
    });
    const auto ask = fmt::format("GET /v1/snapshot HTTP/1.1\r\nHost: l\r\nAuthorization: Bearer {}\r\n{}\r\n",
                                 service.tokenOf("mira"), taking("zstd"));
    auto slow = service.client();
    slow.write(ask);
    while (slow.unreadBytes() == 0) // until its reply is under way
        std::this_thread::yield();
    const auto read = service.client().sendRaw(ask);
    EXPECT_EQ(read.status, 200);
    EXPECT_LT(read.body.size(), nameBytes * 2 / 3);
    EXPECT_GT(unpacked(read).value_or("").size(), nameBytes);
    EXPECT_EQ(slow.sendRaw("").status, 0) << "what was left of its reply is given up";
    EXPECT_EQ(service.client().sendRaw(ask).body, read.body);
}

}

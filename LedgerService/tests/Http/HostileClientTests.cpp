#include <list>
#include <thread>

#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Http/Connections/ClientAddress.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/testing/Eventually.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

namespace {

constexpr auto askLive = "GET /health/live HTTP/1.1\r\nHost: l\r\n\r\n";

std::string post(std::string_view path, std::string_view fields, std::string_view body)
{
    return fmt::format("POST {} HTTP/1.1\r\nHost: l\r\n{}Content-Length: {}\r\n\r\n{}", path, fields, body.size(),
                       body);
}

std::string signInAs(std::string_view email, std::string_view password = "wrong")
{
    return fmt::format(R"({{"email":"{}","password":"{}"}})", email, password);
}

}

TEST(Connections, GiveTheLongestSilentOnesPlaceToANewcomer)
{
    TestService service{[](ServerOptions& options) { options.limits.connections = 3; }};
    auto silent = service.client();
    auto halfHeader = service.client();
    halfHeader.write("GET /health");
    auto busy = service.client();
    EXPECT_EQ(busy.sendRaw(askLive).status, 200);
    EXPECT_EQ(service.client().sendRaw(askLive).status, 200) << "the silent one made room";
    EXPECT_TRUE(silent.isClosedByService());
    EXPECT_EQ(busy.sendRaw(askLive).status, 200);
}

TEST(Connections, OfOneClientNeverPushOutThoseOfOthers)
{
    TestService service{[](ServerOptions& options) {
        options.limits.connections = 4;
        options.limits.connectionsPerClient = 2;
    }};
    auto other = service.clientFrom("127.0.0.2");
    EXPECT_EQ(other.sendRaw(askLive).status, 200);
    auto first = service.client();
    EXPECT_EQ(first.sendRaw(askLive).status, 200);
    std::list<HttpClient> more; // all stay open: a connection that its client closes makes room by itself
    for (int number = 0; number < 6; ++number) {
        EXPECT_EQ(more.emplace_back(service.port()).sendRaw(askLive).status, 200);
    }
    EXPECT_TRUE(first.isClosedByService());
    EXPECT_EQ(other.sendRaw(askLive).status, 200) << "it was silent for longer";
}

TEST(Connections, OfAProxyAreNotCountedAsOneClient)
{
    TestService service{[](ServerOptions& options) {
        options.behindProxy = true;
        options.limits.connectionsPerClient = 1;
    }};
    auto one = service.client();
    auto two = service.client();
    EXPECT_EQ(two.sendRaw(askLive).status, 200);
    EXPECT_EQ(one.sendRaw(askLive).status, 200);
}

TEST(Connections, WithTheSlowestUnfinishedBodyEndWhenBodiesTakeTooMuch)
{
    TestService service{[](ServerOptions& options) {
        options.limits.uncountedBytes = 0;
        options.limits.bodyBytes = std::size_t{64} * 1024;
    }};
    const auto token = fmt::format("Authorization: Bearer {}\r\n", service.tokenOf("mira"));
    const auto whole = post("/v1/transactions", token, std::string(50'000, ' '));
    auto slow = service.client();
    slow.write(whole.substr(0, 40'000));
    service.waitForUnfinished(39'000);
    EXPECT_EQ(service.client().sendRaw(askLive).status, 200);
    EXPECT_EQ(service.client().sendRaw(whole).code(), "validation_error") << "a quick one is read";
    EXPECT_TRUE(slow.isClosedByService());
}

TEST(Connections, OfStrangersTakeNoRoomFromTheBodiesOfMembers)
{
    TestService service{[](ServerOptions& options) {
        options.limits.uncountedBytes = 0;
        options.limits.bodyBytes = std::size_t{300} * 1024;
    }};
    const auto member = fmt::format("Authorization: Bearer {}\r\n", service.tokenOf("mira"));
    const std::string body(250'000, ' ');
    auto slow = service.client();
    const auto whole = post("/v1/transactions", member, body);
    slow.write(whole.substr(0, 200'000));
    service.waitForUnfinished(199'000);
    const auto upload = [&](const std::string& path, const std::string& fields) {
        return service.client().sendRaw(post(path, fields, body)).code();
    };
    EXPECT_EQ(upload("/v1/attachments", ""), "unauthorized");
    EXPECT_EQ(upload("/v1/attachments", "Authorization: Bearer none\r\n"), "unauthorized");
    EXPECT_EQ(upload("/v1/auth/login", ""), "payload_too_large") << "where anybody may ask";
    EXPECT_EQ(upload("/v1/nothing", ""), "payload_too_large");
    slow.write(whole.substr(200'000));
    EXPECT_EQ(slow.sendRaw("").code(), "validation_error") << "it was let come to its end";
}

TEST(Connections, WithTheSlowestReaderEndWhenUnreadRepliesTakeTooMuch)
{
    constexpr std::size_t replyBytes = 24'000'000; // more than the sockets in between hold
    TestService service{[](ServerOptions& options) { options.limits.replyBytes = replyBytes + replyBytes / 2; }};
    service.write([](Connection& connection) {
        connection.execute(fmt::format("UPDATE companies SET name = hex(zeroblob({}))", replyBytes / 2));
    });
    const auto ask = fmt::format("GET /v1/snapshot HTTP/1.1\r\nHost: l\r\nAuthorization: Bearer {}\r\n\r\n",
                                 service.tokenOf("mira"));
    auto slow = service.client();
    slow.write(ask);
    ASSERT_TRUE(eventually([&] { return slow.unreadBytes() > 0; })) << "its reply is under way";
    const auto read = service.client().sendRaw(ask);
    EXPECT_EQ(read.status, 200);
    EXPECT_GT(read.body.size(), replyBytes);
    EXPECT_EQ(slow.sendRaw("").status, 0) << "what was left of its reply is given up";
}

TEST(Connections, ThatHaveSentHalfARequestDoNotHoldUpTheEnd)
{
    TestService service;
    const auto token = service.tokenOf("mira");
    auto whole = service.client();
    auto half = service.client();
    half.write("POST /v1/transactions HTTP/1.1\r\nHost: l\r\nContent-Length: 50\r\n\r\n{");
    std::jthread stopping;
    service.write([&](Connection&) {
        whole.write(post("/v1/transactions", fmt::format("Authorization: Bearer {}\r\n", token),
                         Json::encode(SampleBooks::expense(10))));
        EXPECT_EQ(service.client().sendRaw(askLive).status, 200) << "the one network thread has read both";
        stopping = std::jthread{[&] { service.stop(); }};
        EXPECT_TRUE(half.isClosedByService()) << "while the whole one still waits for its turn";
    });
    EXPECT_EQ(whole.sendRaw("").status, 200);
}

TEST(SignInLane, RefusesWhatWouldWaitTooLongAndHoldsUpNobodyElse)
{
    TestService service{[](ServerOptions& options) {
        options.limits.signInsWaiting = 2;
        options.limits.allSignInsWaiting = 2;
    }};
    const auto ask = post("/v1/auth/login", "", signInAs("mira@sample.example", TestService::password));
    const auto token = service.tokenOf("mira");
    auto first = service.client();
    auto second = service.client();
    auto elsewhere = service.clientFrom("127.0.0.2");
    service.write([&](Connection&) {
        first.write(ask);
        second.write(ask);
        EXPECT_EQ(service.client().sendRaw(askLive).status, 200) << "the one network thread has read both";
        const auto refused = service.client().sendRaw(ask);
        EXPECT_EQ(refused.status, 429);
        EXPECT_EQ(refused.code(), "rate_limited");
        EXPECT_FALSE(refused.header("retry-after").empty());
        elsewhere.write(ask);
        EXPECT_EQ(service.client().sendRaw(askLive).status, 200);
        EXPECT_EQ(service.clientFrom("127.0.0.2").sendRaw(ask).status, 429) << "nor do many take all connections";
        EXPECT_EQ(service.client().send("GET", "/v1/snapshot", token).status, 200);
    });
    EXPECT_EQ(first.sendRaw("").status, 200);
    EXPECT_EQ(second.sendRaw("").status, 200);
    EXPECT_EQ(elsewhere.sendRaw("").status, 200) << "one address keeps no other out";
    EXPECT_EQ(service.client().sendRaw(ask).status, 200) << "there is room again";
}

TEST(Proxies, NameTheClientByTheLastAddressThatIsNotTheirOwn)
{
    TestService service{[](ServerOptions& options) {
        options.behindProxy = true;
        options.policy.limits.signInsPerAddress = 1;
    }};
    const auto guessFrom = [&](const std::string& forwarded, const std::string& email) {
        return service.client()
            .sendRaw(post("/v1/auth/login", fmt::format("X-Forwarded-For: {}\r\n", forwarded), signInAs(email)))
            .status;
    };
    EXPECT_EQ(guessFrom("10.0.0.1, 192.0.2.7", "a@b.example"), 401);
    EXPECT_EQ(guessFrom("10.0.0.2, 192.0.2.7:5123", "c@b.example"), 429) << "what the client claims does not count";
    EXPECT_EQ(guessFrom("10.0.0.1, 192.0.2.8", "d@b.example"), 401);
    EXPECT_EQ(guessFrom("10.0.0.3\r\nX-Forwarded-For: 192.0.2.8", "e@b.example"), 429) << "nor in a line of its own";
    EXPECT_EQ(guessFrom("2001:db8:1:2::1", "f@b.example"), 401);
    EXPECT_EQ(guessFrom("[2001:db8:1:2:ffff::9]:443", "g@b.example"), 429) << "one household";
    EXPECT_EQ(guessFrom("2001:db8:1:3::1", "h@b.example"), 401);
    const auto body = signInAs("i@b.example");
    const auto inTrailer =
        fmt::format("POST /v1/auth/login HTTP/1.1\r\nHost: l\r\nX-Forwarded-For: 192.0.2.8\r\nTransfer-Encoding: "
                    "chunked\r\n\r\n{:x}\r\n{}\r\n0\r\nX-Forwarded-For: 192.0.2.99\r\n\r\n",
                    body.size(), body);
    EXPECT_EQ(service.client().sendRaw(inTrailer).status, 429) << "nor behind the body";
}

struct Hops {
    std::string name;
    std::vector<std::string> proxies;
    std::string peer;
    std::string forwarded;
    std::string client; // as it is counted
};

class ListedProxies : public testing::TestWithParam<Hops> {};

TEST_P(ListedProxies, AreTheOnlyOnesThatAreBelieved)
{
    const auto& hops = GetParam();
    const auto proxies = TrustedProxies::create(hops.proxies);
    ASSERT_TRUE(proxies.has_value()) << proxies.error();
    const auto peer = ClientAddress::parse(hops.peer);
    ASSERT_TRUE(peer.has_value());
    EXPECT_EQ(ClientAddress::counted(proxies->clientOf(*peer, hops.forwarded)), hops.client);
}

INSTANTIATE_TEST_SUITE_P(
    Chains, ListedProxies,
    testing::Values(
        Hops{"Direct", {"10.0.0.0/8"}, "192.0.2.1", "203.0.113.5", "192.0.2.1"},
        Hops{"OneProxy", {"10.0.0.1"}, "10.0.0.1", "203.0.113.9, 203.0.113.5", "203.0.113.5"},
        Hops{"OtherHost", {"10.0.0.1"}, "10.0.0.2", "203.0.113.5", "10.0.0.2"},
        Hops{"TwoProxies", {"10.0.0.0/8"}, "10.0.0.1", "1.1.1.1, 203.0.113.5, 10.9.9.9", "203.0.113.5"},
        Hops{"Mapped", {"10.0.0.1"}, "::ffff:10.0.0.1", "::ffff:203.0.113.5", "203.0.113.5"},
        Hops{"Version6", {"2001:db8::/32"}, "2001:db8::1", "2001:db8:9::1, 2003:0:0:5:6:7:8:9", "2003:0:0:5::/64"},
        Hops{"Unreadable", {"10.0.0.1"}, "10.0.0.1", "203.0.113.5, unknown", "10.0.0.1"},
        Hops{"NoList", {"10.0.0.1"}, "10.0.0.1", "", "10.0.0.1"}),
    [](const auto& each) { return each.param.name; });

TEST(ListedProxies, AreAddressesOrNetworks)
{
    for (const auto* text : {"proxy.example", "10.0.0.0/33", "10.0.0.1:80", "", "::/129"})
        EXPECT_FALSE(TrustedProxies::create({text}).has_value()) << text;
    for (const auto* text : {"10.0.0.1:", "10.0.0.1:x", "[::1", "[::1]80", "1.2.3", "10.0.0.1:123456", ""})
        EXPECT_FALSE(ClientAddress::parse(text).has_value()) << text;
}

}

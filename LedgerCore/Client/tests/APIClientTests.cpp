#include "LedgerCore/Client/Http/APIClient.h"

#include <gtest/gtest.h>

#include "LedgerCore/Client/testing/BusyWorkers.h"
#include "LedgerCore/Client/testing/Failed.h"
#include "LedgerCore/Client/testing/ScriptedServer.h"
#include "LedgerCore/Client/testing/WaitFor.h"
#include "LedgerCore/Domain/Records/Requests/TransactionInput.h"

namespace {

using std::chrono::milliseconds;

constexpr milliseconds soon{40};
constexpr milliseconds never{3'600'000};
constexpr auto reversalText = R"({"reason":"typo","idempotencyKey":"k","date":"2026-11-20"})";

struct Address {
    const char* name;
    const char* text;
    bool isAccepted;
};

class ValidatedURL : public testing::TestWithParam<Address> {};

TEST_P(ValidatedURL, AcceptsOnlyTheBareAddressOfAServiceItMayTalkTo)
{
    const auto address = APIClient::validatedURL(GetParam().text);
    if (GetParam().isAccepted)
        EXPECT_EQ(address, GetParam().text);
    else
        EXPECT_EQ(address, std::unexpected(APIError{0, "INVALID_SERVER_URL", ""}));
}

INSTANTIATE_TEST_SUITE_P(
    Addresses, ValidatedURL,
    testing::Values(
        Address{"Https", "https://ledger.example.com", true},
        Address{"HttpsSlash", "https://ledger.example.com/", true},
        Address{"HttpsPort", "https://ledger.example.com:8443", true},
        Address{"Localhost", "http://localhost:8080", true}, Address{"IPv4Loopback", "http://127.0.0.1", true},
        Address{"IPv6Loopback", "http://[::1]:48731", true},
        Address{"HttpsPath", "https://ledger.example.com/api", false},
        Address{"HttpElsewhere", "http://192.168.1.10", false},
        Address{"HttpLoopbackPrefix", "http://localhost.example.com", false},
        Address{"HttpOtherLoopback", "http://127.0.0.2", false}, Address{"HttpShortLoopback", "http://127.1", false},
        Address{"HttpShouting", "http://LOCALHOST", false}, Address{"User", "https://u:p@ledger.example.com", false},
        Address{"EmptyUser", "https://@ledger.example.com", false},
        Address{"LoopbackAsUser", "http://localhost@example.com", false},
        Address{"Query", "https://ledger.example.com?a=1", false},
        Address{"EmptyQuery", "https://ledger.example.com?", false},
        Address{"Fragment", "https://ledger.example.com#x", false}, Address{"NoHost", "https://", false},
        Address{"NoScheme", "ledger.example.com", false}, Address{"OtherScheme", "ftp://localhost", false},
        Address{"Blank", "https://ledger example.com", false}, Address{"Empty", "", false}),
    [](const auto& each) { return std::string{each.param.name}; });

struct Exchange {
    const char* name;
    ServerReply reply;
    std::expected<std::string, Failure> expected;

    friend std::ostream& operator<<(std::ostream& out, const Exchange& each) { return out << each.name; }
};

class APIClientBytes : public testing::TestWithParam<Exchange> {};

TEST_P(APIClientBytes, TurnsEveryReplyIntoABodyOrOneTypedFailureWithoutAskingTwice)
{
    ScriptedServer server;
    server.answer("POST v1/thing", GetParam().reply);
    const APIClient client{server.url()};
    EXPECT_EQ(resultOf(client.bytes({.method = "POST", .path = "v1/thing", .body = "{}"})), GetParam().expected);
    EXPECT_EQ(server.requests().size(), 1U);
}

Failure error(int status, std::string code, std::string message = {})
{
    return APIError{status, std::move(code), std::move(message)};
}

INSTANTIATE_TEST_SUITE_P(
    Replies, APIClientBytes,
    testing::Values(
        Exchange{"Success", ServerReply::json("[1]"), "[1]"},
        Exchange{"LastSuccess", ServerReply::json("{}", 299), "{}"},
        Exchange{"EmptySuccess", ServerReply::json(""), ""},
        Exchange{"Refusal", ServerReply::json(R"({"error":{"code":"validation_error","message":"x"}})", 500),
                 failed(error(500, "validation_error", "x"))},
        Exchange{"RefusalWithoutMessage", ServerReply::json(R"({"error":{"code":"balance_limit"}})", 409),
                 failed(error(409, "balance_limit"))},
        Exchange{"RefusalWithoutCode", ServerReply::json(R"({"error":{"message":"x"}})", 400),
                 failed(error(400, "HTTP_ERROR"))},
        Exchange{"PlainText", ServerReply::json("not here", 404), failed(error(404, "HTTP_ERROR"))},
        Exchange{"Unauthorized",
                 {.status = 401, .headers = {"WWW-Authenticate: Basic realm=\"x\""}},
                 failed(error(401, "HTTP_ERROR"))},
        Exchange{"ProxyStatusFromTheService", ServerReply::error(407, "odd"),
                 failed(error(407, "odd", "not for people"))},
        Exchange{"TimeOutOfTheService", ServerReply::error(408, "slow"), failed(error(408, "slow", "not for people"))},
        Exchange{"Teapot", ServerReply::error(418, "teapot"), failed(error(418, "teapot", "not for people"))},
        Exchange{"Unavailable", ServerReply::error(503, "down"), failed(error(503, "down", "not for people"))},
        Exchange{"OddServerStatus", ServerReply::json("", 599), failed(error(599, "HTTP_ERROR"))},
        Exchange{"Redirect", ServerReply::redirect("/v1/elsewhere"), failed(error(302, "HTTP_ERROR"))},
        Exchange{"Dropped", ServerReply::dropped(), failed(error(0, "NETWORK"))},
        Exchange{"CutShort", ServerReply::cutShort("{}"), failed(error(0, "NETWORK"))},
        Exchange{"NotHttp", ServerReply::raw("220 mail.example.com ready\r\n\r\n"), failed(error(0, "NETWORK"))},
        Exchange{"NotPacked",
                 {.body = "plain", .headers = {"Content-Encoding: gzip"}},
                 failed(error(0, "INVALID_RESPONSE"))}),
    [](const auto& each) { return std::string{each.param.name}; });

/// A proxy may pack what the service sends; of such a body it is not known beforehand how long it becomes.
TEST(APIClient, ReadsALargeReplyWholeWhetherItIsPackedOrNot)
{
    std::string text;
    for (int each = 0; each < 300'000; ++each)
        text += std::to_string(each);
    const auto packed = qCompress(reinterpret_cast<const uchar*>(text.data()), static_cast<qsizetype>(text.size()));
    constexpr qsizetype lengthPrefix = 4; // before the packed bytes themselves
    ScriptedServer server;
    server.answer("GET v1/plain", ServerReply::json(text));
    server.answer("GET v1/packed",
                  {.body = packed.mid(lengthPrefix).toStdString(), .headers = {"Content-Encoding: deflate"}});
    const APIClient client{server.url()};
    for (const auto* path : {"v1/plain", "v1/packed"}) {
        const auto body = resultOf(client.bytes({.path = path}));
        ASSERT_TRUE(body.has_value()) << path;
        EXPECT_TRUE(*body == text) << path << " of " << body->size() << " bytes";
    }
}

TEST(APIClient, SendsNothingButTheHeadersThatARequestNeeds)
{
    ScriptedServer server;
    server.answer("GET v1/snapshot", {.body = "{}", .headers = {"Set-Cookie: a=b", "Cache-Control: max-age=9999"}});
    server.answer("PATCH v1/settings", ServerReply::json("{}"));
    const APIClient client{server.url() + "/"};
    ASSERT_TRUE(resultOf(client.bytes({.path = "v1/snapshot"})));
    ASSERT_TRUE(resultOf(client.bytes({.path = "v1/snapshot", .token = "secret"})));
    ASSERT_TRUE(
        resultOf(client.bytes({.method = "PATCH", .path = "v1/settings", .token = "secret", .body = "{\"a\":1}"})));

    ASSERT_EQ(server.requests().size(), 3U);
    const auto& bare = server.requests().at(0);
    const auto& signedIn = server.requests().at(1);
    const auto& change = server.requests().at(2);
    const auto names = [](const ServerRequest& request) {
        std::vector<std::string> all;
        for (const auto& [name, value] : request.headers)
            all.push_back(name);
        return all;
    };
    using Names = std::vector<std::string>;
    EXPECT_EQ(names(bare), (Names{"accept", "accept-encoding", "accept-language", "connection", "host", "user-agent"}));
    EXPECT_EQ(names(signedIn), (Names{"accept", "accept-encoding", "accept-language", "authorization", "connection",
                                      "host", "user-agent"}));
    EXPECT_EQ(bare.header("accept"), "application/json");
    EXPECT_EQ(bare.header("user-agent"), "Tallyfold");
    EXPECT_EQ(signedIn.header("authorization"), "Bearer secret");
    EXPECT_EQ(change.method, "PATCH");
    EXPECT_EQ(change.body, "{\"a\":1}");
    EXPECT_EQ(change.header("content-type"), "application/json");
}

TEST(APIClient, KeepsIdentifiersInsideTheirPathSegment)
{
    ScriptedServer server;
    const APIClient client{server.url()};
    static_cast<void>(resultOf(client.bytes({.path = "v1/accounts/a?b#c d%2F"})));
    ASSERT_EQ(server.requests().size(), 1U);
    EXPECT_EQ(server.requests().front().path, "/v1/accounts/a%3Fb%23c%20d%252F");
}

TEST(APIClient, SendsABodilessCommandWithoutAContentType)
{
    ScriptedServer server;
    server.answer("POST v1/auth/logout", ServerReply::json(""));
    EXPECT_TRUE(resultOf(APIClient{server.url()}.bytes({.method = "POST", .path = "v1/auth/logout", .token = "t"})));
    ASSERT_EQ(server.requests().size(), 1U);
    EXPECT_FALSE(server.requests().front().headers.contains("content-type"));
}

TEST(APIClient, RefusesAnAddressThatMayNotBeUsedBeforeSending)
{
    const APIClient client{"http://192.168.1.10"};
    EXPECT_EQ(resultOf(client.bytes({.path = "v1/snapshot"})), failed(error(0, "INVALID_SERVER_URL")));
}

TEST(APIClient, ReportsAServiceThatDoesNotListenAsUnreachable)
{
    std::string address;
    {
        const ScriptedServer gone;
        address = gone.url();
    }
    EXPECT_EQ(resultOf(APIClient{address}.bytes({.path = "v1/snapshot"})), failed(error(0, "NETWORK")));
}

TEST(APIClient, DecodesRecordsAndRefusesWhatIsNone)
{
    ScriptedServer server;
    server.answer("GET v1/good", ServerReply::json(reversalText));
    server.answer("GET v1/empty", ServerReply::json(""));
    server.answer("GET v1/broken", ServerReply::json(R"({"reason":"typo",)"));
    server.answer("GET v1/lacking", ServerReply::json(R"({"reason":"typo"})"));
    const APIClient client{server.url()};
    EXPECT_EQ(resultOf(client.request<Reversal>({.path = "v1/good"})), (Reversal{"typo", "k", "2026-11-20"}));
    for (const auto* path : {"v1/empty", "v1/broken", "v1/lacking"})
        EXPECT_EQ(resultOf(client.request<Reversal>({.path = path})), failed(error(0, "INVALID_RESPONSE")));
}

TEST(APIClient, LeavesALargeReplyToAWorker)
{
    ScriptedServer server;
    const auto reason = std::string(std::size_t{1} << 20, 'x');
    server.answer("GET v1/large", ServerReply::json(R"({"idempotencyKey":"k","date":"d","reason":")" + reason + "\"}"));
    const APIClient client{server.url()};
    auto workers = std::make_unique<BusyWorkers>();
    auto asking = client.request<Reversal>({.path = "v1/large"});
    exchangeMuch(server);
    EXPECT_FALSE(asking.isReady());
    workers.reset();
    const auto large = resultOf(std::move(asking));
    ASSERT_TRUE(large);
    EXPECT_EQ(large->reason, reason);
}

struct Slowness {
    const char* name;
    TransferLimits limits;
    ServerReply reply;
};

class TransferTimeOut : public testing::TestWithParam<Slowness> {};

TEST_P(TransferTimeOut, GivesTheRequestUpAsUnreachable)
{
    ScriptedServer server;
    server.answer("GET v1/slow", GetParam().reply);
    const APIClient client{server.url(), std::make_shared<HttpSession>(GetParam().limits)};
    EXPECT_EQ(resultOf(client.bytes({.path = "v1/slow"})), failed(error(0, "NETWORK")));
}

const std::string longBody(100'000, 'x');

INSTANTIATE_TEST_SUITE_P(
    Limits, TransferTimeOut,
    testing::Values(Slowness{"NoByteEver", {.idle = soon, .answer = never, .whole = never}, ServerReply::parked()},
                    Slowness{"SilenceInTheBody",
                             {.idle = soon, .answer = never, .whole = never},
                             ServerReply::dripping("{}", never)},
                    Slowness{"NoHeadInTime", {.idle = never, .answer = soon, .whole = never}, ServerReply::parked()},
                    Slowness{"EndlessTrickle",
                             {.idle = never, .answer = never, .whole = soon},
                             ServerReply::dripping(longBody, milliseconds{1})}),
    [](const auto& each) { return std::string{each.param.name}; });

TEST(TransferTimeOut, SparesATransferThatKeepsMoving)
{
    ScriptedServer server;
    // The head comes at once and every byte long before the idle limit, the whole only after both shorter limits.
    server.answer("GET v1/steady", ServerReply::dripping("0123456789012345678901234567890123456789", milliseconds{10}));
    const APIClient client{server.url(),
                           std::make_shared<HttpSession>(TransferLimits{milliseconds{300}, milliseconds{300}, never})};
    EXPECT_EQ(resultOf(client.bytes({.path = "v1/steady"})), "0123456789012345678901234567890123456789");
}

TEST(APIClient, ReusesAConnectionOnlyWhileItIsFresh)
{
    ScriptedServer server;
    server.answer("POST v1/thing", ServerReply::json(""));
    const auto sendTwice = [&](milliseconds reuse) {
        const auto before = server.connectionCount();
        const APIClient client{server.url(), std::make_shared<HttpSession>(TransferLimits{.reuse = reuse})};
        for (int time = 0; time < 2; ++time)
            EXPECT_TRUE(resultOf(client.bytes({.method = "POST", .path = "v1/thing", .body = "{}"})));
        return server.connectionCount() - before;
    };
    EXPECT_EQ(sendTwice(never), 1);
    EXPECT_EQ(sendTwice(milliseconds{0}), 2);
}

TEST(APIClient, EndsAbortedRequestsAsCancelledAtOnce)
{
    ScriptedServer server;
    server.answer("GET v1/one", ServerReply::parked());
    server.answer("GET v1/two", ServerReply::parked());
    const APIClient client{server.url()};
    auto one = client.bytes({.path = "v1/one"});
    auto two = client.bytes({.path = "v1/two"});
    waitUntil([&] { return server.parkedCount() == 2; });
    client.abort();
    ASSERT_TRUE(one.isReady());
    ASSERT_TRUE(two.isReady());
    EXPECT_EQ(resultOf(std::move(one)), failed(Cancelled{}));
    EXPECT_EQ(resultOf(std::move(two)), failed(Cancelled{}));
}

}

#include <deque>
#include <set>
#include <thread>
#include <utility>

#include <gtest/gtest.h>

#include <fmt/core.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Http/Dispatch/FairQueue.h"
#include "LedgerService/Http/RouteTable.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

namespace {

struct Case {
    std::string name;
    std::string bytes; // "{token}" stands for a token
    int status = 0;
    std::string code;
    std::string allow = {};
};

std::string post(std::string_view path, std::string_view body)
{
    return fmt::format("POST {} HTTP/1.1\r\nHost: l\r\nAuthorization: Bearer {{token}}\r\nContent-Length: {}\r\n\r\n{}",
                       path, body.size(), body);
}

/// A request whose body has chunks; what is given follows the header.
std::string chunked(std::string_view rest)
{
    return fmt::format("POST /v1/transactions HTTP/1.1\r\nHost: l\r\nTransfer-Encoding: chunked\r\n\r\n{}", rest);
}

class HttpRefusal : public testing::TestWithParam<Case> {};

}

TEST_P(HttpRefusal, AnswersWithACodeAndGoesOnServing)
{
    TestService service;
    auto bytes = GetParam().bytes;
    if (const auto at = bytes.find("{token}"); at != std::string::npos)
        bytes.replace(at, 7, service.tokenOf("mira"));
    const auto answer = service.client().sendRaw(bytes);
    EXPECT_EQ(answer.status, GetParam().status) << answer.body;
    EXPECT_EQ(answer.code(), GetParam().code);
    EXPECT_EQ(answer.header("allow"), GetParam().allow);
    EXPECT_EQ(service.client().send("GET", "/health/live").status, 200);
}

INSTANTIATE_TEST_SUITE_P(
    Requests, HttpRefusal,
    testing::Values(
        Case{"NotHttp", "hello there\r\n\r\n", 400, "validation_error"},
        Case{"NotJson", post("/v1/transactions", "{\"kind\":"), 400, "validation_error"},
        Case{"MissingFields", post("/v1/transactions", "{}"), 400, "validation_error"},
        Case{"FractionalAmount",
             post("/v1/transactions", R"({"kind":"income","date":"2026-03-10","note":"","currency":"IDR",)"
                                      R"("amountMinor":1.5,"attachmentIDs":[],"idempotencyKey":"k"})"),
             400, "validation_error"},
        Case{"DeepNesting", post("/v1/transactions", std::string(100'000, '[')), 400, "validation_error"},
        Case{"NoBody", "POST /v1/auth/login HTTP/1.1\r\nHost: l\r\nContent-Length: 0\r\n\r\n", 400, "validation_error"},
        Case{"UnknownPath", "GET /v2/snapshot HTTP/1.1\r\nHost: l\r\n\r\n", 404, "not_found"},
        Case{"TrailingSlash", "GET /v1/snapshot/ HTTP/1.1\r\nHost: l\r\n\r\n", 404, "not_found"},
        Case{"EmptySegment", "POST /v1/transactions//reverse HTTP/1.1\r\nHost: l\r\nContent-Length: 0\r\n\r\n", 404,
             "not_found"},
        Case{"NoText", "DELETE /v1/me/drafts/a\xff HTTP/1.1\r\nHost: l\r\n\r\n", 404, "not_found"},
        Case{"WrongMethod", "DELETE /v1/transactions HTTP/1.1\r\nHost: l\r\n\r\n", 405, "method_not_allowed", "POST"},
        Case{"WrongMethodOfAReadPath", "DELETE /health/live HTTP/1.1\r\nHost: l\r\n\r\n", 405, "method_not_allowed",
             "GET, HEAD"},
        Case{"OtherScheme", "GET /v1/snapshot HTTP/1.1\r\nHost: l\r\nAuthorization: Basic {token}\r\n\r\n", 401,
             "unauthorized"},
        Case{"FromAWebPage",
             "POST /v1/auth/login HTTP/1.1\r\nHost: l\r\nOrigin: https://page.example\r\nContent-Length: 2\r\n\r\n{}",
             403, "forbidden"},
        Case{"DeclaredTooLarge", "POST /v1/demo HTTP/1.1\r\nHost: l\r\nContent-Length: 99999999999\r\n\r\n", 413,
             "payload_too_large"},
        Case{"GrownTooLarge",
             "POST /v1/auth/login HTTP/1.1\r\nHost: l\r\nTransfer-Encoding: chunked\r\n\r\n200000\r\n" +
                 std::string(0x200000, 'x') + "\r\n0\r\n\r\n",
             413, "payload_too_large"},
        Case{"LongHeader", "GET /v1/snapshot HTTP/1.1\r\nX-Long: " + std::string(20'000, 'x') + "\r\n\r\n", 431,
             "header_too_large"},
        Case{"EndlessChunkSize", chunked(std::string(100'000, '0')), 400, "validation_error"},
        Case{"EndlessChunkExtension", chunked("1;" + std::string(100'000, 'x')), 400, "validation_error"},
        Case{"EndlessTrailer", chunked("0\r\nX-Long: " + std::string(100'000, 'x')), 400, "validation_error"},
        Case{"TokenInTheTrailer", chunked("2\r\n{}\r\n0\r\nAuthorization: Bearer {token}\r\n\r\n"), 401,
             "unauthorized"},
        Case{"UnknownTransferCoding", "POST /v1/auth/login HTTP/1.1\r\nHost: l\r\nTransfer-Encoding: gzip\r\n\r\n{}",
             501, "not_implemented"},
        Case{"SeveralTransferCodings",
             "POST /v1/auth/login HTTP/1.1\r\nHost: l\r\nTransfer-Encoding: gzip, chunked\r\n\r\n0\r\n\r\n", 501,
             "not_implemented"},
        Case{"TransferCodingInTwoLines",
             "POST /v1/auth/login HTTP/1.1\r\nHost: l\r\nTransfer-Encoding: gzip\r\nTransfer-Encoding: "
             "chunked\r\n\r\n0\r\n\r\n",
             501, "not_implemented"},
        Case{"LengthAndTransferCoding",
             "POST /v1/auth/login HTTP/1.1\r\nHost: l\r\nContent-Length: 2\r\nTransfer-Encoding: "
             "chunked\r\n\r\n2\r\n{}\r\n0\r\n\r\n",
             400, "validation_error"},
        Case{"NoHost", "GET /health/live HTTP/1.1\r\n\r\n", 400, "validation_error"},
        Case{"TwoHosts", "GET /health/live HTTP/1.1\r\nHost: a\r\nHost: b\r\n\r\n", 400, "validation_error"},
        Case{"TwoTokens",
             "GET /v1/snapshot HTTP/1.1\r\nHost: l\r\nAuthorization: Bearer {token}\r\nAuthorization: Bearer "
             "x\r\n\r\n",
             400, "validation_error"}),
    [](const auto& each) { return each.param.name; });

TEST(Http, AnswersManyRequestsOnOneConnectionAndIgnoresQueries)
{
    TestService service;
    auto client = service.client();
    const std::string ask = "GET /health/live?x=1 HTTP/1.1\r\nHost: l\r\n\r\n";
    EXPECT_EQ(client.sendRaw(ask + ask).status, 200) << "two at once";
    EXPECT_EQ(client.sendRaw("").status, 200) << "the second one's answer";
    EXPECT_EQ(client.sendRaw(ask).status, 200);
    EXPECT_EQ(client.sendRaw("GET /health/live HTTP/1.0\r\n\r\n").status, 200);
    EXPECT_TRUE(client.isClosedByService()) << "this one asked for no further requests";
}

TEST(Http, TakesTheFormsOfARequestThatProxiesAndOldClientsSend)
{
    TestService service;
    auto client = service.client();
    EXPECT_EQ(client.sendRaw("GET http://books.example:80/health/live HTTP/1.1\r\nHost: l\r\n\r\n").status, 200);
    EXPECT_EQ(client.sendRaw("GET HTTPS://books.example/health/live?x=/y HTTP/1.1\r\nHost: l\r\n\r\n").status, 200);
    EXPECT_EQ(client.sendRaw("GET http://books.example?/health/live HTTP/1.1\r\nHost: l\r\n\r\n").status, 404);
    client.write("\r");
    EXPECT_EQ(client.sendRaw("\nGET /health/live HTTP/1.1\r\nHost: l\r\n\r\n").status, 200) << "an empty line first";
    EXPECT_EQ(client.sendRaw("GET /health/live HTTP/1.0\r\nConnection: keep-alive\r\n\r\n").status, 200);
    EXPECT_EQ(client.sendRaw("GET /health/live HTTP/1.1\r\nHost: l\r\n\r\n").status, 200) << "it was kept open";
}

TEST(Http, EndsTheConnectionAfterAnUnknownTransferCoding)
{
    TestService service;
    auto client = service.client();
    const auto answer = client.sendRaw("POST /v1/auth/logout HTTP/1.1\r\nHost: l\r\nTransfer-Encoding: gzip\r\n\r\n"
                                       "GET /health/live HTTP/1.1\r\nHost: l\r\n\r\n");
    EXPECT_EQ(answer.status, 501);
    EXPECT_TRUE(client.isClosedByService()) << "what follows could be a body as well as a request";
}

TEST(Http, AnswersHeadLikeGetButWithoutABody)
{
    TestService service;
    auto client = service.client();
    for (const auto& [path, status] : {std::pair{"/health/live", 200}, {"/v1/snapshot", 401}, {"/v1/demo", 405}}) {
        const auto head = client.sendRaw(fmt::format("HEAD {} HTTP/1.1\r\nHost: l\r\n\r\n", path));
        EXPECT_EQ(head.status, status) << path;
        EXPECT_EQ(client.sendRaw("GET /health/live HTTP/1.1\r\nHost: l\r\n\r\n").body, R"({"ok":true})") << path;
    }
}

TEST(Http, TakesTheTokensSchemeInAnyCase)
{
    TestService service;
    const auto ask = "GET /v1/snapshot HTTP/1.1\r\nHost: l\r\nAuthorization: bEARER {}\r\n\r\n";
    EXPECT_EQ(service.client().sendRaw(fmt::format(fmt::runtime(ask), service.tokenOf("mira"))).status, 200);
}

TEST(Http, ReadsWhileEveryWriterWaits)
{
    TestService service;
    const auto token = service.tokenOf("mira");
    std::deque<HttpClient> writers;
    service.write([&](Connection&) {
        for (unsigned each = 0; each < 8 + 4 * std::thread::hardware_concurrency(); ++each) {
            auto input = SampleBooks::expense(10);
            input.idempotencyKey = fmt::format("writer {}", each);
            auto bytes = post("/v1/transactions", Json::encode(input));
            bytes.replace(bytes.find("{token}"), 7, token);
            writers.emplace_back(service.port()).write(bytes);
        }
        EXPECT_EQ(service.client().send("GET", "/v1/snapshot", token).status, 200);
    });
    for (auto& each : writers)
        EXPECT_EQ(each.sendRaw("").status, 200) << "its turn came in time";
}

TEST(Http, CutsOffClientsThatAreTooSlow)
{
    using std::chrono::milliseconds;
    TestService service{[](ServerOptions& options) {
        options.limits.idle = milliseconds{60};
        options.limits.header = milliseconds{60};
        options.limits.body = milliseconds{60};
    }};
    auto silent = service.client();
    auto halfHeader = service.client();
    halfHeader.write("GET /v1/snap");
    auto halfBody = service.client();
    halfBody.write("POST /v1/auth/login HTTP/1.1\r\nHost: l\r\nContent-Length: 50\r\n\r\n{\"email\":");
    EXPECT_TRUE(silent.isClosedByService());
    EXPECT_TRUE(halfHeader.isClosedByService());
    EXPECT_TRUE(halfBody.isClosedByService());
}

TEST(Http, KeepsTheAnswersOfRequestsUnderWayWhenItStops)
{
    TestService service;
    auto client = service.client();
    client.write("POST /v1/auth/login HTTP/1.1\r\nHost: l\r\nContent-Length: 66\r\n\r\n");
    client.write(fmt::format("{:<66}", R"({"email":"mira@sample.example","password":"an open secret"})"));
    auto other = service.client();
    EXPECT_EQ(other.send("GET", "/health/live").status, 200) << "the one network thread has read both";
    service.stop();
    EXPECT_EQ(client.sendRaw("").status, 200);
    EXPECT_TRUE(other.isClosedByService());
}

TEST(RequestIDs, StandInEveryReplyAndNeverTwice)
{
    TestService service;
    const auto token = service.tokenOf("mira");
    auto client = service.client();
    const std::set<std::string> ids{client.send("GET", "/health/live").header("x-request-id"),
                                    client.send("GET", "/v1/snapshot", token).header("x-request-id"),
                                    client.send("POST", "/v1/transactions", token, "{}").header("x-request-id"),
                                    client.send("GET", "/v1/nothing").header("x-request-id"),
                                    client.sendRaw("hello there\r\n\r\n").header("x-request-id")};
    EXPECT_EQ(ids.size(), 5U);
    EXPECT_FALSE(ids.contains(""));
}

TEST(FairQueue, GivesEachClientATurn)
{
    FairQueue<int> queue;
    for (const int each : {1, 2, 3})
        queue.add("much", each);
    queue.add("little", 10);
    const auto taken = [&] {
        std::vector<int> items;
        while (const auto item = queue.take())
            items.push_back(*item);
        return items;
    };
    EXPECT_EQ(taken(), (std::vector{1, 10, 2, 3}));
    queue.add("little", 11);
    queue.add("much", 4);
    queue.add("little", 12);
    EXPECT_EQ(queue.take(), 11);
    queue.add("late", 20);
    EXPECT_EQ(taken(), (std::vector{4, 12, 20}));
}

}

#include "LedgerService/testing/Random/RandomRequests.h"

#include <array>

#include <fmt/core.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Http/Routes/AllRoutes.h"
#include "LedgerService/testing/SampleBooks.h"

namespace LedgerService {

namespace {

using namespace std::string_view_literals;

constexpr std::size_t deep = 20'000;

std::string repeated(std::string_view text, std::size_t times)
{
    std::string all;
    for (std::size_t at = 0; at < times; ++at)
        all += text;
    return all;
}

}

std::string RandomRequests::method(std::string_view usual)
{
    static constexpr std::array others{"GET"sv,     "POST"sv,  "PATCH"sv, "DELETE"sv,  "PUT"sv,     "HEAD"sv,
                                       "OPTIONS"sv, "TRACE"sv, "get"sv,   "CONNECT"sv, "POST\0X"sv, "PROPFIND"sv};
    return std::string{once(4) ? of(others) : usual};
}

std::string RandomRequests::path(std::string_view pattern)
{
    static const std::array ids{std::string{"bank"},     std::string{"sale"},     std::string{"mira"},
                                std::string{"rent"},     std::string{".."},       std::string{"%2e"},
                                std::string{"%00"},      std::string{"a%2Fb"},    std::string{"' OR '1'='1"},
                                std::string(3'000, 'x'), std::string{"\xff\xfe"}, std::string{"\xf0\x9f\x92\xb8"},
                                std::string{"{id}"},     std::string{"%"},        std::string{"sale;x=1"}};
    std::string text;
    while (!pattern.empty()) {
        const auto open = pattern.find('{');
        text += pattern.substr(0, open);
        pattern.remove_prefix(open == std::string_view::npos ? pattern.size() : pattern.find('}') + 1);
        if (open != std::string_view::npos)
            text += of(ids);
    }
    static constexpr std::array fronts{"//"sv,       "/.."sv,         "/./"sv, "/v1/../"sv,
                                       "http://l"sv, "HTTPS://l:1"sv, "*"sv,   ""sv};
    if (once(8))
        text.insert(0, of(fronts));
    if (once(12))
        text += '/';
    return text;
}

std::string RandomRequests::query()
{
    static constexpr std::array queries{"?limit=1"sv,         "?limit=-1"sv, "?limit=99999999999999999999"sv,
                                        "?day=2026-02-30"sv,  "?person=%"sv, "?person=%zz&person=2"sv,
                                        "?kind=%ff%fe"sv,     "??"sv,        "?record=%00"sv,
                                        "?below=1&below=2"sv, "?&&&==&"sv};
    return once(3) ? std::string{of(queries)} : std::string{};
}

std::string RandomRequests::headers()
{
    static constexpr std::array further{"Expect: 100-continue\r\n"sv,
                                        "If-None-Match: \"1-a\", *, W/\"\"\r\n"sv,
                                        "A-IM: entries, , feed;q=0\r\n"sv,
                                        "Prefer: return=minimal, wait=\r\n"sv,
                                        "X-Forwarded-For: ::1, 1.2.3.4.5\r\n"sv,
                                        "Connection: close, upgrade\r\n"sv,
                                        "Upgrade: h2c\r\n"sv,
                                        "Origin: null\r\n"sv,
                                        "Host: second\r\n"sv,
                                        "No-Colon\r\n"sv,
                                        "Folded: a\r\n b\r\n"sv,
                                        "Nul: a\0b\r\n"sv,
                                        "\xc3\xa4: x\r\n"sv,
                                        " Space: x\r\n"sv};
    std::string text = once(10) ? "" : "Host: l\r\n";
    if (!m_tokens.empty() && !once(4))
        text += fmt::format("Authorization: Bearer {}\r\n", of(m_tokens));
    if (once(8))
        text += fmt::format("Authorization: Basic {}\r\n", repeated("=", below(300)));
    while (once(2))
        text += of(further);
    if (once(30))
        text += fmt::format("Long: {}\r\n", repeated("y", 10'000 + below(20'000)));
    return text;
}

std::string RandomRequests::body()
{
    auto posting = SampleBooks::expense(10);
    posting.idempotencyKey = fmt::format("random-{}", below(50));
    const std::array bodies{Json::encode(posting),
                            std::string{"{}"},
                            std::string{},
                            std::string{"null"},
                            repeated("[", deep),
                            repeated(R"({"legs":)", deep / 8),
                            std::string{R"({"email":"mira@sample.example","password":1e999})"},
                            std::string{R"({"amountMinor":9223372036854775808,"idempotencyKey":"a"})"},
                            std::string{R"({"idempotencyKey":"\ud800","action":"pay"})"},
                            std::string{"{\"name\":\"\xff\xc0\x80\"}"},
                            std::string{"\xef\xbb\xbf{\"name\":\"a\",\"name\":\"b\"}"},
                            fmt::format(R"({{"name":"{}","idempotencyKey":"{}"}})", repeated("n", below(90'000)),
                                        repeated("k", below(400))),
                            fmt::format(R"({{"attachmentIDs":["{}"]}})", repeated(R"(","a)", below(9'000))),
                            std::string{R"({"action":"allocate","expectedRevision":-2147483649,"date":"0000-00-00"})"},
                            std::string(below(2'000), '\0')};
    return of(bodies);
}

std::string RandomRequests::framed(std::string body)
{
    static constexpr std::array lengths{"-1"sv, "0x10"sv, "18446744073709551616"sv, "1, 1"sv, ""sv, "999999999"sv};
    static constexpr std::array codings{"gzip, chunked"sv, "identity"sv, "chunked, chunked"sv, "xchunked"sv};
    if (once(12))
        return fmt::format("Content-Length: {}\r\n\r\n{}", of(lengths), body);
    if (once(12))
        return fmt::format("Transfer-Encoding: {}\r\n\r\n{}", of(codings), body);
    if (once(12))
        return fmt::format("Content-Length: {}\r\nTransfer-Encoding: chunked\r\n\r\n{}", body.size(), body);
    if (once(3)) {
        const auto half = body.size() / 2;
        return fmt::format("Transfer-Encoding: chunked\r\n\r\n{:x}{}\r\n{}\r\n{:X}\r\n{}\r\n0\r\n{}\r\n", half,
                           once(3) ? ";x=\"y\"" : "", body.substr(0, half), body.size() - half, body.substr(half),
                           once(3) ? "Authorization: Bearer z\r\n" : "");
    }
    return fmt::format("Content-Length: {}\r\n\r\n{}", body.size(), body);
}

/// Changes a few bytes, or leaves out, doubles or cuts off a part.
void RandomRequests::bend(std::string& bytes)
{
    for (auto times = 1 + below(4); times > 0 && !bytes.empty(); --times) {
        const auto at = below(bytes.size());
        const auto size = 1 + below(20);
        switch (below(5)) {
        case 0:
            bytes[at] = static_cast<char>(below(256));
            break;
        case 1:
            bytes.erase(at, size);
            break;
        case 2:
            bytes.insert(at, bytes.substr(at, size));
            break;
        case 3:
            bytes.insert(at, "\r\n");
            break;
        default:
            bytes.resize(at);
        }
    }
}

std::string RandomRequests::next()
{
    const auto& route = of(allRoutes());
    auto bytes = fmt::format("{} {}{} HTTP/{}\r\n{}", method(route.method), path(route.pattern), query(),
                             once(10)   ? "1.0"
                             : once(20) ? "9.9"
                                        : "1.1",
                             headers());
    bytes += route.method == "GET" && !once(6) ? std::string{"\r\n"} : framed(body());
    if (once(3))
        bend(bytes);
    return bytes;
}

}

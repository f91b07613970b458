#include <gtest/gtest.h>
#include <zlib.h>
#include <zstd.h>

#include "LedgerCore/Client/Http/APIClient.h"
#include "LedgerCore/Client/testing/Failed.h"
#include "LedgerCore/Client/testing/SignalCount.h"
#include "LedgerCore/Client/testing/StoreUnderTest.h"

namespace {

const Failure unreadable = APIError{0, "INVALID_RESPONSE", ""};

std::string gzipped(std::string text)
{
    constexpr int gzipFrame = MAX_WBITS + 16;
    z_stream stream{};
    deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, gzipFrame, MAX_MEM_LEVEL, Z_DEFAULT_STRATEGY);
    std::string packed(deflateBound(&stream, text.size()), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(text.data());
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

std::string zstandard(const std::string& text)
{
    std::string packed(ZSTD_compressBound(text.size()), '\0');
    packed.resize(ZSTD_compress(packed.data(), packed.size(), text.data(), text.size(), 1));
    return packed;
}

struct Coding {
    std::string name;
    std::string (*pack)(std::string);

    [[nodiscard]] ServerReply reply(std::string packed, std::vector<std::string> headers = {}) const
    {
        headers.push_back("Content-Encoding: " + name);
        return {.body = std::move(packed), .headers = std::move(headers)};
    }
};

class PackedReply : public testing::TestWithParam<Coding> {};

const auto books = snapshot().account("bank", {"USD"}).grantAll().income("t1", "2026-11-01", "bank", "USD", 500);
const auto newerBooks = SnapshotBuilder{books}.expense("t2", "2026-11-02", "bank", "USD", 100);

TEST_P(PackedReply, IsAskedForAndReadLikeAPlainOne)
{
    std::string text;
    for (int each = 0; each < 300'000; ++each)
        text += std::to_string(each * 7919LL);
    ScriptedServer server;
    server.answer("GET v1/thing", GetParam().reply(GetParam().pack(text)));
    const auto body = resultOf(APIClient{server.url()}.bytes({.path = "v1/thing"}));
    ASSERT_TRUE(body.has_value());
    EXPECT_TRUE(*body == text) << body->size() << " bytes";
    EXPECT_NE(server.requests().front().header("accept-encoding").find(GetParam().name), std::string::npos);
}

/// Small books whose long notes repeat unpack to far more than they come in.
TEST_P(PackedReply, MayUnpackToAHundredTimesItsSize)
{
    const std::string text(50'000'000, 'x');
    ScriptedServer server;
    server.answer("GET v1/thing", GetParam().reply(GetParam().pack(text)));
    EXPECT_TRUE(resultOf(APIClient{server.url()}.bytes({.path = "v1/thing"})) == text);
}

TEST_P(PackedReply, IsRefusedWhereItUnpacksToMoreThanABodyMayHave)
{
    constexpr std::int64_t most = 1'000'000;
    const std::string within(most, 'x');
    ScriptedServer server;
    server.answer("GET v1/within", GetParam().reply(GetParam().pack(within)));
    server.answer("GET v1/beyond", GetParam().reply(GetParam().pack(within + 'x')));
    server.answer("GET v1/bomb", GetParam().reply(GetParam().pack(std::string(400'000'000, '\0'))));
    server.answer("GET v1/refusal", [] {
        auto reply = GetParam().reply(GetParam().pack(std::string(most + 1, ' ')));
        reply.status = 500;
        return reply;
    }());
    server.answer("GET v1/plain", ServerReply::json(within + 'x'));
    const APIClient client{server.url(), std::make_shared<HttpSession>(TransferLimits{.bodyBytes = most})};
    EXPECT_TRUE(resultOf(client.bytes({.path = "v1/within"})) == within);
    for (const auto* path : {"v1/beyond", "v1/bomb", "v1/refusal", "v1/plain"})
        EXPECT_EQ(resultOf(client.bytes({.path = path})), failed(unreadable)) << path;
    EXPECT_TRUE(resultOf(client.bytes({.path = "v1/within"})) == within) << "the client goes on";
}

TEST_P(PackedReply, ThatIsDamagedOrEndsTooSoonLeavesTheBooksAsTheyAre)
{
    StoreUnderTest test;
    test.signIn(books);
    const auto held = test.store.snapshot();
    const auto packed = GetParam().pack(newerBooks.json());
    auto damaged = packed;
    damaged[damaged.size() / 2] ^= 0x20;
    const auto cutShort = packed.substr(0, packed.size() / 2);
    for (const auto& body : {damaged, cutShort, packed.substr(0, 5), std::string{"{}"}}) {
        test.server.replace("GET v1/snapshot", GetParam().reply(body));
        EXPECT_FALSE(resultOf(test.store.refresh(true)).has_value())
            << body.size() << " of " << packed.size() << " bytes";
        EXPECT_EQ(test.store.snapshot(), held);
    }
    test.server.replace("GET v1/snapshot", GetParam().reply(packed));
    EXPECT_TRUE(resultOf(test.store.refresh(true)).has_value());
    EXPECT_EQ(*test.store.snapshot(), newerBooks.build());
}

INSTANTIATE_TEST_SUITE_P(Codings, PackedReply,
                         testing::Values(Coding{"gzip", &gzipped},
                                         Coding{"zstd", [](std::string text) { return zstandard(text); }}),
                         [](const auto& each) { return each.param.name; });

/// A service, or a proxy, says by a weak tag that these are other bytes of the same state.
TEST(PackedDelta, BuildsOnTheStateOfAWeakTag)
{
    StoreUnderTest test;
    test.server.replace("POST v1/auth/login", {.body = books.signInJson(), .headers = {"ETag: W/\"1\""}});
    ASSERT_TRUE(resultOf(test.store.login("m1@example.com", "secret")));
    auto next = newerBooks.build();
    next.transactions = {newerBooks.build().transactions.back()};
    auto body = Json::encode(next);
    body.pop_back();
    body += R"(,"entryCount":2,"attachmentCount":0})";
    test.server.answer("GET v1/snapshot",
                       {.status = 226, .body = body, .headers = {"ETag: W/\"2\"", "IM: entries", "Delta-Base: \"1\""}});
    EXPECT_TRUE(resultOf(test.store.refresh(true)).has_value());
    EXPECT_EQ(*test.store.snapshot(), newerBooks.build());
    const auto asked = test.server.requests("GET v1/snapshot");
    ASSERT_EQ(asked.size(), 1U) << "the whole is not needed";
    EXPECT_EQ(asked.front().header("if-none-match"), "W/\"1\"");
}

}

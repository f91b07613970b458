#include "LedgerCore/Client/Snapshots/EntryStream.h"

#include <random>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "LedgerCore/Client/testing/BusyWorkers.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/testing/SnapshotBuilder.h"

namespace {

using Random = std::mt19937;

/// What is read of a text that arrives in pieces of random lengths.
std::optional<LedgerSnapshot> inPieces(std::string_view text, Random& random, std::size_t longest)
{
    EntryStream stream;
    while (!text.empty()) {
        const auto length = std::min<std::size_t>(1 + random() % longest, text.size());
        stream.take(text.substr(0, length));
        text.remove_prefix(length);
    }
    auto split = std::move(stream).finish();
    if (!split)
        return std::nullopt;
    auto snapshot = Json::decode<LedgerSnapshot>(split->rest);
    if (!snapshot || !split->complete(*snapshot))
        return std::nullopt;
    return std::move(*snapshot);
}

std::optional<LedgerSnapshot> whole(std::string_view text)
{
    auto snapshot = Json::decode<LedgerSnapshot>(text);
    return snapshot ? std::optional{std::move(*snapshot)} : std::nullopt;
}

/// Books whose texts look like the structure around them.
LedgerSnapshot books(std::size_t entries)
{
    auto builder = snapshot().account("bank", {"USD"});
    for (std::size_t each = 0; each < entries; ++each)
        builder.income(fmt::format("e{}", each), "2026-11-01", "bank", "USD", static_cast<std::int64_t>(each))
            .note(each % 3 ? "\"transactions\":[{\\" : "}],\"x\\\\\":[\n Đảo 餐");
    return builder.build();
}

TEST(EntryStream, ReadsWhatTheDecoderOfTheWholeReads)
{
    Random random{1};
    for (const std::size_t entries : {0U, 1U, 255U, 256U, 257U, 700U}) {
        const auto expected = books(entries);
        const auto text = Json::encode(expected);
        for (const std::size_t longest : {1U, 3U, 1000U, 100'000U})
            ASSERT_EQ(inPieces(text, random, longest), expected) << entries << " entries in pieces of " << longest;
    }
}

/// More blocks than may wait: some are decoded by a worker, or all of them here where none is free.
TEST(EntryStream, ReadsManyBlocksInTheirOrderWhoeverDecodesThem)
{
    constexpr std::size_t entries = 20 * EntryList::blockSize;
    Random random{7};
    const auto expected = books(entries);
    const auto text = Json::encode(expected);
    auto damaged = text;
    damaged.replace(damaged.find("\"id\":\"e2000\""), 4, "\"ID\"");
    const auto readBoth = [&] {
        EXPECT_EQ(inPieces(text, random, 100'000), expected);
        EXPECT_EQ(inPieces(damaged, random, 100'000), std::nullopt);
    };
    for (int round = 0; round < 5; ++round)
        readBoth();
    const BusyWorkers busy;
    readBoth();
}

TEST(EntryStream, TakesEntriesOutOfTheSnapshotOfASignIn)
{
    const auto expected = books(300);
    EntryStream stream;
    stream.take(R"({ "token" : "t" , "snapshot" : )" + Json::encode(expected) + " }");
    const auto split = std::move(stream).finish();
    ASSERT_TRUE(split);
    EXPECT_EQ(split->entries, expected.transactions);
    auto rest = expected;
    rest.transactions.clear();
    EXPECT_EQ(split->rest, R"({ "token" : "t" , "snapshot" : )" + Json::encode(rest) + " }");
}

/// Bytes of a reply that were damaged on their way, or that another program wrote.
TEST(EntryStream, RefusesWhatTheDecoderOfTheWholeRefuses)
{
    Random random{20261122};
    const auto sound = Json::encode(books(260));
    const auto list = sound.find("\"transactions\":[");
    constexpr std::string_view bytes = "{}[],:\"\\ x1\n";
    std::size_t refused = 0;
    for (int each = 0; each < 3000; ++each) {
        auto text = sound;
        // Mostly where the list begins and ends, and where one block follows another.
        const auto from = random() % 3 ? random() % text.size() : list + random() % 60;
        const auto byte = bytes[random() % bytes.size()];
        switch (random() % 4) {
        case 0:
            text.erase(from, 1 + random() % 3);
            break;
        case 1:
            text.insert(from, 1, byte);
            break;
        case 2:
            text.resize(from);
            break;
        default:
            text[from] = byte;
        }
        const auto expected = whole(text);
        refused += expected ? 0 : 1;
        ASSERT_EQ(inPieces(text, random, 5000), expected) << text.substr(from < 40 ? 0 : from - 40, 80);
    }
    EXPECT_GT(refused, 1000U);
}

struct Doubtful {
    const char* name;
    std::string text;
};

class EntryStreamDoubt : public testing::TestWithParam<Doubtful> {};

TEST_P(EntryStreamDoubt, IsRefused)
{
    Random random{7};
    EXPECT_EQ(inPieces(GetParam().text, random, 100), std::nullopt);
}

std::string with(std::string_view what, std::string_view instead)
{
    auto text = Json::encode(books(257));
    text.replace(text.find(what), what.size(), instead);
    return text;
}

std::string behindBlock(std::string_view instead)
{
    auto text = Json::encode(books(257));
    const std::string comma = "},{\"id\":\"e256\"";
    text.replace(text.find(comma) + 1, 1, instead);
    return text;
}

INSTANTIATE_TEST_SUITE_P(Texts, EntryStreamDoubt,
                         testing::Values(Doubtful{"EntriesTwice",
                                                  with("\"attachments\":", "\"transactions\":[],\"attachments\":")},
                                         Doubtful{"NoCommaBehindABlock", behindBlock(" ")},
                                         Doubtful{"TwoCommasBehindABlock", behindBlock(",,")},
                                         Doubtful{"EndedByABrace", with("],\"attachments\"", "},\"attachments\"")},
                                         Doubtful{"CommaBeforeTheEnd", with("],\"attachments\"", ",],\"attachments\"")},
                                         Doubtful{"NoEntriesAtAll", with("\"transactions\"", "\"entries\"")},
                                         Doubtful{"CutShort", Json::encode(books(300)).substr(0, 60'000)},
                                         Doubtful{"NotAnEntry", with("\"transactions\":[", "\"transactions\":[5,")}),
                         [](const auto& each) { return std::string{each.param.name}; });

}

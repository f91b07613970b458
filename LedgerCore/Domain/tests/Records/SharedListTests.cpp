#include "LedgerCore/Domain/Records/SharedList.h"

#include <optional>
#include <random>
#include <ranges>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/EntryPlaces.h"

namespace {

constexpr auto blockSize = SharedList<std::string>::blockSize;

std::string nameOf(std::size_t at)
{
    return "record " + std::to_string(at);
}

SharedList<std::string> listOf(std::size_t size)
{
    SharedList<std::string> list;
    for (std::size_t at = 0; at < size; ++at)
        list.push_back(nameOf(at));
    return list;
}

TEST(SharedList, ReadsLikeAVectorWhateverIsDoneToItAndToItsCopies)
{
    std::mt19937 random{20261122};
    SharedList<std::string> list = listOf(3 * blockSize - 2);
    auto expected = list.toVector();
    std::vector<std::pair<SharedList<std::string>, std::vector<std::string>>> kept;
    for (int step = 0; step < 400; ++step) {
        const auto at = random() % expected.size();
        switch (random() % 5) {
        case 0:
            kept.emplace_back(list, expected);
            break;
        case 1:
            list[at] += "!";
            expected[at] += "!";
            break;
        case 2:
            list.pop_back();
            expected.pop_back();
            break;
        default:
            list.push_back(nameOf(at));
            expected.push_back(nameOf(at));
        }
        ASSERT_EQ(list.size(), expected.size());
        ASSERT_TRUE(std::ranges::equal(list, expected)) << "in step " << step;
    }
    for (const auto& [copy, then] : kept)
        ASSERT_TRUE(std::ranges::equal(copy, then)) << "what a copy holds is never changed";
}

TEST(SharedList, SharesWithItsCopyWhatNeitherHasChanged)
{
    const auto list = listOf(3 * blockSize + 5);
    auto copy = list;
    copy[blockSize] = "changed";
    copy.push_back("new");
    const auto shares = [&](std::size_t block) { return list.sharesBlock(copy, block); };
    EXPECT_TRUE(shares(0) && shares(2));
    EXPECT_FALSE(shares(1) || shares(3));
    EXPECT_EQ(&list[0], &std::as_const(copy)[0]);
    EXPECT_NE(list, copy);
    copy.pop_back();
    copy[blockSize] = list[blockSize];
    EXPECT_EQ(list, copy) << "equal records lie apart by now";
}

TEST(SharedList, TakesWholeBlocksAndLooseRecordsInTheirOrder)
{
    SharedList<std::string> list;
    const auto all = listOf(2 * blockSize + 40).toVector();
    const auto part = [&](std::size_t from, std::size_t to) {
        return std::vector<std::string>(all.begin() + static_cast<std::ptrdiff_t>(from),
                                        all.begin() + static_cast<std::ptrdiff_t>(to));
    };
    list.append(part(0, blockSize));
    list.append({});
    list.append(part(blockSize, blockSize + 30));
    list.append(part(blockSize + 30, all.size()));
    EXPECT_EQ(list.toVector(), all);
    const auto text = Json::encode(list);
    EXPECT_EQ(text, Json::encode(all));
    EXPECT_EQ(Json::decode<SharedList<std::string>>(text), list);
}

TEST(SharedList, FiltersLikeACopyAndSharesUntilTheFirstRecordLeftOut)
{
    std::mt19937 random{20261123};
    const auto list = listOf(3 * blockSize + 40);
    const auto all = [](const std::string&) { return true; };
    EXPECT_TRUE(list.filtered(all).sharesBlock(list, 3));
    for (int round = 0; round < 40; ++round) {
        std::set<std::string> without;
        std::set<std::string> cut;
        for (std::size_t each = random() % 4; each > 0; --each)
            (random() % 2 == 0 ? without : cut).insert(list[random() % list.size()]);
        const auto passes = [&](const std::string& record) {
            return !without.contains(record) && !cut.contains(record);
        };
        std::vector<std::string> expected;
        for (const auto& record : list) {
            if (!without.contains(record))
                expected.push_back(cut.contains(record) ? record.substr(3) : record);
        }
        auto filtered = list.filtered(passes, [&](const std::string& record) {
            return cut.contains(record) ? std::optional{record.substr(3)} : std::nullopt;
        });
        ASSERT_EQ(filtered.toVector(), expected);
        EXPECT_EQ(filtered.sharesBlock(list, 0), std::ranges::equal(filtered.toVector() | std::views::take(blockSize),
                                                                    list.toVector() | std::views::take(blockSize)));
        filtered.push_back("new");
        expected.emplace_back("new");
        ASSERT_EQ(filtered.toVector(), expected);
        ASSERT_EQ(list, listOf(list.size())) << "what it was made of stays as it is";
    }
}

TEST(EntryPlaces, FindsEveryEntryOfAListThatGrows)
{
    EntryList entries;
    EntryPlaces places;
    EXPECT_EQ(places.find(entries, "e0"), EntryPlaces::none);
    for (std::uint32_t size : {1U, 7U, 8U, 9U, 700U}) {
        while (entries.size() < size)
            entries.emplace_back().id = "e" + std::to_string(entries.size());
        const auto before = places;
        places.extend(entries);
        for (std::uint32_t at = 0; at < size; ++at)
            ASSERT_EQ(places.find(entries, "e" + std::to_string(at)), at) << "of " << size;
        EXPECT_EQ(places.find(entries, "e" + std::to_string(size)), EntryPlaces::none);
        EXPECT_EQ(before.find(entries, "e" + std::to_string(size - 1)), EntryPlaces::none);
    }
    entries.emplace_back().id = "e3";
    places.extend(entries);
    EXPECT_EQ(places.find(entries, "e3"), 3U) << "the first of two";
}

}

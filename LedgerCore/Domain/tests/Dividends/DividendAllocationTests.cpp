#include "LedgerCore/Domain/Dividends/DividendAllocationCalculator.h"

#include <algorithm>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "LedgerCore/Domain/Money/Money.h"

namespace {

using enum DividendError;

std::vector<DividendParticipant> people(std::initializer_list<const char*> ids)
{
    std::vector<DividendParticipant> made;
    for (const auto* id : ids)
        made.push_back({.id = id, .name = std::string{"Name of "} + id, .memberID = {}});
    return made;
}

struct Split {
    const char* name;
    std::int64_t totalMinor;
    std::vector<DividendShare> shares;
    std::vector<std::int64_t> amounts;
};

class Allocation : public testing::TestWithParam<Split> {};

TEST_P(Allocation, GivesLeftoverUnitsToTheLargestRemainders)
{
    const auto lines =
        DividendAllocationCalculator::allocate(GetParam().totalMinor, GetParam().shares, people({"C", "B", "A"}));
    ASSERT_TRUE(lines.has_value());
    std::vector<std::int64_t> amounts;
    std::ranges::transform(*lines, std::back_inserter(amounts), &DividendLine::amountMinor);
    EXPECT_EQ(amounts, GetParam().amounts);
    EXPECT_EQ(lines->front().participantID, GetParam().shares.front().participantID);
    EXPECT_EQ(lines->front().participantName, "Name of " + GetParam().shares.front().participantID);
}

INSTANTIATE_TEST_SUITE_P(
    Splits, Allocation,
    testing::Values(Split{"ThirdsOfAHundred", 100, {{"A", 3333}, {"B", 3333}, {"C", 3334}}, {33, 33, 34}},
                    Split{"HalvesOfOneUnitGoByIdentifier", 1, {{"B", 5000}, {"A", 5000}}, {0, 1}},
                    Split{"WholeToOne", Money::maximumMinor, {{"A", 10000}}, {Money::maximumMinor}},
                    Split{"ZeroRatioGetsNothing", 7, {{"A", 0}, {"B", 10000}}, {0, 7}},
                    // 19999 * 3334 / 10000 = 6667.6666, 19999 * 3333 / 10000 = 6665.6667 twice: two units are left
                    Split{"TwoLeftOver", 19999, {{"A", 3334}, {"B", 3333}, {"C", 3333}}, {6667, 6666, 6666}},
                    Split{"LargestAmountInThirds",
                          Money::maximumMinor,
                          {{"A", 3333}, {"B", 3333}, {"C", 3334}},
                          {2'999'700'000'000, 2'999'700'000'000, 3'000'600'000'000}}),
    [](const auto& each) { return std::string{each.param.name}; });

struct Unsplit {
    const char* name;
    std::int64_t totalMinor;
    std::vector<DividendShare> shares;
    std::vector<DividendParticipant> participants;
    DividendError error;
};

class AllocationRefusal : public testing::TestWithParam<Unsplit> {};

TEST_P(AllocationRefusal, SplitsNothing)
{
    const auto lines =
        DividendAllocationCalculator::allocate(GetParam().totalMinor, GetParam().shares, GetParam().participants);
    ASSERT_FALSE(lines.has_value());
    EXPECT_EQ(lines.error(), GetParam().error);
}

std::vector<DividendParticipant> archivedA()
{
    auto all = people({"A", "B"});
    all.front().archived = true;
    return all;
}

std::vector<DividendShare> hundredAndOne()
{
    std::vector<DividendShare> shares;
    for (int at = 0; at < 101; ++at)
        shares.push_back({"p" + std::to_string(at), at == 0 ? 10000 : 0});
    return shares;
}

INSTANTIATE_TEST_SUITE_P(
    Requests, AllocationRefusal,
    testing::Values(
        Unsplit{"Zero", 0, {{"A", 10000}}, people({"A"}), invalidAmount},
        Unsplit{"PastTheLimit", Money::maximumMinor + 1, {{"A", 10000}}, people({"A"}), invalidAmount},
        Unsplit{"NoShares", 1, {}, people({"A"}), invalidShares},
        Unsplit{"TooManyShares", 1, hundredAndOne(), people({"A"}), invalidShares},
        Unsplit{"Short", 1, {{"A", 9999}}, people({"A"}), invalidShares},
        Unsplit{"Over", 1, {{"A", 5000}, {"B", 5001}}, people({"A", "B"}), invalidShares},
        Unsplit{"NegativeRatio", 1, {{"A", -1}, {"B", 10000}, {"C", 1}}, people({"A", "B", "C"}), invalidShares},
        Unsplit{"RatioPastTheWhole", 1, {{"A", 10001}, {"B", -1}}, people({"A", "B"}), invalidShares},
        Unsplit{"SameTwice", 1, {{"A", 5000}, {"A", 5000}}, people({"A"}), invalidShares},
        Unsplit{"NoIdentifier", 1, {{"", 10000}}, people({""}), invalidShares},
        Unsplit{"Unknown", 1, {{"Z", 10000}}, people({"A"}), participantUnavailable},
        Unsplit{"Archived", 1, {{"A", 10000}}, archivedA(), participantUnavailable},
        Unsplit{"ParticipantsShareAnIdentifier", 1, {{"A", 10000}}, people({"A", "B", "B"}), participantUnavailable}),
    [](const auto& each) { return std::string{each.param.name}; });

RC_GTEST_PROP(AllocationProperty, AddsUpToTheTotalAndStaysWithinOneUnitOfTheExactShare, ())
{
    const auto total = *rc::gen::inRange<std::int64_t>(1, Money::maximumMinor + 1);
    const auto cuts =
        *rc::gen::container<std::vector<int>>(*rc::gen::inRange<std::size_t>(0, 99), rc::gen::inRange(0, 10001));
    auto edges = cuts;
    edges.push_back(0);
    edges.push_back(10000);
    std::ranges::sort(edges);
    std::vector<DividendShare> shares;
    std::vector<DividendParticipant> participants;
    for (std::size_t at = 0; at + 1 < edges.size(); ++at) {
        shares.push_back({"p" + std::to_string(at), edges[at + 1] - edges[at]});
        participants.push_back({.id = shares.back().participantID, .name = "", .memberID = {}});
    }

    const auto lines = DividendAllocationCalculator::allocate(total, shares, participants);
    RC_ASSERT(lines.has_value());
    std::int64_t sum = 0;
    for (const auto& line : *lines) {
        sum += line.amountMinor;
        const auto difference =
            static_cast<__int128>(line.amountMinor) * 10000 - static_cast<__int128>(total) * line.ratioBps;
        RC_ASSERT(difference > -10000 && difference < 10000);
    }
    RC_ASSERT(sum == total);
}

}

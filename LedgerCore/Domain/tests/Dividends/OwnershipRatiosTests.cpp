#include "LedgerCore/Domain/Dividends/OwnershipRatios.h"

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Dividends/DividendCommands.h"

namespace {

using Participants = std::vector<DividendParticipant>;

const std::vector<CapitalParticipant> owners{
    {"o1", "Ann", "m1", false}, {"o2", "Bo", {}, false}, {"o3", "Cy", "m3", false}, {"o4", "Dee", {}, false}};

CapitalOwnershipVersion shares(std::vector<CapitalOwnershipLine> lines)
{
    return {.id = "v", .date = "2026-01-01", .createdAt = "", .entries = std::move(lines)};
}

struct RatiosCase {
    const char* name;
    std::vector<CapitalOwnershipLine> shares;
    Participants participants;
    Participants changed;
};

class Ratios : public testing::TestWithParam<RatiosCase> {};

TEST_P(Ratios, FollowTheShares)
{
    EXPECT_EQ(OwnershipRatios::changed(shares(GetParam().shares), owners, GetParam().participants), GetParam().changed);
}

INSTANTIATE_TEST_SUITE_P(
    Shares, Ratios,
    testing::Values(RatiosCase{"NewParticipants",
                               {{"o1", "Ann", 7'000}, {"o2", "Bo", 3'000}, {"o4", "Dee", 0}},
                               {},
                               {{"", "Ann", "m1", 7'000, false}, {"", "Bo", {}, 3'000, false}}},
                    RatiosCase{"TheSameMemberUnderAnotherName",
                               {{"o1", "Ann", 10'000}},
                               {{"p1", "Mrs. A.", "m1", 1, false}},
                               {{"p1", "Mrs. A.", "m1", 10'000, false}}},
                    RatiosCase{"TheSameNameWithoutAMember",
                               {{"o3", "Cy", 10'000}},
                               {{"p1", " Cy ", {}, 1, true}},
                               {{"p1", " Cy ", "m3", 10'000, false}}},
                    RatiosCase{"TheSameNameTypedInMoreSigns",
                               {{"o9", "Hu\u1EC7", 10'000}},
                               {{"p1", "Hue\u0323\u0302", {}, 0, false}},
                               {{"p1", "Hue\u0323\u0302", {}, 10'000, false}}},
                    RatiosCase{"TheSameNameOfAnotherMember",
                               {{"o2", "Bo", 10'000}},
                               {{"p1", "Bo", "m9", 0, false}},
                               {{"", "Bo", {}, 10'000, false}}},
                    RatiosCase{
                        "OthersTakeNoPart",
                        {{"o2", "Bo", 10'000}},
                        {{"p1", "Eve", {}, 4'000, false}, {"p2", "Bo", {}, 6'000, false}, {"p3", "Fay", {}, 50, true}},
                        {{"p2", "Bo", {}, 10'000, false}, {"p1", "Eve", {}, 0, false}}},
                    RatiosCase{"NothingDiffers", {{"o2", "Bo", 10'000}}, {{"p2", "Bo", {}, 10'000, false}}, {}}),
    [](const auto& each) { return std::string{each.param.name}; });

TEST(DividendCommand, CopiesTheSharesOnlyByRightAndOnlyWhenTheyAreInForce)
{
    LedgerSnapshot snapshot;
    auto& member = snapshot.currentMember;
    member.active = true;
    member.permissions = {"manageCompany", "viewDividends", "viewCapital"};
    snapshot.capital.emplace().participants = owners;
    snapshot.capital->ownershipVersions = {shares({{"o1", "Ann", 10'000}})};
    const auto on = [&](const char* day) {
        return DividendCommands::fillFromOwnership(DividendContext::of(snapshot), {day, "key"});
    };
    EXPECT_EQ(on("2026-01-01").value().action, "fillFromOwnership");
    EXPECT_EQ(on("2025-12-31").error(), DividendRefusal::ownershipMissing);
    snapshot.capital->ownershipVersions.front().entries.front().ownershipBps = 9'999;
    EXPECT_EQ(on("2026-01-01").error(), DividendRefusal::ownershipMissing) << "part of the company is not all of it";
    snapshot.capital.reset();
    EXPECT_EQ(on("2026-01-01").error(), DividendRefusal::ownershipMissing);
    member.permissions = {"manageCompany", "viewDividends"};
    EXPECT_EQ(on("2026-01-01").error(), DividendRefusal::noAuthority);
}

}

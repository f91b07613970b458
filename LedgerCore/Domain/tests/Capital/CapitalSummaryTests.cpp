#include "LedgerCore/Domain/Capital/CapitalSummary.h"

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Capital/CapitalAccess.h"
#include "LedgerCore/Domain/Capital/CapitalMath.h"
#include "LedgerCore/Domain/Money/Money.h"

namespace {

CapitalContribution contribution(std::string id, std::string owner, std::int64_t amount, std::string date)
{
    CapitalContribution made;
    made.id = std::move(id);
    made.participantID = std::move(owner);
    made.currency = "USD";
    made.amountMinor = amount;
    made.date = std::move(date);
    return made;
}

CapitalBaseline baseline(std::string id, std::string through, std::string date, std::vector<CapitalAmountLine> lines)
{
    CapitalBaseline made;
    made.id = std::move(id);
    made.currency = "USD";
    made.throughDate = std::move(through);
    made.date = std::move(date);
    made.entries = std::move(lines);
    return made;
}

CapitalOwnershipVersion version(std::string date, std::vector<CapitalOwnershipLine> lines)
{
    return {.id = "v" + date, .date = date, .createdAt = date + "T08:00:00Z", .entries = std::move(lines)};
}

/// Two owners: 1,000.00 and 500.00 from before 2024, then three contributions of which one was reversed later.
CapitalState section()
{
    CapitalState state;
    state.participants = {{.id = "ann", .name = "Ann", .memberID = {}}, {.id = "bo", .name = "Bo", .memberID = {}}};
    state.baselines = {baseline("b1", "2023-12-31", "2024-01-05", {{"ann", "Ann", 100000}, {"bo", "Bo", 50000}})};
    state.ownershipVersions = {version("2024-01-01", {{"ann", "Ann", 6000}, {"bo", "Bo", 4000}}),
                               version("2024-07-01", {{"ann", "Ann", 10000}})};
    state.contributions = {contribution("c1", "ann", 20000, "2024-01-01"), contribution("c2", "bo", 3000, "2024-06-30"),
                           contribution("c3", "bo", 700, "2024-07-01"), contribution("c4", "bo", -3000, "2024-08-01")};
    state.contributions[1].reversedBy = "c4";
    state.contributions[3].reversalOf = "c2";
    return state;
}

TEST(CapitalSummary, AddsHistoryContributionsAndReversalsPerOwner)
{
    const auto summary = CapitalSummary::create(section(), "USD", "2024-06-01", "2024-07-31");
    ASSERT_TRUE(summary.has_value());
    ASSERT_EQ(summary->participants.size(), 2u);
    EXPECT_EQ(summary->participants[0], (CapitalParticipantSummary{"ann", "Ann", 120000, 120000, 0, 10000}));
    EXPECT_EQ(summary->participants[1], (CapitalParticipantSummary{"bo", "Bo", 50700, 50700, 3700, std::nullopt}));
    EXPECT_EQ(summary->recordedMinor, 170700);
    EXPECT_EQ(summary->totalMinor, 170700);
    EXPECT_EQ(summary->periodMinor, 3700);
    EXPECT_EQ(summary->ownershipVersion->date, "2024-07-01");
}

TEST(CapitalSummary, TakesAReversalOffThePeriodInWhichItIsBooked)
{
    EXPECT_EQ(CapitalSummary::create(section(), "USD", "2024-08-01", std::nullopt)->periodMinor, -3000);
    EXPECT_EQ(CapitalSummary::create(section(), "USD", std::nullopt, std::nullopt)->periodMinor, 20700);
    EXPECT_EQ(CapitalSummary::create(section(), "USD", "2024-06-30", "2024-07-01")->periodMinor, 3700);
    EXPECT_EQ(CapitalSummary::create(section(), "USD", "2024-07-01", "2024-07-01")->periodMinor, 700);
    EXPECT_EQ(CapitalSummary::create(section(), "USD", std::nullopt, "2024-06-30")->ownershipVersion->date,
              "2024-01-01");
    EXPECT_EQ(CapitalSummary::create(section(), "USD", std::nullopt, "2023-12-31")->ownershipVersion, std::nullopt);
}

TEST(CapitalSummary, LeavesTotalsOutWhileTheHistoryIsUnknown)
{
    const auto euros = CapitalSummary::create(section(), "EUR", std::nullopt, std::nullopt);
    ASSERT_TRUE(euros.has_value());
    EXPECT_FALSE(euros->historyKnown);
    EXPECT_EQ(euros->totalMinor, std::nullopt);
    EXPECT_EQ(euros->participants[0].totalMinor, std::nullopt);
    EXPECT_EQ(euros->recordedMinor, 0);
}

TEST(CapitalSummary, CountsOnlyTheBaselineThatNoOtherSupersedes)
{
    auto state = section();
    state.baselines.insert(state.baselines.begin(),
                           baseline("b2", "2023-12-31", "2024-02-01", {{"ann", "Ann", 90000}}));
    state.baselines.front().replacesID = "b1";
    EXPECT_EQ(CapitalSummary::create(state, "USD", std::nullopt, std::nullopt)->recordedMinor, 110700);
    EXPECT_EQ(CapitalMath::currentBaseline(state, "USD")->id, "b2");
}

TEST(CapitalSummary, TakesTheVersionCreatedLastOfOneStartDay)
{
    auto state = section();
    state.ownershipVersions.insert(state.ownershipVersions.begin(), version("2024-07-01", {{"bo", "Bo", 10000}}));
    state.ownershipVersions.front().createdAt = "2024-07-02T08:00:00Z";
    EXPECT_EQ(CapitalSummary::create(state, "USD", std::nullopt, std::nullopt)->participants[1].ownershipBps, 10000);
    state.ownershipVersions.front().createdAt = state.ownershipVersions.back().createdAt; // then the later in the list
    EXPECT_EQ(CapitalSummary::create(state, "USD", std::nullopt, std::nullopt)->participants[0].ownershipBps, 10000);
}

struct StateCase {
    const char* name;
    void (*arrange)(CapitalState&);
    std::optional<CapitalError> error;
};

class CapitalSection : public testing::TestWithParam<StateCase> {};

TEST_P(CapitalSection, IsSummedWholeOrNotAtAll)
{
    auto state = section();
    GetParam().arrange(state);
    const auto summary = CapitalSummary::create(state, "USD", std::nullopt, std::nullopt);
    EXPECT_EQ(summary.has_value() ? std::nullopt : std::optional{summary.error()}, GetParam().error);
}

using enum CapitalError;

void crowd(CapitalState& state, std::size_t entries)
{
    state.baselines.front().entries.clear();
    for (std::size_t at = 0; at < entries; ++at) {
        state.participants.push_back({.id = "p" + std::to_string(at), .name = "", .memberID = {}});
        state.baselines.front().entries.push_back({state.participants.back().id, "", 1});
    }
}

INSTANTIATE_TEST_SUITE_P(
    States, CapitalSection,
    testing::Values(
        StateCase{"BaselineRecordedOnItsLastDay", [](auto& s) { s.baselines[0].date = "2023-12-31"; }, std::nullopt},
        StateCase{"BaselineThroughTheDayAfterItsDate", [](auto& s) { s.baselines[0].date = "2023-12-30"; },
                  invalidState},
        StateCase{"BaselineWithoutADay", [](auto& s) { s.baselines[0].throughDate = "2023-12-32"; }, invalidState},
        StateCase{"BaselineOf100", [](auto& s) { crowd(s, 100); }, std::nullopt},
        StateCase{"BaselineOf101", [](auto& s) { crowd(s, 101); }, invalidState},
        StateCase{"OwnerTwiceInBaseline", [](auto& s) { s.baselines[0].entries[1] = s.baselines[0].entries[0]; },
                  invalidState},
        StateCase{"StrangerInBaseline", [](auto& s) { s.baselines[0].entries[1].participantID = "x"; }, invalidState},
        StateCase{"ZeroInBaseline", [](auto& s) { s.baselines[0].entries[1].amountMinor = 0; }, std::nullopt},
        StateCase{"NegativeInBaseline", [](auto& s) { s.baselines[0].entries[1].amountMinor = -1; }, invalidState},
        StateCase{"BaselineAtTheLimit",
                  [](auto& s) {
                      s.contributions.clear();
                      s.baselines[0].entries[0].amountMinor = Money::maximumMinor - 50000;
                  },
                  std::nullopt},
        StateCase{"BaselinePastTheLimit",
                  [](auto& s) { s.baselines[0].entries[0].amountMinor = Money::maximumMinor - 49999; }, invalidState},
        StateCase{"ContributionOnTheLastCoveredDay", [](auto& s) { s.contributions[0].date = "2023-12-31"; },
                  invalidState},
        StateCase{"BaselinesInNoOrder",
                  [](auto& s) { s.baselines.push_back(baseline("b2", "2023-06-30", "2024-01-05", {})); }, invalidState},
        StateCase{"BaselineSupersedesNothingKnown", [](auto& s) { s.baselines[0].replacesID = "b0"; }, invalidState},
        StateCase{"BaselinesSupersedeEachOther",
                  [](auto& s) {
                      s.baselines.push_back(baseline("b2", "2023-12-31", "2024-01-05", {}));
                      s.baselines[0].replacesID = "b2";
                      s.baselines[1].replacesID = "b1";
                  },
                  invalidState},
        StateCase{"SharesShort", [](auto& s) { s.ownershipVersions[0].entries[0].ownershipBps = 5999; }, invalidState},
        StateCase{"SharesOver", [](auto& s) { s.ownershipVersions[0].entries[0].ownershipBps = 6001; }, invalidState},
        StateCase{"NegativeShare",
                  [](auto& s) {
                      s.ownershipVersions[0].entries[0].ownershipBps = -1;
                      s.ownershipVersions[0].entries[1].ownershipBps = 10001;
                  },
                  invalidState},
        StateCase{"NoShares", [](auto& s) { s.ownershipVersions[1].entries.clear(); }, invalidState},
        StateCase{"StrangerOwns", [](auto& s) { s.ownershipVersions[1].entries[0].participantID = "x"; }, invalidState},
        StateCase{"VersionWithoutADay", [](auto& s) { s.ownershipVersions[1].date = ""; }, invalidState},
        StateCase{"TwoParticipantsOfOneIdentifier", [](auto& s) { s.participants[1].id = "ann"; }, invalidState},
        StateCase{"StrangerContributes", [](auto& s) { s.contributions[0].participantID = "x"; }, invalidState},
        StateCase{"ContributionOfNothing", [](auto& s) { s.contributions[0].amountMinor = 0; }, invalidAmount},
        StateCase{"ContributionPastTheLimit", [](auto& s) { s.contributions[0].amountMinor = Money::maximumMinor + 1; },
                  invalidAmount},
        StateCase{"ReversalOfAnotherAmount", [](auto& s) { s.contributions[3].amountMinor = -2999; }, invalidState},
        StateCase{"ReversalMissing", [](auto& s) { s.contributions.pop_back(); }, invalidState},
        StateCase{"ReversalUnknownToItsOriginal", [](auto& s) { s.contributions[1].reversedBy.reset(); }, invalidState},
        StateCase{"ReversalBeforeItsOriginal", [](auto& s) { s.contributions[3].date = "2024-06-29"; }, invalidState},
        StateCase{"SumAtTheLimit", [](auto& s) { s.contributions[0].amountMinor = Money::maximumMinor - 150700; },
                  std::nullopt},
        StateCase{"SumPastTheLimit", [](auto& s) { s.contributions[0].amountMinor = Money::maximumMinor - 150699; },
                  amountOverflow}),
    [](const auto& each) { return std::string{each.param.name}; });

TEST(CapitalSummary, RefusesUnknownCurrenciesAndBackwardRanges)
{
    EXPECT_EQ(CapitalSummary::create(section(), "XYZ", std::nullopt, std::nullopt).error(), invalidState);
    EXPECT_EQ(CapitalSummary::create(section(), "USD", "2024-02-01", "2024-01-31").error(), invalidState);
    EXPECT_EQ(CapitalSummary::create(section(), "USD", "2024-02-30", std::nullopt).error(), invalidState);
    EXPECT_TRUE(CapitalSummary::create(section(), "USD", "2024-02-01", "2024-02-01").has_value());
}

TEST(CapitalAccess, OffersCompanyAccountsToThoseWhoMaySeeAndPostCapital)
{
    LedgerSnapshot books;
    for (const auto* id : {"bank", "float", "old", "seenOnly", "yen"}) {
        auto& account = books.accounts.emplace_back();
        account.id = id;
        account.currencies = {"USD"};
    }
    books.accounts[1].purpose = "employee";
    books.accounts[2].archived = true;
    books.accounts[4].currencies = {"JPY"};
    auto& member = books.currentMember;
    member.active = true;
    member.permissions = {"viewCapital", "postCapital"};
    const std::vector<std::string> both{"view", "capitalContribution"};
    member.accountGrants = {{"bank", both}, {"float", both}, {"old", both}, {"seenOnly", {"view"}}, {"yen", both}};

    EXPECT_EQ(CapitalAccess::accounts(books, "USD"), std::vector<const Account*>{&books.accounts[0]});
    EXPECT_EQ(CapitalAccess::accounts(books, std::nullopt).size(), 2u);
    member.permissions = {"postCapital"};
    EXPECT_TRUE(CapitalAccess::accounts(books, "USD").empty());
    member.permissions.reset();
    member.role = "owner";
    EXPECT_TRUE(CapitalAccess::accounts(books, "USD").empty());
}

}

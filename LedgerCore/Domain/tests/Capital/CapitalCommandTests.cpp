#include "LedgerCore/Domain/Capital/CapitalCommands.h"

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"

namespace {

using enum CapitalRefusal;
using Built = CapitalCommands::Built;

/// Owners Ann, Bo and the archived Cy; 900.00 from before 2024, one open and one reversed contribution.
LedgerSnapshot books()
{
    LedgerSnapshot snapshot;
    auto& member = snapshot.currentMember;
    member.id = "m";
    member.active = true;
    member.permissions = {"manageCompany", "viewCapital", "postCapital", "correctCapital"};
    member.accountGrants = {{"bank", {"view", "capitalContribution"}}};
    snapshot.members = {member};
    auto& bank = snapshot.accounts.emplace_back();
    bank.id = "bank";
    bank.currencies = {"USD", "EUR"};
    auto& entry = snapshot.transactions.emplace_back();
    entry.id = "t1";
    entry.legs = {{"bank", "USD", 5000}};

    auto& state = snapshot.capital.emplace();
    state.revision = 4;
    state.participants = {{.id = "ann", .name = "Ann", .memberID = "other"},
                          {.id = "bo", .name = "Bo", .memberID = {}},
                          {.id = "cy", .name = "Cy", .memberID = {}, .archived = true}};
    state.baselines = {{.id = "b1",
                        .currency = "USD",
                        .throughDate = "2023-12-31",
                        .date = "2024-01-02",
                        .createdAt = "",
                        .entries = {{"ann", "Ann", 90000}, {"bo", "Bo", 0}},
                        .replacesID = {}}};
    CapitalContribution contribution{"c1", "ann", "Ann", "USD", 5000, "2024-03-01", "", "t1", {}, {}};
    state.contributions = {contribution, contribution, contribution};
    state.contributions[1].id = "c2";
    state.contributions[1].reversedBy = "c3";
    state.contributions[2].id = "c3";
    state.contributions[2].amountMinor = -5000;
    state.contributions[2].reversalOf = "c2";
    state.ownershipVersions = {{.id = "v1", .date = "2024-01-01", .createdAt = "", .entries = {{"ann", "Ann", 10000}}}};
    return snapshot;
}

CommandIssue issue(std::string date = "2024-04-01")
{
    return {.date = std::move(date), .idempotencyKey = "key"};
}

TEST(CapitalCommand, CarriesOnlyTheFieldsOfItsAction)
{
    const auto snapshot = books();
    const auto reverse = CapitalCommands::reverse(CapitalContext::of(snapshot, "c1"), issue(), "c1", "");
    ASSERT_TRUE(reverse.has_value());
    EXPECT_EQ(Json::encode(*reverse), R"({"action":"reverse","expectedRevision":4,"date":"2024-04-01",)"
                                      R"("idempotencyKey":"key","contributionID":"c1"})");
    const auto baseline = CapitalCommands::setBaseline(
        CapitalContext::of(snapshot), issue(),
        {.currency = "USD", .throughDate = "2023-06-30", .amounts = {{"ann", "1.000"}, {"bo", "0,50"}}}, "id");
    ASSERT_TRUE(baseline.has_value());
    EXPECT_EQ(Json::encode(*baseline),
              R"({"action":"setBaseline","expectedRevision":4,"date":"2024-04-01","idempotencyKey":"key",)"
              R"("currency":"USD","throughDate":"2023-06-30","replacesID":"b1","entries":[)"
              R"({"participantID":"ann","participantName":"Ann","amountMinor":100000},)"
              R"({"participantID":"bo","participantName":"Bo","amountMinor":50}]})");
}

struct CommandCase {
    const char* name;
    Built (*build)(LedgerSnapshot&);
    std::optional<CapitalRefusal> refusal;
};

class CapitalRule : public testing::TestWithParam<CommandCase> {};

TEST_P(CapitalRule, SaysWhatKeepsACommandFromBeingAccepted)
{
    auto snapshot = books();
    const auto built = GetParam().build(snapshot);
    EXPECT_EQ(built.has_value() ? std::nullopt : std::optional{built.error()}, GetParam().refusal);
}

Built contribute(const LedgerSnapshot& snapshot, std::string amount, std::string owner = "bo",
                 std::string date = "2024-04-01", std::string currency = "USD")
{
    return CapitalCommands::contribute(CapitalContext::of(snapshot), issue(std::move(date)),
                                       {.participantID = std::move(owner),
                                        .currency = std::move(currency),
                                        .amount = std::move(amount),
                                        .accountID = "bank"},
                                       "en");
}

INSTANTIATE_TEST_SUITE_P(
    Contributions, CapitalRule,
    testing::Values(
        CommandCase{"Accepted", [](auto& s) { return contribute(s, "1,250.00"); }, std::nullopt},
        CommandCase{"SameDayAsTheLast", [](auto& s) { return contribute(s, "1", "bo", "2024-03-01"); }, std::nullopt},
        CommandCase{"DayBeforeTheLast", [](auto& s) { return contribute(s, "1", "bo", "2024-02-29"); }, dateOrder},
        CommandCase{"NoDay", [](auto& s) { return contribute(s, "1", "bo", "2024-04-31"); }, invalidDate},
        CommandCase{"OnTheLastCoveredDay",
                    [](auto& s) {
                        s.capital->contributions.clear();
                        s.capital->baselines[0].throughDate = "2024-01-02";
                        return contribute(s, "1", "bo", "2024-01-02");
                    },
                    baselineOverlap},
        CommandCase{"Zero", [](auto& s) { return contribute(s, "0.00"); }, amountNotPositive},
        CommandCase{"Unreadable", [](auto& s) { return contribute(s, "1.234,56"); }, amountNotPositive},
        CommandCase{"UpToTheLimit", [](auto& s) { return contribute(s, "89,999,999,050.00"); }, std::nullopt},
        CommandCase{"PastTheLimit", [](auto& s) { return contribute(s, "89,999,999,050.01"); }, amountLimit},
        CommandCase{"UnknownOwner", [](auto& s) { return contribute(s, "1", "x"); }, participantUnavailable},
        CommandCase{"ArchivedOwner", [](auto& s) { return contribute(s, "1", "cy"); }, participantUnavailable},
        CommandCase{"CurrencyNotHeld", [](auto& s) { return contribute(s, "1", "bo", "2024-04-01", "JPY"); },
                    accountUnavailable},
        CommandCase{"SwitchedOff",
                    [](auto& s) {
                        s.financialSettings.emplace();
                        return contribute(s, "1");
                    },
                    contributionsDisabled},
        CommandCase{"NotPermitted",
                    [](auto& s) {
                        s.currentMember.permissions = {"manageCompany", "postCapital"};
                        return contribute(s, "1");
                    },
                    noAuthority},
        CommandCase{"NotGranted",
                    [](auto& s) {
                        s.currentMember.accountGrants = {{{"bank", {"view"}}}};
                        return contribute(s, "1");
                    },
                    accountUnavailable},
        CommandCase{"BrokenSection",
                    [](auto& s) {
                        s.capital->contributions.pop_back();
                        return contribute(s, "1");
                    },
                    integrity}),
    [](const auto& each) { return std::string{each.param.name}; });

Built reverse(const LedgerSnapshot& snapshot, const char* id, std::string date = "2024-04-01")
{
    return CapitalCommands::reverse(CapitalContext::of(snapshot, id), issue(std::move(date)), id, "typed twice");
}

Built setBaseline(const LedgerSnapshot& snapshot, std::vector<CapitalCommands::OwnerText> amounts,
                  std::string through = "2023-06-30",
                  CapitalCommands::ZeroBaseline zero = CapitalCommands::ZeroBaseline::unconfirmed)
{
    return CapitalCommands::setBaseline(
        CapitalContext::of(snapshot), issue(),
        {.currency = "USD", .throughDate = std::move(through), .amounts = std::move(amounts), .zero = zero}, "en");
}

INSTANTIATE_TEST_SUITE_P(
    Corrections, CapitalRule,
    testing::Values(
        CommandCase{"Reverse", [](auto& s) { return reverse(s, "c1"); }, std::nullopt},
        CommandCase{"ReverseBeforeTheLast", [](auto& s) { return reverse(s, "c1", "2024-02-01"); }, dateOrder},
        CommandCase{"ReverseTwice", [](auto& s) { return reverse(s, "c2"); }, alreadyReversed},
        CommandCase{"ReverseAReversal", [](auto& s) { return reverse(s, "c3"); }, contributionUnavailable},
        CommandCase{"ReverseNothing", [](auto& s) { return reverse(s, "x"); }, contributionUnavailable},
        CommandCase{"ReverseWhileSwitchedOff",
                    [](auto& s) {
                        s.financialSettings.emplace();
                        return reverse(s, "c1");
                    },
                    std::nullopt},
        CommandCase{"ReverseOnAnUnseenAccount",
                    [](auto& s) {
                        s.transactions.clear();
                        return reverse(s, "c1");
                    },
                    accountUnavailable},
        CommandCase{"ZeroBaseline", [](auto& s) { return setBaseline(s, {{"ann", "0"}, {"bo", "0"}}); },
                    zeroBaselineUnconfirmed},
        CommandCase{"ZeroBaselineConfirmed",
                    [](auto& s) {
                        return setBaseline(s, {{"ann", "0"}, {"bo", "0"}}, "2023-06-30",
                                           CapitalCommands::ZeroBaseline::confirmed);
                    },
                    std::nullopt},
        CommandCase{"NegativeBaseline", [](auto& s) { return setBaseline(s, {{"ann", "-1"}, {"bo", "2"}}); },
                    baselineNegative},
        CommandCase{"OwnerLeftOut", [](auto& s) { return setBaseline(s, {{"ann", "1"}}); }, baselineCoverage},
        CommandCase{"OwnerTwice", [](auto& s) { return setBaseline(s, {{"ann", "1"}, {"bo", "1"}, {"bo", "1"}}); },
                    baselineCoverage},
        CommandCase{"ArchivedOwnerIncluded",
                    [](auto& s) { return setBaseline(s, {{"ann", "1"}, {"bo", "1"}, {"cy", "1"}}); }, std::nullopt},
        CommandCase{"MeetsContributions",
                    [](auto& s) { return setBaseline(s, {{"ann", "1"}, {"bo", "1"}}, "2024-03-01"); }, baselineOverlap},
        CommandCase{"ThroughTheDayOfRecording",
                    [](auto& s) {
                        s.capital->contributions.clear();
                        return setBaseline(s, {{"ann", "1"}, {"bo", "1"}}, "2024-04-01");
                    },
                    std::nullopt},
        CommandCase{"ThroughTheFuture",
                    [](auto& s) { return setBaseline(s, {{"ann", "1"}, {"bo", "1"}}, "2024-04-02"); },
                    baselineBoundary},
        CommandCase{"BaselinePastTheLimit",
                    [](auto& s) { return setBaseline(s, {{"ann", "89,999,999,950.00"}, {"bo", "0.01"}}); },
                    amountLimit}),
    [](const auto& each) { return std::string{each.param.name}; });

Built setOwnership(const LedgerSnapshot& snapshot, std::vector<CapitalCommands::OwnerText> shares,
                   std::string from = "2024-04-01")
{
    return CapitalCommands::setOwnership(CapitalContext::of(snapshot), issue(std::move(from)), shares, "en");
}

Built setParticipant(const LedgerSnapshot& snapshot, CapitalCommands::Participant participant)
{
    return CapitalCommands::setParticipant(CapitalContext::of(snapshot), issue(), std::move(participant));
}

INSTANTIATE_TEST_SUITE_P(
    Owners, CapitalRule,
    testing::Values(
        CommandCase{"Halves", [](auto& s) { return setOwnership(s, {{"ann", "50"}, {"bo", "50"}}); }, std::nullopt},
        CommandCase{"Thirds", [](auto& s) { return setOwnership(s, {{"ann", "33.33"}, {"bo", "33.33"}}); },
                    sharesIncomplete},
        CommandCase{"ThreeDecimals", [](auto& s) { return setOwnership(s, {{"ann", "12.345"}, {"bo", "87.655"}}); },
                    sharesIncomplete},
        CommandCase{"OwnerTwiceInShares", [](auto& s) { return setOwnership(s, {{"ann", "50"}, {"ann", "50"}}); },
                    sharesIncomplete},
        CommandCase{"ArchivedOwnerOfNothing", [](auto& s) { return setOwnership(s, {{"ann", "100"}, {"cy", "0"}}); },
                    std::nullopt},
        CommandCase{"ArchivedOwnerOfHalf", [](auto& s) { return setOwnership(s, {{"ann", "50"}, {"cy", "50"}}); },
                    participantUnavailable},
        CommandCase{"BeforeTheLatestVersion", [](auto& s) { return setOwnership(s, {{"ann", "100"}}, "2023-12-31"); },
                    dateOrder},
        CommandCase{"BeforeTheLatestContribution",
                    [](auto& s) { return setOwnership(s, {{"ann", "100"}}, "2024-01-01"); }, std::nullopt},
        CommandCase{"NewOwner", [](auto& s) { return setParticipant(s, {.name = "Di", .memberID = "m"}); },
                    std::nullopt},
        CommandCase{"BlankName", [](auto& s) { return setParticipant(s, {.name = " \t\u3000"}); }, nameRequired},
        CommandCase{"UnknownOwnerChanged", [](auto& s) { return setParticipant(s, {.id = "x", .name = "X"}); },
                    participantUnavailable},
        CommandCase{"MemberOfAnotherOwner",
                    [](auto& s) {
                        s.members.front().id = "other";
                        return setParticipant(s, {.id = "bo", .name = "Bo", .memberID = "other"});
                    },
                    memberUnavailable},
        CommandCase{"SameMemberKept",
                    [](auto& s) {
                        s.members.front().id = "other";
                        return setParticipant(s, {.id = "ann", .name = "Anna", .memberID = "other"});
                    },
                    std::nullopt},
        CommandCase{"MemberWithoutManagement",
                    [](auto& s) {
                        s.currentMember.permissions = {"viewCapital", "postCapital", "correctCapital"};
                        return setParticipant(s, {.name = "Di"});
                    },
                    noAuthority}),
    [](const auto& each) { return std::string{each.param.name}; });

TEST(CapitalRules, RefuseACommandOnAnotherRevisionOrBaseline)
{
    const auto snapshot = books();
    const auto context = CapitalContext::of(snapshot);
    auto command = setBaseline(snapshot, {{"ann", "1"}, {"bo", "1"}}).value();
    command.replacesID.reset();
    EXPECT_EQ(CapitalRules::whyNot(command, context), baselineConflict);
    command.expectedRevision = 3;
    EXPECT_EQ(CapitalRules::whyNot(command, context), staleRevision);
    command.action = "approve";
    EXPECT_EQ(CapitalRules::whyNot(command, context), unknownAction);
}

}

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"

namespace {

using LedgerEntryAccess::DestinationRefusal;

Account account(std::string id, std::optional<std::string> purpose = {}, std::optional<std::string> operatorID = {})
{
    Account each;
    each.id = std::move(id);
    each.name = "Account " + each.id;
    each.currencies = {"IDR"};
    each.purpose = std::move(purpose);
    each.operatorMemberID = std::move(operatorID);
    return each;
}

/// "bank" and "branch" are company accounts, "drawer" is m's float and returns to "vault", "other" a colleague's float,
/// "refunds" a refund account, "old" an archived company account.
std::vector<Account> companyAccounts()
{
    auto drawer = account("drawer", "employee", "m");
    drawer.returnAccountID = "vault";
    auto old = account("old");
    old.archived = true;
    auto branch = account("branch");
    branch.returnAccountID = "bank"; // says nothing on a company account
    return {account("bank"),  branch, drawer, account("other", "employee", "n"), account("refunds", "refund", "n"),
            account("vault"), old};
}

const Account& named(const std::vector<Account>& accounts, std::string_view id)
{
    return *std::ranges::find(accounts, id, &Account::id);
}

Member holding(std::vector<AccountGrant> grants)
{
    Member member;
    member.id = "m";
    member.active = true;
    member.accountGrants = std::move(grants);
    return member;
}

struct MoveCase {
    std::string name;
    std::string source;
    std::string destination;
    std::vector<AccountGrant> grants;
    std::optional<DestinationRefusal> refusal;
};

class TransferDestinationRules : public testing::TestWithParam<MoveCase> {};

TEST_P(TransferDestinationRules, AreJudgedByPurposeAndGrant)
{
    const auto accounts = companyAccounts();
    const auto& each = GetParam();
    EXPECT_EQ(LedgerEntryAccess::whyNotReceive(named(accounts, each.source), named(accounts, each.destination),
                                               holding(each.grants)),
              each.refusal);
}

using enum DestinationRefusal;

INSTANTIATE_TEST_SUITE_P(
    Moves, TransferDestinationRules,
    testing::Values(
        MoveCase{"ToItself", "bank", "bank", {{"bank", {"view", "transferIn"}}}, sameAccount},
        MoveCase{"BetweenCompanyAccounts", "bank", "branch", {{"branch", {"view", "transferIn"}}}, std::nullopt},
        MoveCase{"SeenWithoutTransferIn", "bank", "branch", {{"branch", {"view"}}}, notGranted},
        MoveCase{"PlainTransferToAnUnseenAccount", "bank", "branch", {{"branch", {"transferIn"}}}, notViewable},
        MoveCase{"FundingOfAnUnseenFloat", "bank", "other", {{"other", {"transferIn"}}}, std::nullopt},
        MoveCase{"FundingOfAStrangersFloat", "bank", "other", {}, notViewable},
        MoveCase{"ReturnToTheReturnAccount", "drawer", "vault", {}, std::nullopt},
        MoveCase{"ReturnToAnotherUnseenAccount", "drawer", "bank", {}, notViewable},
        MoveCase{"ReturnToAGrantedAccount", "drawer", "bank", {{"bank", {"transferIn"}}}, std::nullopt},
        MoveCase{"FloatToFloat", "drawer", "other", {{"other", {"transferIn"}}}, restrictedToRestricted},
        MoveCase{"ToAnArchivedAccount", "bank", "old", {{"old", {"view", "transferIn"}}}, archived}),
    [](const auto& each) { return each.param.name; });

TEST(TransferDestinations, ListWhatTakesAFundingOrAReturnOfTheMember)
{
    const auto accounts = companyAccounts();
    const auto member = holding({{"drawer", {"view", "transferOut"}},
                                 {"branch", {"view", "transferIn", "transferOut"}},
                                 {"other", {"transferIn"}},
                                 {"refunds", {"view"}},
                                 {"old", {"view", "transferIn"}}});
    const std::vector<TransferDestination> expected{{"branch", "Account branch", {"IDR"}, false, true},
                                                    {"other", "Account other", {"IDR"}, true, false},
                                                    {"vault", "Account vault", {"IDR"}, false, true}};
    EXPECT_EQ(LedgerEntryAccess::transferDestinations(accounts, member), expected);

    auto gone = member;
    gone.active = false;
    EXPECT_TRUE(LedgerEntryAccess::transferDestinations(accounts, gone).empty());
}

}

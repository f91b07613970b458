#include <algorithm>
#include <functional>

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Access/AccountRules.h"
#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerCore/Domain/testing/SnapshotBuilder.h"

namespace {

using AccountRules::History;
using AccountRules::Refusal;
using Actions = std::vector<std::string>;

Account refundAccount(const std::string& id)
{
    Account account;
    account.id = id;
    account.name = id;
    account.currencies = {"USD"};
    account.purpose = AccountPurpose::refund;
    account.operatorMemberID = "ana";
    return account;
}

/// The owner m1 holds every right on every account; ana operates the float, ben fills it, leo has left.
LedgerSnapshot company()
{
    auto left = SnapshotBuilder::person("leo", "Leo");
    left.active = false;
    auto ana = SnapshotBuilder::person("ana", "Ana");
    ana.accountGrants = {{{"float", {"view", "expense", "transferOut", "correct"}}}};
    auto ben = SnapshotBuilder::person("ben", "Ben", "finance");
    ben.accountGrants = {{{"bank", {"view", "transferOut"}}, {"float", {"transferIn"}}}};
    auto builder = snapshot();
    builder.member(ana).member(ben).member(left).account("bank", {"USD"}).account("cash", {"USD", "IDR"});
    builder.employeeAccount("float", {"USD"}, "ana").account(refundAccount("refunds"));
    auto old = refundAccount("old");
    old.purpose.reset();
    old.archived = true;
    builder.account(old).balance("cash", "USD", 500).grantAll();
    return builder.build();
}

AccountCreate floatFor(const std::string& operatorID)
{
    AccountCreate command;
    command.name = "Petty cash";
    command.currencies = {"IDR"};
    command.purpose = "employee";
    command.operatorMemberID = operatorID;
    command.returnAccountID = "bank";
    command.fundingMemberIDs = {{"ben"}};
    return command;
}

struct CreateCase {
    const char* name;
    std::function<void(AccountCreate&)> change;
    std::optional<Refusal> refusal;
};

class AccountCreation : public testing::TestWithParam<CreateCase> {};

TEST_P(AccountCreation, IsJudged)
{
    auto command = floatFor("ana");
    GetParam().change(command);
    const auto books = company();
    EXPECT_EQ(AccountRules::whyNotCreate(command, AccountRules::groundOf(books)), GetParam().refusal);
}

INSTANTIATE_TEST_SUITE_P(
    Commands, AccountCreation,
    testing::Values(
        CreateCase{"Float", [](auto&) {}, {}},
        CreateCase{"OwnedAccount",
                   [](auto& c) {
                       c.purpose.reset();
                       c.operatorMemberID.reset();
                       c.ownerMemberID = "ana";
                   },
                   {}},
        CreateCase{"BlankName", [](auto& c) { c.name = "\xE3\x80\x80\xC2\xA0 \t"; }, Refusal::nameUnsound},
        CreateCase{"LineBreakInName", [](auto& c) { c.name = "Petty\ncash"; }, Refusal::nameUnsound},
        CreateCase{"BrokenName", [](auto& c) { c.name = "Petty \xC3"; }, Refusal::nameUnsound},
        CreateCase{"LongName", [](auto& c) { c.name = std::string(121, 'a'); }, Refusal::nameUnsound},
        CreateCase{"NameInUse", [](auto& c) { c.name = " bank "; }, Refusal::nameTaken},
        CreateCase{"NameOfAnArchivedOne", [](auto& c) { c.name = "old"; }, {}},
        CreateCase{"NoCurrency", [](auto& c) { c.currencies.clear(); }, Refusal::currencyRequired},
        CreateCase{"SmallLetters", [](auto& c) { c.currencies = {"usd"}; }, Refusal::currencyUnknown},
        CreateCase{"CurrencyTwice", [](auto& c) { c.currencies = {"USD", "IDR", "USD"}; }, Refusal::currencyRepeated},
        CreateCase{"OddPurpose", [](auto& c) { c.purpose = "savings"; }, Refusal::purposeUnknown},
        CreateCase{"FloatOfNobody", [](auto& c) { c.operatorMemberID = ""; }, Refusal::operatorMissing},
        CreateCase{"StrangerAsOperator", [](auto& c) { c.operatorMemberID = "zoe"; }, Refusal::memberUnknown},
        CreateCase{"OperatorWhoLeft", [](auto& c) { c.operatorMemberID = "leo"; }, Refusal::memberInactive},
        CreateCase{"FunderWhoLeft", [](auto& c) { c.fundingMemberIDs = {{"ben", "leo"}}; }, Refusal::memberInactive},
        CreateCase{"FunderWithoutName", [](auto& c) { c.fundingMemberIDs = {{""}}; }, Refusal::memberUnknown},
        CreateCase{"FundersOfACompanyAccount",
                   [](auto& c) {
                       c.purpose = "operating";
                       c.returnAccountID.reset();
                   },
                   Refusal::notFunded},
        CreateCase{"ReturnToNowhere", [](auto& c) { c.returnAccountID = "none"; }, Refusal::returnUnknown},
        CreateCase{"ReturnToAFloat", [](auto& c) { c.returnAccountID = "float"; }, Refusal::returnUnsuitable},
        CreateCase{"ReturnToAnArchivedOne", [](auto& c) { c.returnAccountID = "old"; }, Refusal::returnUnsuitable}),
    [](const auto& each) { return each.param.name; });

struct UpdateCase {
    const char* name;
    const char* account;
    AccountUpdate command;
    std::optional<Refusal> refusal;
    History history = History::none;
};

AccountUpdate with(const std::function<void(AccountUpdate&)>& set)
{
    AccountUpdate command;
    set(command);
    return command;
}

class AccountChange : public testing::TestWithParam<UpdateCase> {};

TEST_P(AccountChange, IsJudged)
{
    const auto books = company();
    const auto& given = GetParam();
    EXPECT_EQ(AccountRules::whyNotUpdate(given.account, given.command, AccountRules::groundOf(books), given.history),
              given.refusal);
}

const auto handOver = with([](auto& c) { c.operatorMemberID = "ben"; });
const auto acknowledgedHandOver = with([](auto& c) {
    c.operatorMemberID = "ben";
    c.acknowledgeHistoryAccess = true;
});
const auto addYen = with([](auto& c) { c.addCurrencies = {{"JPY"}}; });
const auto archive = with([](auto& c) { c.archived = true; });

INSTANTIATE_TEST_SUITE_P(
    Commands, AccountChange,
    testing::Values(
        UpdateCase{"Nothing", "bank", {}, {}}, UpdateCase{"Unknown", "none", {}, Refusal::unknownAccount},
        UpdateCase{"NameOfAnother", "cash", with([](auto& c) { c.name = "bank"; }), Refusal::nameTaken},
        UpdateCase{"OwnNameAgain", "cash", with([](auto& c) { c.name = "cash"; }), {}},
        UpdateCase{"ArchiveWithMoney", "cash", archive, Refusal::nonzeroBalance},
        UpdateCase{"ArchiveEmpty", "bank", archive, {}}, UpdateCase{"ArchiveAgain", "old", archive, {}},
        UpdateCase{"RenameArchived", "old", with([](auto& c) { c.name = "older"; }), Refusal::archived},
        UpdateCase{"RestoreUnderATakenName", "old", with([](auto& c) {
                       c.archived = false;
                       c.name = "bank";
                   }),
                   Refusal::nameTaken},
        UpdateCase{"Restore", "old", with([](auto& c) { c.archived = false; }), {}},
        UpdateCase{"HandOverUnused", "float", handOver, {}},
        UpdateCase{"HandOverWithHistory", "float", handOver, Refusal::historyAcknowledgementRequired,
                   History::recorded},
        UpdateCase{"HandOverAcknowledged", "float", acknowledgedHandOver, {}, History::recorded},
        UpdateCase{
            "SameOperatorAgain", "float", with([](auto& c) { c.operatorMemberID = "ana"; }), {}, History::recorded},
        UpdateCase{"NobodyLeft", "float", with([](auto& c) { c.operatorMemberID = ""; }), Refusal::exclusiveOperator},
        UpdateCase{"CompanyAccountToFloatOfNobody", "bank", with([](auto& c) { c.purpose = "employee"; }),
                   Refusal::exclusiveOperator},
        UpdateCase{"MoneyOnAnAccountOfAnotherKind", "cash", with([](auto& c) {
                       c.purpose = "employee";
                       c.operatorMemberID = "ana";
                   }),
                   Refusal::nonzeroBalance},
        UpdateCase{"CurrencySeenByOthers", "float", addYen, Refusal::currencyAcknowledgementRequired},
        UpdateCase{"CurrencySeenByNobodyElse", "refunds", addYen, {}},
        UpdateCase{"CurrencyHeldAlready", "float", with([](auto& c) { c.addCurrencies = {{"USD"}}; }), {}},
        UpdateCase{"ReturnToItself", "float", with([](auto& c) { c.returnAccountID = "float"; }),
                   Refusal::returnUnsuitable}),
    [](const auto& each) { return each.param.name; });

TEST(AccountRules, AreForThoseWhoManageTheCompanyAndSeeTheAccount)
{
    auto books = company();
    books.currentMember.role = "finance";
    books.currentMember.permissions = {{"viewCompany"}};
    books.currentMember.accountGrants.reset();
    EXPECT_EQ(AccountRules::whyNotCreate(floatFor("ana"), AccountRules::groundOf(books)), Refusal::noAuthority);
    EXPECT_EQ(AccountRules::whyNotUpdate("bank", {}, AccountRules::groundOf(books), {}), Refusal::noAuthority);
    books.currentMember.permissions = {{"manageCompany"}};
    EXPECT_EQ(AccountRules::whyNotUpdate("bank", {}, AccountRules::groundOf(books), {}), Refusal::unknownAccount);
    auto taken = floatFor("ana");
    taken.name = "bank";
    taken.returnAccountID.reset();
    EXPECT_EQ(AccountRules::whyNotCreate(taken, AccountRules::groundOf(books)), std::nullopt)
        << "a refusal would tell of an account that the member does not see";
}

TEST(AccountRules, TakeANameForTheSameHoweverItsSignsWereTyped)
{
    auto books = company();
    books.accounts.front().name = "Qu\u1EF9";
    auto command = floatFor("ana");
    command.name = "Quy\u0303";
    EXPECT_EQ(AccountRules::whyNotCreate(command, AccountRules::groundOf(books)), Refusal::nameTaken);
    command.name = "Quy";
    EXPECT_EQ(AccountRules::whyNotCreate(command, AccountRules::groundOf(books)), std::nullopt);
}

TEST(AccountRules, GiveNobodyMoreOnAnAccountThanTheMemberHolds)
{
    auto books = company();
    auto& member = books.currentMember;
    member.accountGrants = {{{"bank", {"view"}}, {"float", {"view", "transferIn"}}}};
    const auto whyNot = [&](const char* account, const AccountUpdate& command) {
        books.members.front() = member;
        return AccountRules::whyNotUpdate(account, command, AccountRules::groundOf(books), {});
    };
    for (const auto* role : {"owner", "finance"}) {
        member.role = role;
        for (const auto* each : {"m1", "ben"})
            EXPECT_EQ(whyNot("bank", with([&](auto& c) { c.operatorMemberID = each; })), Refusal::notHeld) << each;
        EXPECT_EQ(whyNot("float", handOver), Refusal::notHeld);
        EXPECT_EQ(whyNot("float", with([](auto& c) { c.purpose = "refund"; })), Refusal::notHeld)
            << "its operator could refund";
        EXPECT_EQ(whyNot("float", with([](auto& c) { c.fundingMemberIDs = {{"ana", "m1"}}; })), std::nullopt);
        EXPECT_EQ(AccountRules::whyNotCreate(floatFor("ana"), AccountRules::groundOf(books)), std::nullopt)
            << "who makes an account holds every right on it";
    }
    member.accountGrants = {{{"float", {"view"}}}};
    EXPECT_EQ(whyNot("float", with([](auto& c) { c.fundingMemberIDs = {{"m1"}}; })), Refusal::notHeld);
    EXPECT_EQ(whyNot("float", with([](auto& c) { c.fundingMemberIDs = {{"ben"}}; })), std::nullopt)
        << "ben fills it already";
}

Actions actionsOf(const std::vector<Member>& members, std::string_view memberID, std::string_view accountID)
{
    const auto member = std::ranges::find(members, memberID, &Member::id);
    const auto& grants = member->accountGrants.value_or(std::vector<AccountGrant>{});
    const auto grant = std::ranges::find(grants, accountID, &AccountGrant::accountID);
    return grant == grants.end() ? Actions{} : grant->actions;
}

TEST(AccountRules, GiveTheRightsThatFollowFromANewAccount)
{
    const auto books = company();
    const auto account = AccountRules::created(floatFor("ana"), "new");
    const auto members = AccountRules::membersAfter(floatFor("ana"), account, books.members);
    EXPECT_EQ(actionsOf(members, "m1", "new").size(), AccountGrant::knownActions.size());
    EXPECT_EQ(actionsOf(members, "ana", "new"),
              (Actions{"view", "income", "expense", "transferOut", "opening", "correct"}));
    EXPECT_EQ(actionsOf(members, "ben", "new"), Actions{"transferIn"});
    EXPECT_EQ(actionsOf(members, "ana", "float"), actionsOf(books.members, "ana", "float"));
    const auto& ana = *std::ranges::find(members, "ana", &Member::id);
    for (const auto* kind : {"expense", "income", "transfer", "opening"})
        EXPECT_EQ(LedgerEntryAccess::whyNotRecord(account, ana, kind), std::nullopt) << kind;
}

TEST(AccountRules, LetAMemberOfTheOlderAccessModelSeeWhatWasSeenBefore)
{
    auto books = company();
    auto& ana = books.members[1];
    ana.accountGrants.reset();
    ana.accountIDs = {"cash"};
    const auto members =
        AccountRules::membersAfter(floatFor("ana"), AccountRules::created(floatFor("ana"), "new"), books.members);
    EXPECT_TRUE(members[1].can("view", "cash"));
    EXPECT_TRUE(members[1].can("expense", "new"));
    EXPECT_EQ(members[1].accountIDs, (std::vector<std::string>{"cash", "new"}));
}

TEST(AccountRules, HandTheRightsOverWithTheAccount)
{
    const auto books = company();
    const auto& before = *books.account("float");
    const auto after = AccountRules::updated(before, handOver);
    auto members = AccountRules::membersAfter(handOver, before, after, books.members);
    EXPECT_EQ(actionsOf(members, "ana", "float"), Actions{});
    EXPECT_EQ(actionsOf(members, "ben", "float"),
              (Actions{"transferIn", "view", "income", "expense", "transferOut", "opening", "correct"}));

    const auto others = with([](auto& c) { c.fundingMemberIDs = {{"ana"}}; });
    members = AccountRules::membersAfter(others, before, before, books.members);
    EXPECT_EQ(actionsOf(members, "ben", "float"), Actions{});
    EXPECT_TRUE(members[1].can("transferIn", "float"));

    const auto ordinary = with([](auto& c) { c.purpose = ""; });
    const auto opened = AccountRules::updated(before, ordinary);
    EXPECT_EQ(opened.purpose, std::nullopt);
    members = AccountRules::membersAfter(ordinary, before, opened, books.members);
    EXPECT_TRUE(members[1].can("refund", "float")) << "a company account takes more kinds of entries";
}

TEST(AccountRules, KnowTheAccountThatACommandSentTwiceHasMade)
{
    auto books = company();
    const auto command = floatFor("ana");
    EXPECT_EQ(AccountRules::alreadyCreated(command, AccountRules::groundOf(books)), nullptr);
    books.accounts.push_back(AccountRules::created(command, "new"));
    books.accounts.back().balances["IDR"] = 70; // used meanwhile
    books.members = AccountRules::membersAfter(command, books.accounts.back(), books.members);
    books.currentMember = books.members.front();
    const auto* const found = AccountRules::alreadyCreated(command, AccountRules::groundOf(books));
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->id, "new");
    auto other = command;
    other.currencies = {"USD"};
    EXPECT_EQ(AccountRules::alreadyCreated(other, AccountRules::groundOf(books)), nullptr);
    other = command;
    other.fundingMemberIDs = {{"ben", "ana"}};
    EXPECT_EQ(AccountRules::alreadyCreated(other, AccountRules::groundOf(books)), nullptr);
}

}

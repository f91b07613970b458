#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"

#include <gtest/gtest.h>

#include "LedgerCore/Domain/testing/SnapshotBuilder.h"

namespace {

using LedgerEntryAccess::RecordRefusal;
using LedgerEntryAccess::ReversalRefusal;

/// Company accounts "bank", "cash" and archived "old"; floats of Mira ("mine") and Nina ("hers"), a float without
/// anybody ("nobodys"), Mira's own account that Nina operates ("lent"), and refund accounts of both.
SnapshotBuilder company()
{
    auto books = snapshot().account("bank", {"USD", "IDR"}).account("cash", {"USD"});
    Account old;
    old.id = "old";
    old.archived = true;
    books.account(old);
    books.employeeAccount("mine", {"USD"}, "m1")
        .employeeAccount("hers", {"USD"}, "m2")
        .employeeAccount("nobodys", {"USD"}, "");
    Account lent;
    lent.id = "lent";
    lent.ownerMemberID = "m1";
    lent.operatorMemberID = "m2";
    books.account(lent);
    Account owned;
    owned.id = "owned";
    owned.ownerMemberID = "m1";
    books.account(owned);
    Account refunds;
    refunds.id = "refunds";
    refunds.purpose = "refund";
    refunds.currencies = {"USD"};
    refunds.operatorMemberID = "m1";
    books.account(refunds);
    refunds.id = "refundsOfNina";
    refunds.operatorMemberID = "m2";
    return books.account(refunds).grantAll();
}

struct OfferCase {
    const char* kind;
    const char* offered;
};

class AccountsOffered : public testing::TestWithParam<OfferCase> {};

TEST_P(AccountsOffered, AreThoseTheMemberMayUseForTheKind)
{
    const auto books = company().build();
    std::string offered;
    for (const auto* account : LedgerEntryAccess::accounts(books, GetParam().kind))
        offered += account->id + " ";
    EXPECT_EQ(offered, GetParam().offered) << GetParam().kind;
}

INSTANTIATE_TEST_SUITE_P(Kinds, AccountsOffered,
                         testing::Values(OfferCase{"income", "bank cash mine owned "},
                                         OfferCase{"expense", "bank cash mine owned refunds "},
                                         OfferCase{"transfer", "bank cash mine owned refunds "},
                                         OfferCase{"exchange", "bank cash "}, OfferCase{"refund", "bank cash refunds "},
                                         OfferCase{"opening", "bank cash mine owned refunds "},
                                         OfferCase{"transferOut", "bank cash mine owned refunds "},
                                         OfferCase{"reversal", ""}, OfferCase{"", ""}));

struct WhyNotCase {
    const char* name;
    const char* account;
    const char* kind;
    std::optional<RecordRefusal> refusal;
};

class WhyNotRecord : public testing::TestWithParam<WhyNotCase> {};

TEST_P(WhyNotRecord, SaysTheFirstReason)
{
    const auto books = company().build();
    EXPECT_EQ(LedgerEntryAccess::whyNotRecord(*books.account(GetParam().account), books.currentMember, GetParam().kind),
              GetParam().refusal);
}

INSTANTIATE_TEST_SUITE_P(
    Reasons, WhyNotRecord,
    testing::Values(WhyNotCase{"Allowed", "bank", "exchange", {}},
                    WhyNotCase{"Archived", "old", "exchange", RecordRefusal::archived},
                    WhyNotCase{"UnknownKind", "bank", "dividend", RecordRefusal::notGranted},
                    WhyNotCase{"AnotherOperator", "hers", "expense", RecordRefusal::notResponsible},
                    WhyNotCase{"OperatorBeforeOwner", "lent", "expense", RecordRefusal::notResponsible},
                    WhyNotCase{"NobodyAnswers", "nobodys", "expense", RecordRefusal::notResponsible},
                    WhyNotCase{"FloatRefunds", "mine", "refund", RecordRefusal::kindRefused},
                    WhyNotCase{"OwnedExchanges", "owned", "exchange", RecordRefusal::kindRefused},
                    WhyNotCase{"RefundAccountEarns", "refunds", "income", RecordRefusal::kindRefused}),
    [](const auto& each) { return std::string{each.param.name}; });

TEST(WhyNotRecord, LooksAtTheMemberBeforeTheAccount)
{
    auto books = company().build();
    const auto bank = *books.account("bank");
    const auto refusal = [&] { return LedgerEntryAccess::whyNotRecord(bank, books.currentMember, "income"); };
    books.currentMember.permissions = std::vector<std::string>{};
    books.currentMember.accountGrants = {{{"bank", {"income"}}}};
    EXPECT_EQ(refusal(), RecordRefusal::notViewable);
    books.currentMember.accountGrants = {{{"bank", {"view", "expense"}}}};
    EXPECT_EQ(refusal(), RecordRefusal::notGranted);
    books.currentMember.active = false;
    EXPECT_EQ(refusal(), RecordRefusal::inactiveMember);
}

struct PurposeCase {
    const char* source;
    const char* destination;
    std::optional<std::string_view> purpose;
};

class TransferPurposes : public testing::TestWithParam<PurposeCase> {};

TEST_P(TransferPurposes, FollowFromTheTwoAccounts)
{
    const auto books = company().build();
    EXPECT_EQ(
        LedgerEntryAccess::transferPurpose(*books.account(GetParam().source), *books.account(GetParam().destination)),
        GetParam().purpose);
}

INSTANTIATE_TEST_SUITE_P(Pairs, TransferPurposes,
                         testing::Values(PurposeCase{"bank", "cash", {}}, PurposeCase{"bank", "mine", "funding"},
                                         PurposeCase{"bank", "owned", "funding"},
                                         PurposeCase{"bank", "refunds", "funding"},
                                         PurposeCase{"mine", "bank", "return"}, PurposeCase{"owned", "bank", "return"},
                                         PurposeCase{"refunds", "mine", "return"}));

struct ReversalCase {
    const char* name;
    const char* kind;
    std::vector<LedgerLeg> legs;
    std::optional<std::string> purpose;
    std::vector<AccountGrant> grants;
    std::optional<ReversalRefusal> refusal;
};

class WhyNotReverse : public testing::TestWithParam<ReversalCase> {};

TEST_P(WhyNotReverse, TestsTheGrantsOfEveryLeg)
{
    auto member = SnapshotBuilder::person("m1", "Mira");
    member.accountGrants = GetParam().grants;
    LedgerTransaction entry;
    entry.kind = GetParam().kind;
    entry.legs = GetParam().legs;
    entry.transferPurpose = GetParam().purpose;
    EXPECT_EQ(LedgerEntryAccess::whyNotReverse(entry, member), GetParam().refusal);
}

const std::vector<LedgerLeg> bankToFloat{{"bank", "USD", -5}, {"float", "USD", 5}};
const std::vector<LedgerLeg> floatToBank{{"float", "USD", -5}, {"bank", "USD", 5}};
const std::vector<AccountGrant> correctsBoth{{"bank", {"view", "correct"}}, {"float", {"view", "correct"}}};
const std::vector<AccountGrant> correctsBank{{"bank", {"correct"}}, {"float", {"transferIn"}}};
const std::vector<AccountGrant> correctsFloat{{"bank", {"transferIn"}}, {"float", {"correct"}}};

INSTANTIATE_TEST_SUITE_P(
    Entries, WhyNotReverse,
    testing::Values(
        ReversalCase{"Plain", "expense", {{"bank", "USD", -5}}, {}, correctsBoth, {}},
        ReversalCase{
            "CorrectsButDoesNotSee", "expense", {{"bank", "USD", -5}}, {}, correctsBank, ReversalRefusal::notPermitted},
        ReversalCase{"OneLegShort",
                     "exchange",
                     {{"bank", "USD", -5}, {"cash", "IDR", 5}},
                     {},
                     correctsBoth,
                     ReversalRefusal::notPermitted},
        ReversalCase{"Reversal", "reversal", bankToFloat, {}, correctsBoth, ReversalRefusal::isReversal},
        ReversalCase{"NoLegs", "expense", {}, {}, correctsBoth, ReversalRefusal::noLegs},
        ReversalCase{"Funding", "transfer", bankToFloat, "funding", correctsBank, {}},
        ReversalCase{"FundingWithBothCorrect", "transfer", bankToFloat, "funding", correctsBoth,
                     ReversalRefusal::notPermitted},
        ReversalCase{"FundingTheOtherWay", "transfer", bankToFloat, "funding", correctsFloat,
                     ReversalRefusal::notPermitted},
        ReversalCase{"Return", "transfer", floatToBank, "return", correctsBank, {}},
        ReversalCase{"ReturnWithBothCorrect", "transfer", floatToBank, "return", correctsBoth,
                     ReversalRefusal::notPermitted},
        ReversalCase{"OrdinaryTransfer", "transfer", bankToFloat, {}, correctsBoth, {}},
        ReversalCase{"UnknownPurpose", "transfer", bankToFloat, "gift", correctsBoth, {}},
        ReversalCase{"PurposeOnAnotherKind", "expense", bankToFloat, "funding", correctsBoth, {}},
        ReversalCase{"FundingWithoutSource", "transfer", {{"bank", "USD", 5}}, "funding", correctsBoth, {}}),
    [](const auto& each) { return std::string{each.param.name}; });

TEST(WhyNotReverse, NeverReversesTwice)
{
    const auto books = company().income("t1", "2026-11-20", "bank", "USD", 5).build();
    auto entry = books.transactions.front();
    EXPECT_TRUE(LedgerEntryAccess::canReverse(entry, books));
    entry.reversedBy = "t2";
    EXPECT_EQ(LedgerEntryAccess::whyNotReverse(entry, books.currentMember), ReversalRefusal::alreadyReversed);
}

TEST(RefundableIncomes, AreOpenIncomesWhoseEveryLegMayBeRefunded)
{
    auto books = company();
    books.income("dollars", "2026-11-01", "bank", "USD", 5).income("rupiah", "2026-11-02", "bank", "IDR", 5);
    books.income("notHeld", "2026-11-03", "cash", "EUR", 5).income("elsewhere", "2026-11-03", "gone", "USD", 5);
    books.expense("expense", "2026-11-04", "bank", "USD", 5);
    books.entry("mixed", "income", "2026-11-05", {{"bank", "USD", 1}, {"gone", "USD", 1}});
    books.entry("both", "income", "2026-11-06", {{"cash", "USD", 1}, {"bank", "IDR", 1}});
    LedgerTransaction reversed;
    reversed.id = "reversed";
    reversed.kind = "income";
    reversed.legs = {{"bank", "USD", 5}};
    reversed.reversedBy = "r";
    books.entry(reversed);
    const auto ids = [](const LedgerSnapshot& snapshot, std::string_view currency) {
        std::string all;
        for (const auto* entry : LedgerEntryAccess::refundableIncomes(snapshot, currency))
            all += entry->id + " ";
        return all;
    };
    auto snapshot = books.build();
    EXPECT_EQ(ids(snapshot, "USD"), "dollars both ");
    EXPECT_EQ(ids(snapshot, "IDR"), "rupiah both ");
    EXPECT_EQ(ids(snapshot, "EUR"), "");
    snapshot.currentMember.accountGrants = {{{"bank", {"view", "refund"}}}};
    EXPECT_EQ(ids(snapshot, "USD"), "dollars ");
}

}

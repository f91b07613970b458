#include "LedgerCore/Domain/Entries/Reversals/ReversalRules.h"

#include <algorithm>
#include <functional>

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Entries/Reversals/ReversalWords.h"
#include "LedgerCore/Domain/testing/SnapshotBuilder.h"

namespace {

using ReversalRules::Refusal;

LedgerTransaction refundOf(std::string incomeID)
{
    LedgerTransaction refund;
    refund.id = "back";
    refund.kind = EntryKind::refund;
    refund.date = "2026-03-02";
    refund.memberID = "m1";
    refund.legs = {{"bank", "USD", -500}};
    refund.originalTransactionID = std::move(incomeID);
    return refund;
}

/// A bank, the member's float that was funded with 1,000, and an income; every right on both.
SnapshotBuilder books()
{
    auto builder = snapshot();
    builder.account("bank", {"USD"}).employeeAccount("float", {"USD"}, "m1").grantAll();
    builder.income("sale", "2026-03-01", "bank", "USD", 3'000);
    builder.transfer("funding", "2026-03-01", "bank", "float", "USD", 1'000, "funding");
    return builder;
}

struct OfferCase {
    std::string name;
    std::string entryID;
    std::optional<Refusal> refusal;
    std::function<void(LedgerSnapshot&)> arrange = [](LedgerSnapshot&) {};
};

LedgerTransaction& entryOf(LedgerSnapshot& held, std::string_view id)
{
    const auto found = std::ranges::find(held.transactions, id, &LedgerTransaction::id);
    return held.transactions[static_cast<std::size_t>(found - held.transactions.begin())];
}

class OfferedReversal : public testing::TestWithParam<OfferCase> {};

}

TEST_P(OfferedReversal, IsNotOfferedWhereTheBooksSayWhyNot)
{
    auto held = books().build();
    GetParam().arrange(held);
    EXPECT_EQ(ReversalRules::whyNot(entryOf(held, GetParam().entryID), VisibleBooks{held}), GetParam().refusal);
}

INSTANTIATE_TEST_SUITE_P(
    Entries, OfferedReversal,
    testing::Values(OfferCase{"Income", "sale", {}}, OfferCase{"Funding", "funding", {}},
                    OfferCase{"RefundedIncome", "sale", Refusal::refundsExist,
                              [](LedgerSnapshot& held) { held.transactions.push_back(refundOf("sale")); }},
                    OfferCase{"IncomeWhoseRefundIsReversed", "sale", std::nullopt,
                              [](LedgerSnapshot& held) {
                                  held.transactions.push_back(refundOf("sale"));
                                  held.transactions.back().reversedBy = "undo";
                              }},
                    OfferCase{"SpentFunding", "funding", Refusal::insufficientFunds,
                              [](LedgerSnapshot& held) { held.accounts[1].balances["USD"] = 999; }},
                    OfferCase{"FundingOfAnUnseenFloat", "funding", std::nullopt,
                              [](LedgerSnapshot& held) {
                                  held.accounts.pop_back();
                                  held.currentMember.permissions = {{"viewNothing"}};
                              }},
                    OfferCase{"BalanceAtTheLimit", "sale", Refusal::balanceLimit,
                              [](LedgerSnapshot& held) { held.accounts[0].balances["USD"] = -8'999'999'999'999; }},
                    OfferCase{"ArchivedAccount", "sale", Refusal::accountArchived,
                              [](LedgerSnapshot& held) { held.accounts[0].archived = true; }},
                    OfferCase{"ReversedAlready", "sale", Refusal::alreadyReversed,
                              [](LedgerSnapshot& held) { entryOf(held, "sale").reversedBy = "undo"; }},
                    OfferCase{"AReversal", "sale", Refusal::isReversal,
                              [](LedgerSnapshot& held) { entryOf(held, "sale").kind = EntryKind::reversal; }},
                    OfferCase{"AContributionByAnyone", "sale", Refusal::capitalCorrection,
                              [](LedgerSnapshot& held) {
                                  entryOf(held, "sale").capitalContributionID = "c1";
                                  held.currentMember.accountGrants->clear();
                              }},
                    OfferCase{"ADividend", "sale", Refusal::dividendCorrection,
                              [](LedgerSnapshot& held) { entryOf(held, "sale").dividendMovementID = "d1"; }},
                    OfferCase{"WithoutTheGrant", "sale", Refusal::notPermitted,
                              [](LedgerSnapshot& held) { held.currentMember.accountGrants->clear(); }},
                    OfferCase{"ByADeactivatedMember", "sale", Refusal::inactiveMember,
                              [](LedgerSnapshot& held) { held.currentMember.active = false; }}),
    [](const auto& each) { return each.param.name; });

TEST(ReversalRules, JudgeTheDayAndTheReasonOfACommand)
{
    auto held = books().build();
    held.financialSettings.emplace().bookkeepingStartDate = "2026-03-01";
    const VisibleBooks visible{held};
    const auto refusal = [&](std::string day, std::string reason = {}) {
        return ReversalRules::whyNot({std::move(reason), "key", std::move(day)},
                                     ReversalRules::contextOf(held.transactions[0], visible, "2026-03-10"));
    };
    EXPECT_EQ(refusal("2026-03-11"), std::nullopt); // tomorrow
    EXPECT_EQ(refusal("2026-03-12"), Refusal::inFuture);
    EXPECT_EQ(refusal("2026-02-28"), Refusal::beforeStart);
    EXPECT_EQ(refusal("2026-02-30"), Refusal::invalidDay);
    held.transactions[0].date = "2026-03-05";
    EXPECT_EQ(refusal("2026-03-04"), std::nullopt); // of a clock that is a day behind
    EXPECT_EQ(refusal("2026-03-03"), Refusal::beforeOriginal);
    std::string wide;
    for (int at = 0; at < 2'000; ++at)
        wide += "误";
    EXPECT_EQ(refusal("2026-03-10", wide), std::nullopt);
    EXPECT_EQ(refusal("2026-03-10", wide + "x"), Refusal::reasonTooLong);
    EXPECT_EQ(refusal("2026-03-10", std::string("a\0b", 3)), Refusal::reasonUnsound);
}

TEST(ReversalRules, NameEveryObstacleInFourLanguages)
{
    for (int at = 0; at <= static_cast<int>(Refusal::balanceLimit); ++at)
        EXPECT_TRUE(ReversalWords::words().contains(ReversalWords::key(static_cast<Refusal>(at)))) << at;
    EXPECT_EQ(ReversalRules::text(Refusal::alreadyReversed, "vi"), "Bút toán này đã được đảo.");
}

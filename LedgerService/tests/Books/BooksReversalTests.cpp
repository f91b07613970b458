#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "LedgerService/Books/BookInvariants.h"
#include "LedgerService/testing/SampleBooks.h"

namespace LedgerService {

namespace {

using namespace SampleBooks;

TEST(Reversal, UndoesEveryLegAndIsLinkedBothWays)
{
    auto company = books();
    ASSERT_TRUE(company.record(exchange(), actBy("mira", "swap")));
    ASSERT_TRUE(company.reverse("swap", reversal(), actBy("mira", "undo")));

    const auto* const undone = company.entry("undo");
    ASSERT_NE(undone, nullptr);
    EXPECT_EQ(undone->kind, "reversal");
    EXPECT_EQ(undone->note, "Typed twice");
    EXPECT_EQ(undone->reversalOf, "swap");
    EXPECT_EQ(company.entry("swap")->reversedBy, "undo");
    const std::vector<LedgerLeg> opposite{{"bank", "IDR", 150'000}, {"bank", "USD", -1'000}};
    EXPECT_EQ(undone->legs, opposite);
    EXPECT_EQ(company.account("bank")->balance("IDR"), 1'000'000);
    EXPECT_EQ(company.account("bank")->balance("USD"), 500);
}

TEST(Reversal, LeavesTheReceiptsWithTheOriginal)
{
    auto company = books();
    ASSERT_TRUE(company.reverse("sale", reversal(), actBy("mira", "undo")));
    EXPECT_TRUE(company.entry("undo")->attachmentIDs.empty());
    EXPECT_EQ(BookInvariants::broken(company), std::vector<std::string>{});
}

struct RefusedReversal {
    std::string name;
    int status;
    std::string code;
    std::string entryID = "sale";
    Reversal command = reversal();
    std::string memberID = "mira";
    std::function<void(Books&)> arrange = [](Books&) {};
};

class RefusedReversals : public testing::TestWithParam<RefusedReversal> {};

TEST_P(RefusedReversals, HaveTheirStatusAndCode)
{
    const auto& each = GetParam();
    auto company = books();
    each.arrange(company);
    const auto before = company;
    const auto done = company.reverse(each.entryID, each.command, actBy(each.memberID));
    ASSERT_FALSE(done);
    EXPECT_EQ(done.error().status, each.status);
    EXPECT_EQ(done.error().code, each.code);
    EXPECT_EQ(company, before);
}

void mustRecord(Books& company, const TransactionInput& input, std::string entryID)
{
    ASSERT_TRUE(company.record(input, actBy("mira", std::move(entryID))));
}

void reverseSale(Books& company)
{
    ASSERT_TRUE(company.reverse("sale", reversal(), actBy("mira", "undo")));
}

/// Rudi has spent what the funding brought.
void spendFunding(Books& company)
{
    mustRecord(company, funding(30'000), "funding");
    auto spent = expense(30'000);
    spent.sourceAccountID = "float";
    ASSERT_TRUE(company.record(spent, actBy("rudi", "spent")));
}

INSTANTIATE_TEST_SUITE_P(
    Table, RefusedReversals,
    testing::Values(
        RefusedReversal{"DeactivatedMember", 403, "inactive_member", "sale", reversal(), "gone"},
        RefusedReversal{"NoSuchDay", 400, "validation_error", "sale", {"", "key", "2026-13-01"}},
        RefusedReversal{"NoKey", 400, "validation_error", "sale", {"", "", "2026-03-10"}},
        RefusedReversal{
            "EndlessReason", 400, "validation_error", "sale", {std::string(2'001, 'r'), "key", "2026-03-10"}},
        RefusedReversal{"FutureDay", 400, "validation_error", "sale", {"", "key", "2026-03-12"}},
        RefusedReversal{"BeforeTheOriginal", 400, "validation_error", "sale", {"", "key", "2026-03-08"}},
        RefusedReversal{
            "BeforeTheBooks", 409, "financial_before_start_date", "opening-bank", {"", "key", "2025-12-31"}},
        RefusedReversal{"UnknownEntry", 404, "not_found", "none"},
        RefusedReversal{"InvisibleEntry", 404, "not_found", "sale", reversal(), "rudi"},
        RefusedReversal{"VisibleWithoutTheGrant", 403, "forbidden", "sale", reversal(), "guest"},
        RefusedReversal{"ReversedAlready", 409, "already_reversed", "sale", reversal(), "mira", reverseSale},
        RefusedReversal{"AReversal", 400, "validation_error", "undo", reversal(), "mira", reverseSale},
        RefusedReversal{"RefundedIncome", 409, "refunds_exist", "sale", reversal(), "mira",
                        [](Books& company) { mustRecord(company, refund(), "back"); }},
        RefusedReversal{"OnAnArchivedAccount", 409, "account_archived", "sale", reversal(), "mira",
                        [](Books& company) { company.accounts[0].archived = true; }},
        RefusedReversal{"OfAContribution", 409, "capital_correction_required", "sale", reversal(), "mira",
                        [](Books& company) { company.entries.back().capitalContributionID = "c1"; }},
        RefusedReversal{"OfADividendByAnyone", 409, "dividend_correction_required", "sale", reversal(), "guest",
                        [](Books& company) { company.entries.back().dividendMovementID = "d1"; }},
        RefusedReversal{"SpentFunding", 409, "insufficient_funds", "funding", reversal(), "mira", spendFunding}),
    [](const auto& each) { return each.param.name; });

TEST(Reversal, OfASpentFundingWaitsForTheExpense)
{
    auto company = books();
    spendFunding(company);
    ASSERT_TRUE(company.reverse("spent", reversal(), actBy("rudi", "unspend")));
    ASSERT_TRUE(company.reverse("funding", reversal(), actBy("mira", "unfund")));
    EXPECT_EQ(company.account("float")->balance("IDR"), 0);
    EXPECT_EQ(company.account("bank")->balance("IDR"), 1'000'000);
}

TEST(Reversal, OfAnIncomeFollowsTheReversalOfItsRefunds)
{
    auto company = books();
    mustRecord(company, refund(), "back");
    ASSERT_TRUE(company.reverse("back", reversal(), actBy("mira", "unback")));
    EXPECT_TRUE(company.reverse("sale", reversal(), actBy("mira", "undo")));
}

}

}

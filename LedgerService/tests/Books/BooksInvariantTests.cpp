#include <set>
#include <string>

#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerService/testing/BookFaults.h"
#include "LedgerService/testing/Random/RandomCommands.h"
#include "LedgerService/testing/SampleBooks.h"

namespace LedgerService {

namespace {

using namespace SampleBooks;

/// Sound books with every kind of entry and link in them.
Books soundBooks()
{
    auto company = books();
    EXPECT_TRUE(company.record(funding(), actBy("mira", "funding")));
    auto back = refund();
    back.externalReference = "R-1";
    EXPECT_TRUE(company.record(back, actBy("mira", "refund")));
    EXPECT_TRUE(company.record(exchange(), actBy("mira", "exchange")));
    EXPECT_TRUE(company.record(expense(), actBy("mira", "expense")));
    EXPECT_TRUE(company.reverse("expense", reversal(), actBy("mira", "reversal")));
    return company;
}

class BrokenBooks : public testing::TestWithParam<BookFault> {};

TEST_P(BrokenBooks, SayWhatIsWrong)
{
    GetParam().expectIsFound(soundBooks());
}

INSTANTIATE_TEST_SUITE_P(
    Faults, BrokenBooks,
    testing::Values(
        BookFault{"LostEntry", "its movements make",
                  [](Books& c) { std::erase_if(c.entries, [](auto& e) { return e.id == "exchange"; }); }},
        BookFault{"DoubledEntry", "not the only one", [](Books& c) { c.entries.push_back(entryOf(c, "exchange")); }},
        BookFault{"ForgottenBalance", "has no IDR balance", [](Books& c) { c.accounts[0].balances.erase("IDR"); }},
        BookFault{"BalanceOffByOne", "the IDR balance is", [](Books& c) { ++c.accounts[0].balances["IDR"]; }},
        BookFault{"BalancePastTheLimit", "leaves the supported range",
                  [](Books& c) { c.accounts[0].balances["IDR"] = Money::maximumMinor + 1; }},
        BookFault{"FloatBelowZero", "below zero", [](Books& c) { c.accounts[2].balances["IDR"] = -1; }},
        BookFault{"UnknownAccount", "does not hold",
                  [](Books& c) { entryOf(c, "funding").legs[0].accountID = "nowhere"; }},
        BookFault{"CurrencyNotHeld", "does not hold EUR",
                  [](Books& c) { entryOf(c, "sale").legs[0].currency = "EUR"; }},
        BookFault{"EmptyMovement", "impossible amount 0", [](Books& c) { entryOf(c, "sale").legs[0].amountMinor = 0; }},
        BookFault{"LopsidedTransfer", "not those of the kind transfer",
                  [](Books& c) { --entryOf(c, "funding").legs[1].amountMinor; }},
        BookFault{"ExchangeInOneCurrency", "not those of the kind exchange",
                  [](Books& c) { entryOf(c, "exchange").legs[1].currency = "IDR"; }},
        BookFault{"NegativeIncome", "not those of the kind income",
                  [](Books& c) { entryOf(c, "sale").legs[0].amountMinor = -1; }},
        BookFault{"NoSuchDay", "is no day", [](Books& c) { entryOf(c, "sale").date = "2026-02-30"; }},
        BookFault{"BeforeTheBooks", "before the start", [](Books& c) { entryOf(c, "sale").date = "2025-12-31"; }},
        BookFault{"RecordedByNobody", "recorded by nobody", [](Books& c) { entryOf(c, "sale").memberID = "none"; }},
        BookFault{"CategoryOfTheOtherKind", "category does not fit",
                  [](Books& c) { entryOf(c, "sale").categoryID = "rent"; }},
        BookFault{"CategoryOnATransfer", "category does not fit",
                  [](Books& c) { entryOf(c, "funding").categoryID = "rent"; }},
        BookFault{"ReversalForgotten", "does not know it", [](Books& c) { entryOf(c, "expense").reversedBy.reset(); }},
        BookFault{"ReversedByAStranger", "does not reverse it",
                  [](Books& c) { entryOf(c, "sale").reversedBy = "funding"; }},
        BookFault{"ReversalOfAnotherAmount", "is not the opposite",
                  [](Books& c) { ++entryOf(c, "reversal").legs[0].amountMinor; }},
        BookFault{"ReversalOfNothing", "a reversal, and only that",
                  [](Books& c) { entryOf(c, "reversal").reversalOf.reset(); }},
        BookFault{"RefundOfNothing", "a refund of nothing",
                  [](Books& c) {
                      entryOf(c, "refund").originalTransactionID.reset();
                      entryOf(c, "refund").externalReference.reset();
                  }},
        BookFault{"RefundOfAnOpening", "no standing income",
                  [](Books& c) { entryOf(c, "refund").originalTransactionID = "opening-bank"; }},
        BookFault{"RefundPastTheIncome", "more IDR refunded",
                  [](Books& c) { entryOf(c, "refund").legs[0].amountMinor = -80'001; }},
        BookFault{"ReferenceRefundedTwice", "refunded twice",
                  [](Books& c) {
                      c.entries.push_back(entryOf(c, "refund"));
                      c.entries.back().id = "again";
                  }},
        BookFault{"ReferenceOnAnIncome", "only a refund",
                  [](Books& c) { entryOf(c, "sale").externalReference = "R-2"; }},
        BookFault{"SecondOpening", "a second opening",
                  [](Books& c) {
                      c.entries.push_back(entryOf(c, "opening-bank"));
                      c.entries.back().id = "again";
                  }},
        BookFault{"CurrencyHeldTwice", "or one twice", [](Books& c) { c.accounts[0].currencies.emplace_back("IDR"); }},
        BookFault{"FloatOfAStranger", "nobody answers", [](Books& c) { c.accounts[2].operatorMemberID = "none"; }},
        BookFault{"ReturnToNowhere", "goes back to no account",
                  [](Books& c) { c.accounts[2].returnAccountID = "none"; }},
        BookFault{"MoneyArchived", "archived with money", [](Books& c) { c.accounts[0].archived = true; }},
        BookFault{"CategoryOfNoKind", "is of no kind", [](Books& c) { c.categories[1].kind = "transfer"; }},
        BookFault{"CategoryUnderTheOtherKind", "stands under none",
                  [](Books& c) { c.categories[1].parentID = "sales"; }},
        BookFault{"CategoryOnTheThirdLevel", "stands under none",
                  [](Books& c) {
                      c.categories[1].parentID = "fax";
                      c.categories.push_back({"more", "expense", {}, "tag", false, "rent", {}, {}, {}});
                  }},
        BookFault{"CategoryUnderAnArchivedOne", "under an archived one",
                  [](Books& c) { c.categories[1].parentID = "fax"; }},
        BookFault{"ReceiptOfAnotherEntry", "is not linked to it",
                  [](Books& c) { entryOf(c, "expense").attachmentIDs = {"linked"}; }},
        BookFault{"ReceiptLeftBehind", "does not carry it",
                  [](Books& c) { entryOf(c, "sale").attachmentIDs.clear(); }}),
    [](const auto& each) { return each.param.name; });

void step(Books& company, RandomCommands& commands, int number, WalkTally& met)
{
    const auto act = actBy(commands.actor(), fmt::format("e{}", number));
    const auto count = company.entries.size();
    walkOn(
        company,
        [&](Books& books) {
            return commands.reverses() ? books.reverse(commands.entryOf(books), reversal(), act)
                                       : books.record(commands.inputFor(books), act);
        },
        [&](const Books& books) {
            EXPECT_EQ(books.entries.size(), count + 1);
            return books.entries.back().kind;
        },
        met);
}

TEST(Books, StayWholeOnRandomWalks)
{
    WalkTally met;
    for (std::uint32_t seed = 1; seed <= 30; ++seed) {
        SCOPED_TRACE(fmt::format("seed {}", seed));
        RandomCommands commands{seed};
        auto company = books();
        company.members[0].accountGrants->push_back({"float", {"view", "expense"}});
        for (int number = 1; number <= 200; ++number)
            ASSERT_NO_FATAL_FAILURE(step(company, commands, number, met)) << "step " << number;
    }
    for (const auto* kind : {"income", "expense", "transfer", "exchange", "refund", "opening", "reversal"})
        EXPECT_GE(met.done[kind], 25) << kind;
    const std::set<std::string> everyRefusal{"CATEGORY_ARCHIVED",
                                             "account_archived",
                                             "already_reversed",
                                             "attachment_linked",
                                             "balance_limit",
                                             "duplicate_refund",
                                             "exclusive_operator",
                                             "financial_before_start_date",
                                             "financial_opening_date_mismatch",
                                             "financial_opening_exists",
                                             "forbidden",
                                             "inactive_member",
                                             "insufficient_funds",
                                             "invalid_refund_original",
                                             "not_found",
                                             "refund_limit",
                                             "refund_original_unavailable",
                                             "refunds_exist",
                                             "validation_error"};
    EXPECT_EQ(met.refused, everyRefusal);
}

}

}

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <set>
#include <string>

#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerService/Books/BookInvariants.h"
#include "LedgerService/testing/RandomCommands.h"
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

LedgerTransaction& entryOf(Books& company, std::string_view id)
{
    return *std::ranges::find(company.entries, id, &LedgerTransaction::id);
}

struct Fault {
    std::string name;
    std::string words; // part of what is said about it
    std::function<void(Books&)> damage;
};

class BrokenBooks : public testing::TestWithParam<Fault> {};

TEST_P(BrokenBooks, SayWhatIsWrong)
{
    auto company = soundBooks();
    ASSERT_EQ(BookInvariants::broken(company), std::vector<std::string>{});
    GetParam().damage(company);
    const auto said = BookInvariants::broken(company);
    EXPECT_TRUE(std::ranges::any_of(said, [](const auto& each) { return each.contains(GetParam().words); }))
        << testing::PrintToString(said);
}

INSTANTIATE_TEST_SUITE_P(
    Faults, BrokenBooks,
    testing::Values(
        Fault{"LostEntry", "its movements make",
              [](Books& c) { std::erase_if(c.entries, [](auto& e) { return e.id == "exchange"; }); }},
        Fault{"DoubledEntry", "not the only one", [](Books& c) { c.entries.push_back(entryOf(c, "exchange")); }},
        Fault{"ForgottenBalance", "has no IDR balance", [](Books& c) { c.accounts[0].balances.erase("IDR"); }},
        Fault{"BalanceOffByOne", "the IDR balance is", [](Books& c) { ++c.accounts[0].balances["IDR"]; }},
        Fault{"BalancePastTheLimit", "leaves the supported range",
              [](Books& c) { c.accounts[0].balances["IDR"] = Money::maximumMinor + 1; }},
        Fault{"FloatBelowZero", "below zero", [](Books& c) { c.accounts[2].balances["IDR"] = -1; }},
        Fault{"UnknownAccount", "does not hold", [](Books& c) { entryOf(c, "funding").legs[0].accountID = "nowhere"; }},
        Fault{"CurrencyNotHeld", "does not hold EUR", [](Books& c) { entryOf(c, "sale").legs[0].currency = "EUR"; }},
        Fault{"EmptyMovement", "impossible amount 0", [](Books& c) { entryOf(c, "sale").legs[0].amountMinor = 0; }},
        Fault{"LopsidedTransfer", "not those of the kind transfer",
              [](Books& c) { --entryOf(c, "funding").legs[1].amountMinor; }},
        Fault{"ExchangeInOneCurrency", "not those of the kind exchange",
              [](Books& c) { entryOf(c, "exchange").legs[1].currency = "IDR"; }},
        Fault{"NegativeIncome", "not those of the kind income",
              [](Books& c) { entryOf(c, "sale").legs[0].amountMinor = -1; }},
        Fault{"NoSuchDay", "is no day", [](Books& c) { entryOf(c, "sale").date = "2026-02-30"; }},
        Fault{"BeforeTheBooks", "before the start", [](Books& c) { entryOf(c, "sale").date = "2025-12-31"; }},
        Fault{"RecordedByNobody", "recorded by nobody", [](Books& c) { entryOf(c, "sale").memberID = "none"; }},
        Fault{"CategoryOfTheOtherKind", "category does not fit",
              [](Books& c) { entryOf(c, "sale").categoryID = "rent"; }},
        Fault{"CategoryOnATransfer", "category does not fit",
              [](Books& c) { entryOf(c, "funding").categoryID = "rent"; }},
        Fault{"ReversalForgotten", "does not know it", [](Books& c) { entryOf(c, "expense").reversedBy.reset(); }},
        Fault{"ReversedByAStranger", "does not reverse it",
              [](Books& c) { entryOf(c, "sale").reversedBy = "funding"; }},
        Fault{"ReversalOfAnotherAmount", "is not the opposite",
              [](Books& c) { ++entryOf(c, "reversal").legs[0].amountMinor; }},
        Fault{"ReversalOfNothing", "a reversal, and only that",
              [](Books& c) { entryOf(c, "reversal").reversalOf.reset(); }},
        Fault{"RefundOfNothing", "a refund of nothing",
              [](Books& c) {
                  entryOf(c, "refund").originalTransactionID.reset();
                  entryOf(c, "refund").externalReference.reset();
              }},
        Fault{"RefundOfAnOpening", "no standing income",
              [](Books& c) { entryOf(c, "refund").originalTransactionID = "opening-bank"; }},
        Fault{"RefundPastTheIncome", "more IDR refunded",
              [](Books& c) { entryOf(c, "refund").legs[0].amountMinor = -80'001; }},
        Fault{"ReferenceRefundedTwice", "refunded twice",
              [](Books& c) {
                  c.entries.push_back(entryOf(c, "refund"));
                  c.entries.back().id = "again";
              }},
        Fault{"ReferenceOnAnIncome", "only a refund", [](Books& c) { entryOf(c, "sale").externalReference = "R-2"; }},
        Fault{"SecondOpening", "a second opening",
              [](Books& c) {
                  c.entries.push_back(entryOf(c, "opening-bank"));
                  c.entries.back().id = "again";
              }},
        Fault{"CurrencyHeldTwice", "or one twice", [](Books& c) { c.accounts[0].currencies.emplace_back("IDR"); }},
        Fault{"FloatOfAStranger", "nobody answers", [](Books& c) { c.accounts[2].operatorMemberID = "none"; }},
        Fault{"ReturnToNowhere", "goes back to no account", [](Books& c) { c.accounts[2].returnAccountID = "none"; }},
        Fault{"MoneyArchived", "archived with money", [](Books& c) { c.accounts[0].archived = true; }},
        Fault{"CategoryOfNoKind", "is of no kind", [](Books& c) { c.categories[1].kind = "transfer"; }},
        Fault{"CategoryUnderTheOtherKind", "stands under none", [](Books& c) { c.categories[1].parentID = "sales"; }},
        Fault{"CategoryOnTheThirdLevel", "stands under none",
              [](Books& c) {
                  c.categories[1].parentID = "fax";
                  c.categories.push_back({"more", "expense", {}, "tag", false, "rent", {}, {}, {}});
              }},
        Fault{"CategoryUnderAnArchivedOne", "under an archived one",
              [](Books& c) { c.categories[1].parentID = "fax"; }},
        Fault{"ReceiptOfAnotherEntry", "is not linked to it",
              [](Books& c) { entryOf(c, "expense").attachmentIDs = {"linked"}; }},
        Fault{"ReceiptLeftBehind", "does not carry it", [](Books& c) { entryOf(c, "sale").attachmentIDs.clear(); }}),
    [](const auto& each) { return each.param.name; });

/// What a walk has met: how often each kind was recorded, and every code of a refusal.
struct Met {
    std::map<std::string, int> recorded;
    std::set<std::string> refused;
};

void step(Books& company, RandomCommands& commands, int number, Met& met)
{
    const auto act = actBy(commands.actor(), fmt::format("e{}", number));
    const auto before = company;
    const auto done = commands.reverses() ? company.reverse(commands.entryOf(company), reversal(), act)
                                          : company.record(commands.inputFor(company), act);
    if (done) {
        ASSERT_EQ(company.entries.size(), before.entries.size() + 1);
        ++met.recorded[company.entries.back().kind];
    } else {
        met.refused.emplace(done.error().code);
        ASSERT_EQ(company, before);
    }
    ASSERT_EQ(BookInvariants::broken(company), std::vector<std::string>{}) << "after step " << number;
}

TEST(Books, StayWholeOnRandomWalks)
{
    Met met;
    for (std::uint32_t seed = 1; seed <= 30; ++seed) {
        SCOPED_TRACE(fmt::format("seed {}", seed));
        RandomCommands commands{seed};
        auto company = books();
        company.members[0].accountGrants->push_back({"float", {"view", "expense"}});
        for (int number = 1; number <= 200; ++number)
            ASSERT_NO_FATAL_FAILURE(step(company, commands, number, met));
    }
    for (const auto* kind : {"income", "expense", "transfer", "exchange", "refund", "opening", "reversal"})
        EXPECT_GE(met.recorded[kind], 25) << kind;
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

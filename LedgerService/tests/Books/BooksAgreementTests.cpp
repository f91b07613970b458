#include <algorithm>
#include <set>
#include <string>

#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerCore/Domain/Entries/VisibleBooks.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerService/Access/Visibility.h"
#include "LedgerService/testing/Random/RandomCommands.h"
#include "LedgerService/testing/SampleBooks.h"

namespace LedgerService {

namespace {

using namespace SampleBooks;

/// The books as the service shows them to the member.
LedgerSnapshot seenBy(const std::string& memberID, const Books& company)
{
    LedgerSnapshot seen;
    seen.currentMember = *std::ranges::find(company.members, memberID, &Member::id);
    seen.accounts = Visibility::accounts(company.accounts, seen.currentMember);
    seen.transferDestinations = LedgerEntryAccess::transferDestinations(company.accounts, seen.currentMember);
    seen.categories = company.categories;
    seen.financialSettings = company.settings;
    std::ranges::copy_if(company.entries, std::back_inserter(seen.transactions), [&](const LedgerTransaction& entry) {
        return std::ranges::any_of(entry.legs, [&](const auto& leg) { return seen.account(leg.accountID); });
    });
    return seen;
}

bool seesAllEntries(const LedgerSnapshot& seen, const Books& company)
{
    return seen.transactions.size() == company.entries.size();
}

/// What a walk has met in agreement, and how often the books had to be excused by what the member does not see.
struct Met {
    int accepted = 0;
    int excused = 0;
    std::set<PostingReason> posting;
    std::set<ReversalRules::Refusal> reversal;
};

/// Whether the two answers may differ: only over an account or an entry that the member does not see.
bool isExcused(const std::optional<PostingRefusal>& shown, const std::optional<PostingRefusal>& held,
               const TransactionInput& input, const LedgerSnapshot& seen, const Books& company)
{
    const bool unseenTarget = input.targetAccountID && !seen.account(*input.targetAccountID);
    const auto concernsTarget = [](const std::optional<PostingRefusal>& each) {
        return each && (each->field == EntryField::destination || each->reason == PostingReason::balanceLimit);
    };
    if (unseenTarget && (concernsTarget(shown) || concernsTarget(held)))
        return true;
    if (seesAllEntries(seen, company))
        return false;
    return (shown && shown->reason == PostingReason::historyIncomplete) ||
           (held && (held->reason == PostingReason::duplicateReference || held->reason == PostingReason::refundLimit));
}

void comparePosting(const TransactionInput& input, const BookAct& act, const Books& company, Met& met)
{
    const auto seen = seenBy(act.memberID, company);
    const auto rows = company.rowsOf(input, act);
    auto context = rows.context(input);
    context.receipts.reset(); // a window cannot look uploaded receipts up
    const auto held = PostingRules::whyNot(input, context);
    const auto shown = PostingRules::whyNot(input, PostingRules::contextOf(input, VisibleBooks{seen}, act.today));
    if (shown != held) {
        ++met.excused;
        ASSERT_TRUE(isExcused(shown, held, input, seen, company))
            << act.memberID << " " << Json::encode(input) << "\nwindow " << (shown ? int(shown->reason) : -1)
            << ", service " << (held ? int(held->reason) : -1);
    } else if (held) {
        met.posting.insert(held->reason);
    } else {
        ++met.accepted;
    }
}

void compareReversal(const std::string& entryID, const BookAct& act, const Books& company, Met& met)
{
    using enum ReversalRules::Refusal;
    const auto seen = seenBy(act.memberID, company);
    const auto* const entry = company.entry(entryID);
    const auto isShown =
        entry && std::ranges::find(seen.transactions, entryID, &LedgerTransaction::id) != seen.transactions.end();
    if (!isShown)
        return;
    const VisibleBooks books{seen};
    const auto rows = company.rowsOf(entryID, act);
    const auto held = ReversalRules::whyNot(reversal(), rows.context());
    const auto shown = ReversalRules::whyNot(reversal(), ReversalRules::contextOf(*entry, books, act.today));
    const bool wholeEntry =
        std::ranges::all_of(entry->legs, [&](const auto& leg) { return seen.account(leg.accountID); });
    if (shown == held) {
        met.reversal.insert(held.value_or(invalidKey)); // which no command here has
    } else {
        ++met.excused;
        ASSERT_TRUE(held == refundsExist ? !seesAllEntries(seen, company) : !wholeEntry) << entryID;
    }
    // What is not offered at all is refused on every day.
    if (ReversalRules::whyNot(*entry, books))
        EXPECT_TRUE(held) << entryID;
}

/// Every other refund of a reference names no income, so that both members come to refund.
TransactionInput withoutOriginal(TransactionInput input, int number)
{
    if (input.kind == EntryKind::refund && input.externalReference && number % 2 == 0) {
        input.originalTransactionID.reset();
        input.sourceAccountID = number % 4 == 0 ? "branch" : "refunds";
    }
    return input;
}

TEST(Books, AgreeWithWhatAMemberSeesOnRandomWalks)
{
    Met met;
    for (std::uint32_t seed = 101; seed <= 130; ++seed) {
        SCOPED_TRACE(fmt::format("seed {}", seed));
        RandomCommands commands{seed};
        auto company = books();
        if (seed % 2 == 0)
            company.members[0].accountGrants->push_back({"float", {"view", "expense"}});
        company.members[1].accountGrants->push_back({"branch", {"refund"}});
        // Rudi returns money to the vault without seeing that it is almost full.
        auto almostAll = opening(Money::maximumMinor - 30'000);
        almostAll.targetAccountID = "vault";
        ASSERT_TRUE(company.record(almostAll, actBy("mira", "opening-vault")));
        for (int number = 1; number <= 150; ++number) {
            const auto act = actBy(commands.actor(), fmt::format("e{}", number));
            if (commands.reverses()) {
                const auto entryID = commands.entryOf(company);
                ASSERT_NO_FATAL_FAILURE(compareReversal(entryID, act, company, met));
                (void)company.reverse(entryID, reversal(), act);
            } else {
                const auto input = withoutOriginal(commands.inputFor(company), number);
                ASSERT_NO_FATAL_FAILURE(comparePosting(input, act, company, met));
                (void)company.record(input, act);
            }
        }
    }
    EXPECT_GE(met.accepted, 500);
    EXPECT_GE(met.excused, 3);
    for (const auto reason :
         {PostingReason::notFound, PostingReason::accountArchived, PostingReason::notGranted,
          PostingReason::notResponsible, PostingReason::currencyNotHeld, PostingReason::inFuture,
          PostingReason::beforeStart, PostingReason::openingDay, PostingReason::openingExists,
          PostingReason::categoryArchived, PostingReason::duplicateReference, PostingReason::refundLimit,
          PostingReason::originalUnavailable, PostingReason::notRefundable, PostingReason::insufficientFunds,
          PostingReason::balanceLimit})
        EXPECT_TRUE(met.posting.contains(reason)) << int(reason);
    using enum ReversalRules::Refusal;
    for (const auto refusal : {invalidKey, isReversal, alreadyReversed, notPermitted, refundsExist})
        EXPECT_TRUE(met.reversal.contains(refusal)) << int(refusal);
}

}

}

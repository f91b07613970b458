#include <gtest/gtest.h>

#include "LedgerCore/Domain/Entries/Drafts/EntryRules.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/testing/SnapshotBuilder.h"

namespace {

using Error = EntryValidationError;
using Fields = std::vector<std::pair<EntryField, std::string>>;

/// A company account, one in two currencies, the member's float and a refund account; the member may do everything.
SnapshotBuilder books()
{
    auto builder = snapshot();
    builder.account("bank", {"USD", "IDR"}).account("vault", {"USD", "SGD"}).employeeAccount("float", {"USD"}, "m1");
    Account refunds{.id = "refunds",
                    .name = "Refunds",
                    .currencies = {"USD"},
                    .ownerMemberID = {},
                    .archived = false,
                    .balances = {},
                    .purpose = "refund",
                    .operatorMemberID = "m1",
                    .returnAccountID = {}};
    builder.account(std::move(refunds)).grantAll();
    builder.balance("bank", "USD", 100'000).balance("float", "USD", 5'000);
    builder.category("rent", "expense", "Rent").category("sales", "income", "Sales");
    builder.income("sale", "2026-11-01", "refunds", "USD", 30'000, "sales");
    return builder;
}

TransactionDraft draft(std::string_view kind)
{
    TransactionDraft draft;
    draft.kind = kind;
    draft.date = "2026-11-20";
    draft.currency = "USD";
    draft.amount = "12.50";
    draft.idempotencyKey = "key-1";
    return draft;
}

TransactionDraft expense()
{
    auto each = draft(EntryKind::expense);
    each.source = "bank";
    each.categoryID = "rent";
    return each;
}

TransactionDraft income()
{
    auto each = draft(EntryKind::income);
    each.target = "bank";
    each.categoryID = "sales";
    return each;
}

TransactionDraft transfer(std::string source, std::string target)
{
    auto each = draft(EntryKind::transfer);
    each.source = std::move(source);
    each.target = std::move(target);
    return each;
}

TransactionDraft exchange()
{
    auto each = draft(EntryKind::exchange);
    each.source = "bank";
    each.target = "vault";
    each.targetCurrency = "SGD";
    each.targetAmount = "16.75";
    return each;
}

TransactionDraft refund()
{
    auto each = draft(EntryKind::refund);
    each.source = "refunds";
    each.originalIncomeID = "sale";
    return each;
}

TransactionDraft opening()
{
    auto each = draft(EntryKind::opening);
    each.target = "vault";
    return each;
}

/// A refund that is recorded already, of 1.00.
LedgerTransaction refundOf(std::string incomeID, std::string accountID, std::string reference)
{
    LedgerTransaction paid;
    paid.id = "refund-" + reference;
    paid.kind = EntryKind::refund;
    paid.date = "2026-11-02";
    paid.memberID = "m1";
    paid.legs = {{std::move(accountID), "USD", -100}};
    paid.originalTransactionID = std::move(incomeID);
    paid.externalReference = std::move(reference);
    return paid;
}

struct ProblemCase {
    std::string name;
    TransactionDraft draft;
    Fields problems;
};

class EntryProblems : public testing::TestWithParam<ProblemCase> {};

/// `base` with one thing done to it.
template <class Change>
TransactionDraft with(TransactionDraft base, Change change)
{
    change(base);
    return base;
}

TransactionDraft amount(TransactionDraft base, std::string text)
{
    base.amount = std::move(text);
    return base;
}

constexpr auto needsAmount = "Enter an amount greater than zero.";
constexpr auto badFormat = "Invalid amount format. Use the decimal and thousands separators for the current language.";
constexpr auto needsAccount = "Select a fund account and currency.";
constexpr auto needsCategory = "Select a purpose category";
constexpr auto needsTarget =
    "Select a valid destination account again. Another account will not be selected automatically.";
constexpr auto overLimit = "The balance would exceed the supported range. The limit is USD 90,000,000,000.00.";

}

TEST_P(EntryProblems, AreNamedUnderTheirFields)
{
    auto held = books().category("old", "expense", "Old").build();
    held.categories.back().archived = true;
    const auto input = EntryRules::input(GetParam().draft, held, "en-US");
    ASSERT_FALSE(input.has_value());
    Fields found;
    for (const auto& problem : input.error())
        found.emplace_back(problem.field, problem.message("en-US"));
    EXPECT_EQ(found, GetParam().problems);
}

INSTANTIATE_TEST_SUITE_P(
    Drafts, EntryProblems,
    testing::Values(
        ProblemCase{"NothingEntered",
                    draft(EntryKind::expense),
                    {{EntryField::account, needsAccount}, {EntryField::category, needsCategory}}},
        ProblemCase{"NoAmountAndNoCategory",
                    with(expense(),
                         [](auto& each) {
                             each.amount = "  ";
                             each.categoryID.reset();
                         }),
                    {{EntryField::amount, needsAmount}, {EntryField::category, needsCategory}}},
        ProblemCase{"Zero", amount(expense(), "0.00"), {{EntryField::amount, needsAmount}}},
        ProblemCase{"Negative", amount(income(), "-5"), {{EntryField::amount, needsAmount}}},
        ProblemCase{"OtherLanguagesSeparator", amount(expense(), "1.234,56"), {{EntryField::amount, badFormat}}},
        ProblemCase{"TooPrecise",
                    amount(expense(), "1.234"),
                    {{EntryField::amount, "The amount has more decimal places than this currency supports."}}},
        ProblemCase{
            "PastTheLargestAmount",
            amount(expense(), "90,000,000,000.01"),
            {{EntryField::amount, "The amount exceeds the supported range. The limit is USD 90,000,000,000.00."}}},
        ProblemCase{"BalancePastTheLimit", amount(income(), "90,000,000,000"), {{EntryField::amount, overLimit}}},
        ProblemCase{"CurrencyNotHeld",
                    with(expense(), [](auto& each) { each.currency = "EUR"; }),
                    {{EntryField::account, needsAccount}}},
        ProblemCase{"AccountGone",
                    with(expense(), [](auto& each) { each.source = "closed"; }),
                    {{EntryField::account,
                      "The original account is no longer available for entries. Select an account again."}}},
        ProblemCase{"CategoryOfTheOtherKind",
                    with(expense(), [](auto& each) { each.categoryID = "sales"; }),
                    {{EntryField::category, "The previous category is no longer available. Select another one."}}},
        ProblemCase{"ArchivedCategory",
                    with(expense(), [](auto& each) { each.categoryID = "old"; }),
                    {{EntryField::category, "The previous category is no longer available. Select another one."}}},
        ProblemCase{"ExchangeIntoACurrencyNotHeld",
                    with(exchange(), [](auto& each) { each.targetCurrency = "IDR"; }),
                    {{EntryField::destination, needsAccount}}},
        ProblemCase{"PettyCashTooLow",
                    amount(with(expense(), [](auto& each) { each.source = "float"; }), "50.01"),
                    {{EntryField::amount, "Insufficient petty cash. Available balance in this currency: USD 50.00"}}},
        ProblemCase{"PettyCashTooLowToReturn",
                    amount(transfer("float", "bank"), "51"),
                    {{EntryField::amount, "Insufficient petty cash. Available balance in this currency: USD 50.00"}}},
        ProblemCase{"DestinationIsTheSource", transfer("bank", "bank"), {{EntryField::destination, needsTarget}}},
        ProblemCase{"DestinationWithoutTheCurrency",
                    with(transfer("bank", "float"), [](auto& each) { each.currency = "IDR"; }),
                    {{EntryField::destination, needsTarget}}},
        ProblemCase{"DestinationPastTheLimit",
                    amount(transfer("vault", "bank"), "90,000,000,000"),
                    {{EntryField::amount, overLimit}}},
        ProblemCase{"ExchangeOfOneCurrency",
                    with(exchange(), [](auto& each) { each.targetCurrency = "USD"; }),
                    {{EntryField::destination, "Choose two different currencies."}}},
        ProblemCase{"ExchangeWithoutAmountReceived",
                    with(exchange(), [](auto& each) { each.targetAmount.clear(); }),
                    {{EntryField::targetAmount, needsAmount}}},
        ProblemCase{
            "RefundOfNothing",
            with(refund(), [](auto& each) { each.originalIncomeID.reset(); }),
            {{EntryField::original,
              "Select an unreversed income record in the same currency, or enter an external refund reference."}}},
        ProblemCase{"RefundPastItsIncome",
                    amount(refund(), "300.01"),
                    {{EntryField::amount, "More than this income can still refund: USD 300.00"}}},
        ProblemCase{"RefundOfAnExpense",
                    with(refund(), [](auto& each) { each.originalIncomeID = "rent"; }),
                    {{EntryField::original, "This income can no longer be refunded. Select another one."}}}),
    [](const auto& each) { return each.param.name; });

TEST(EntryRules, SendExactlyTheFieldsOfTheKind)
{
    const auto held = books().build();
    const auto sent = [&](const TransactionDraft& each) {
        const auto input = EntryRules::input(each, held, "en-US");
        return input ? Json::encode(*input) : input.error().front().message("en-US");
    };
    EXPECT_EQ(sent(with(expense(), [](auto& each) { each.note = " Rent, November "; })),
              R"({"kind":"expense","date":"2026-11-20","note":"Rent, November","categoryID":"rent",)"
              R"("sourceAccountID":"bank","currency":"USD","amountMinor":1250,"attachmentIDs":[],)"
              R"("idempotencyKey":"key-1"})");
    EXPECT_EQ(sent(with(income(), [](auto& each) { each.attachments = {"r2", "r1"}; })),
              R"({"kind":"income","date":"2026-11-20","note":"","categoryID":"sales","targetAccountID":"bank",)"
              R"("currency":"USD","amountMinor":1250,"attachmentIDs":["r2","r1"],"idempotencyKey":"key-1"})");
    EXPECT_EQ(sent(exchange()),
              R"({"kind":"exchange","date":"2026-11-20","note":"","sourceAccountID":"bank",)"
              R"("targetAccountID":"vault","currency":"USD","targetCurrency":"SGD","amountMinor":1250,)"
              R"("targetAmountMinor":1675,"attachmentIDs":[],"idempotencyKey":"key-1"})");
    EXPECT_EQ(sent(with(refund(), [](auto& each) { each.refundReference = " R-7 "; })),
              R"({"kind":"refund","date":"2026-11-20","note":"","sourceAccountID":"refunds","currency":"USD",)"
              R"("amountMinor":1250,"attachmentIDs":[],"idempotencyKey":"key-1","originalTransactionID":"sale",)"
              R"("externalReference":"R-7"})");
}

TEST(EntryRules, GiveATransferItsPurpose)
{
    const auto held = books().build();
    const auto purpose = [&](const TransactionDraft& each) {
        return EntryRules::input(each, held, "en-US").value().transferPurpose;
    };
    EXPECT_EQ(purpose(transfer("bank", "float")), "funding");
    EXPECT_EQ(purpose(transfer("float", "bank")), "return");
    EXPECT_EQ(purpose(transfer("bank", "vault")), std::nullopt);
}

TEST(EntryRules, BookAnOpeningOnTheStartOfTheBooksOnce)
{
    auto held = books().build();
    held.financialSettings.emplace().bookkeepingStartDate = "2024-01-01";
    const auto first = EntryRules::input(opening(), held, "en-US");
    ASSERT_TRUE(first.has_value());
    EXPECT_EQ(first->date, "2024-01-01");
    EXPECT_EQ(first->targetAccountID, "vault");

    auto opened = books().entry("o1", EntryKind::opening, "2024-01-01", {{"vault", "USD", 700}}).build();
    const auto second = EntryRules::input(opening(), opened, "en-US");
    ASSERT_FALSE(second.has_value());
    EXPECT_EQ(second.error(), (std::vector<EntryProblem>{{EntryField::account, PostingReason::openingExists}}));

    auto partly = books().income("i1", "2026-11-03", "vault", "USD", 700).balance("vault", "USD", 900).build();
    const auto unsure = EntryRules::input(opening(), partly, "en-US");
    ASSERT_FALSE(unsure.has_value());
    EXPECT_EQ(unsure.error(), (std::vector<EntryProblem>{{EntryField::account, PostingReason::historyIncomplete}}));
}

TEST(EntryRules, JudgeTheDayTheNoteAndTheReference)
{
    auto builder = books();
    auto earlier = refundOf("none", "refunds", "R-7");
    const auto held = builder.entry(earlier).build();
    const VisibleBooks visible{held};
    const auto said = [&](const TransactionDraft& each) {
        const auto input = EntryRules::input(each, visible, "2026-11-20", "en-US");
        return input ? std::string{"recorded"} : input.error().front().message("en-US");
    };
    EXPECT_EQ(said(with(expense(), [](auto& each) { each.date = "2026-11-21"; })), "recorded");
    EXPECT_EQ(said(with(expense(), [](auto& each) { each.date = "2026-11-22"; })),
              "The day cannot be later than tomorrow.");
    EXPECT_EQ(said(with(expense(), [](auto& each) { each.date = "22/11/2026"; })), "Choose a day.");
    EXPECT_EQ(said(with(refund(), [](auto& each) { each.date = "2026-10-30"; })),
              "The day lies before the income that is refunded.");
    EXPECT_EQ(said(with(expense(), [](auto& each) { each.note = std::string(2'000, 'n') + "  "; })), "recorded");
    EXPECT_EQ(said(with(expense(), [](auto& each) { each.note = std::string(2'001, 'n'); })),
              "The note cannot be longer than 2,000 characters.");
    EXPECT_EQ(said(with(refund(), [](auto& each) { each.refundReference = " r-7"; })),
              "Another refund already carries this reference. Check the original record.");
    EXPECT_EQ(said(with(refund(), [](auto& each) { each.refundReference = "R-8"; })), "recorded");
}

TEST(EntryRules, CountWhatAnIncomeCanStillRefund)
{
    auto builder = books();
    LedgerTransaction paid{.id = "r1",
                           .kind = std::string{EntryKind::refund},
                           .date = "2026-11-02",
                           .note = {},
                           .createdAt = {},
                           .memberID = "m1",
                           .categoryID = {},
                           .legs = {{"refunds", "USD", -10'000}},
                           .attachmentIDs = {},
                           .reversedBy = {},
                           .reversalOf = {},
                           .originalTransactionID = "sale",
                           .externalReference = {},
                           .transferPurpose = {},
                           .distributionKind = {},
                           .participantName = {},
                           .dividendMovementID = {},
                           .capitalContributionID = {}};
    auto undone = paid;
    undone.id = "r2";
    undone.reversedBy = "r3";
    builder.entry(paid).entry(undone);
    const auto once = builder.build();
    const auto open = EntryRules::refundableIncomes(once, "USD");
    ASSERT_EQ(open.size(), 1U);
    EXPECT_EQ(open.front().remainingMinor, 20'000);

    paid.id = "r4";
    paid.legs = {{"refunds", "USD", -20'000}};
    EXPECT_TRUE(EntryRules::refundableIncomes(builder.entry(paid).build(), "USD").empty());
}

TEST(EntryRules, DoNotTrustAFloatWhoseBalanceIsMissing)
{
    auto held = books().expense("e1", "2026-11-03", "float", "USD", 100, "rent").build();
    for (auto& account : held.accounts)
        account.balances.clear();
    auto wanted = expense();
    wanted.source = "float";
    const auto unknown = EntryRules::input(wanted, held, "en-US");
    ASSERT_FALSE(unknown.has_value());
    EXPECT_EQ(unknown.error(), (std::vector<EntryProblem>{{EntryField::amount, Error{Error::ReserveUnknown{"USD"}}}}));
    held.transactions.clear();
    EXPECT_EQ(EntryRules::reserve(VisibleBooks{held}, *held.account("float"), "USD"), 0);
}

TEST(EntryRules, OfferDestinationsOnceSeenOrNot)
{
    auto held = snapshot().account("bank", {"USD"}).grantAll().build();
    held.currentMember.accountGrants->push_back({"hidden", {"transferIn"}});
    held.currentMember.permissions->clear();
    held.transferDestinations = {{{"hidden", "Rizky's float", {"USD"}, true, false},
                                  {"other", "No grant", {"USD"}, true, false},
                                  {"euro", "Other currency", {"EUR"}, true, false},
                                  {"branch", "Seen already", {"USD"}, false, true}}};
    held.accounts.push_back(books().build().accounts[1]);
    held.accounts[1].id = "branch";
    held.currentMember.accountGrants->push_back({"branch", {"view", "transferIn"}});
    auto wanted = draft(EntryKind::transfer);
    wanted.source = "bank";
    const auto options = EntryRules::destinations(held, wanted);
    ASSERT_EQ(options.size(), 2U);
    EXPECT_EQ(options[0].seen, &held.accounts[1]);
    EXPECT_EQ(options[1].id, "hidden");
    EXPECT_EQ(options[1].seen, nullptr);
    EXPECT_EQ(options[1].transferPurpose, "funding");
    EXPECT_EQ(EntryRules::retainedTarget("hidden", options), "hidden");
    EXPECT_EQ(EntryRules::retainedTarget("other", options), std::nullopt);
}

TEST(EntryRules, PreselectNoAccountThatWasNotMeant)
{
    const auto held = books().build();
    const auto chosen = [&](std::optional<std::string> asked, std::optional<std::string> preferred,
                            std::optional<std::string> currency, std::vector<const Account*> options) {
        return EntryRules::initialAccountID(asked, preferred, currency, options).value_or("none");
    };
    const auto* const bank = held.account("bank");
    const auto* const vault = held.account("vault");
    EXPECT_EQ(chosen("vault", "bank", "IDR", {bank, vault}), "vault");
    EXPECT_EQ(chosen("gone", "bank", {}, {bank, vault}), "none");
    EXPECT_EQ(chosen({}, "bank", "USD", {bank, vault}), "bank");
    EXPECT_EQ(chosen({}, "bank", "SGD", {bank, vault}), "vault");
    EXPECT_EQ(chosen({}, "gone", "USD", {bank, vault}), "none");
    EXPECT_EQ(chosen({}, {}, {}, {vault}), "vault");
    EXPECT_EQ(chosen({}, {}, {}, {}), "none");
}

TEST(EntryRules, OfferOnlyKindsWithAnAccount)
{
    auto held = books().build();
    EXPECT_EQ(EntryRules::availableKinds(held),
              (std::vector<std::string_view>{"expense", "income", "transfer", "exchange"}));
    std::erase_if(held.accounts, [](const Account& each) { return each.id != "refunds"; });
    EXPECT_EQ(EntryRules::availableKinds(held), (std::vector<std::string_view>{"expense", "transfer"}));
}

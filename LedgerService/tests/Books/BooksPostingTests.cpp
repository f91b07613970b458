#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerService/Books/BookInvariants.h"
#include "LedgerService/testing/SampleBooks.h"

namespace LedgerService {

namespace {

using namespace SampleBooks;

using Legs = std::vector<LedgerLeg>;
using Balances = std::vector<BalanceAfter>;

struct AcceptedCase {
    std::string name;
    TransactionInput input;
    std::string memberID;
    Legs legs;
    Balances balances;
};

class AcceptedEntry : public testing::TestWithParam<AcceptedCase> {};

TEST_P(AcceptedEntry, MovesMoneyAndBalances)
{
    const auto& each = GetParam();
    const auto change = decide(each.input, books().rowsOf(each.input, actBy(each.memberID, "e7")));
    ASSERT_TRUE(change) << change.error().message;
    EXPECT_EQ(change->entry.id, "e7");
    EXPECT_EQ(change->entry.memberID, each.memberID);
    EXPECT_EQ(change->entry.createdAt, "2026-03-10T09:30:00.000Z");
    EXPECT_EQ(change->entry.legs, each.legs);
    EXPECT_EQ(change->balances, each.balances);
}

TransactionInput withAttachment(TransactionInput input, std::string id)
{
    input.attachmentIDs = {std::move(id)};
    return input;
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, AcceptedEntry,
    testing::Values(AcceptedCase{"Income",
                                 withAttachment(income(), "free"),
                                 "mira",
                                 {{"bank", "IDR", 10'000}},
                                 {{"bank", "IDR", 1'010'000}}},
                    AcceptedCase{"Expense", expense(), "mira", {{"bank", "IDR", -10'000}}, {{"bank", "IDR", 990'000}}},
                    AcceptedCase{"ExpenseBelowZeroOnABank",
                                 expense(1'000'001),
                                 "mira",
                                 {{"bank", "IDR", -1'000'001}},
                                 {{"bank", "IDR", -1}}},
                    AcceptedCase{"Transfer",
                                 transfer(),
                                 "mira",
                                 {{"bank", "IDR", -10'000}, {"branch", "IDR", 10'000}},
                                 {{"bank", "IDR", 990'000}, {"branch", "IDR", 10'000}}},
                    AcceptedCase{"FundingOfAnUnseenFloat",
                                 funding(),
                                 "mira",
                                 {{"bank", "IDR", -10'000}, {"float", "IDR", 10'000}},
                                 {{"bank", "IDR", 990'000}, {"float", "IDR", 10'000}}},
                    AcceptedCase{"ExchangeOnOneAccount",
                                 exchange(),
                                 "mira",
                                 {{"bank", "IDR", -150'000}, {"bank", "USD", 1'000}},
                                 {{"bank", "IDR", 850'000}, {"bank", "USD", 1'500}}},
                    AcceptedCase{"RefundOfTheWholeIncome",
                                 refund(80'000),
                                 "mira",
                                 {{"refunds", "IDR", -80'000}},
                                 {{"refunds", "IDR", -30'000}}},
                    AcceptedCase{
                        "Opening", opening(), "mira", {{"branch", "IDR", 10'000}}, {{"branch", "IDR", 10'000}}}),
    [](const auto& each) { return each.param.name; });

TEST(Posting, KeepsWhatTheCommandSaysAboutTheEntry)
{
    auto input = refund();
    input.date = "2026-03-09"; // of a clock that is a day behind the income's
    input.note = "Damaged parcel";
    input.externalReference = "  BNI 7731 ";
    input.transferPurpose = "";
    const auto change = decide(input, books().rowsOf(input, actBy("mira")));
    ASSERT_TRUE(change) << change.error().message;
    EXPECT_EQ(change->entry.kind, "refund");
    EXPECT_EQ(change->entry.date, "2026-03-09");
    EXPECT_EQ(change->entry.note, "Damaged parcel");
    EXPECT_EQ(change->entry.externalReference, "BNI 7731");
    EXPECT_EQ(change->entry.originalTransactionID, "sale");
    EXPECT_FALSE(change->entry.transferPurpose);
    EXPECT_FALSE(change->entry.categoryID);
}

TEST(Posting, ReturnsMoneyToTheUnseenReturnAccountOfTheFloat)
{
    auto company = books();
    ASSERT_TRUE(company.record(funding(30'000), actBy("mira", "funding")));
    ASSERT_TRUE(company.record(returning(30'000), actBy("rudi", "return")));
    EXPECT_EQ(company.account("float")->balance("IDR"), 0);
    EXPECT_EQ(company.account("vault")->balance("IDR"), 30'000);
}

struct RefusedCase {
    std::string name;
    TransactionInput input;
    int status;
    std::string code;
    std::string memberID = "mira";
    std::function<void(Books&)> arrange = [](Books&) {};
};

class RefusedEntry : public testing::TestWithParam<RefusedCase> {};

TEST_P(RefusedEntry, HasItsStatusAndCode)
{
    const auto& each = GetParam();
    auto company = books();
    each.arrange(company);
    const auto before = company;
    const auto done = company.record(each.input, actBy(each.memberID));
    ASSERT_FALSE(done);
    EXPECT_EQ(done.error().status, each.status);
    EXPECT_EQ(done.error().code, each.code);
    EXPECT_FALSE(done.error().message.empty());
    EXPECT_EQ(company, before);
}

template <class Value>
TransactionInput with(TransactionInput input, Value TransactionInput::* field, std::type_identity_t<Value> value)
{
    input.*field = std::move(value);
    return input;
}

using Input = TransactionInput;

INSTANTIATE_TEST_SUITE_P(
    Shape, RefusedEntry,
    testing::Values(
        RefusedCase{"UnknownKind", with(income(), &Input::kind, "gift"), 400, "validation_error"},
        RefusedCase{"PostedReversal", with(income(), &Input::kind, "reversal"), 400, "validation_error"},
        RefusedCase{"PostedDividend", with(income(), &Input::kind, "dividend"), 400, "validation_error"},
        RefusedCase{"ZeroAmount", income(0), 400, "validation_error"},
        RefusedCase{"NegativeAmount", income(-1), 400, "validation_error"},
        RefusedCase{"AmountPastTheLimit", income(Money::maximumMinor + 1), 400, "validation_error"},
        RefusedCase{"SmallestInteger", income(INT64_MIN), 400, "validation_error"},
        RefusedCase{"ReceivedZero", exchange(1'000, 0), 400, "validation_error"},
        RefusedCase{"ReceivedTooMuch", exchange(1'000, Money::maximumMinor + 1), 400, "validation_error"},
        RefusedCase{"NoSuchDay", with(income(), &Input::date, "2026-02-29"), 400, "validation_error"},
        RefusedCase{"NoKey", with(income(), &Input::idempotencyKey, ""), 400, "validation_error"},
        RefusedCase{"EndlessKey", with(income(), &Input::idempotencyKey, std::string(201, 'k')), 400,
                    "validation_error"},
        RefusedCase{"EndlessNote", with(income(), &Input::note, std::string(2'001, 'n')), 400, "validation_error"},
        RefusedCase{"NoteWithABrokenLetter", with(income(), &Input::note, "\xC3("), 400, "validation_error"},
        RefusedCase{"NoteWithANul", with(income(), &Input::note, std::string("a\0b", 3)), 400, "validation_error"},
        RefusedCase{"EndlessReference", with(refund(), &Input::externalReference, std::string(201, 'r')), 400,
                    "validation_error"},
        RefusedCase{"NoCurrency", with(income(), &Input::currency, ""), 400, "validation_error"},
        RefusedCase{"IncomeWithASource", with(income(), &Input::sourceAccountID, "branch"), 400, "validation_error"},
        RefusedCase{"IncomeWithoutATarget", with(income(), &Input::targetAccountID, std::nullopt), 400,
                    "validation_error"},
        RefusedCase{"IncomeWithoutACategory", with(income(), &Input::categoryID, std::nullopt), 400,
                    "validation_error"},
        RefusedCase{"ExpenseWithoutACategory", with(expense(), &Input::categoryID, ""), 400, "validation_error"},
        RefusedCase{"ExpenseWithAPurpose", with(expense(), &Input::transferPurpose, "funding"), 400,
                    "validation_error"},
        RefusedCase{"ExpenseWithAReference", with(expense(), &Input::externalReference, "R1"), 400, "validation_error"},
        RefusedCase{"TransferWithACategory", with(transfer(), &Input::categoryID, "rent"), 400, "validation_error"},
        RefusedCase{"TransferWithAReceivedAmount", with(transfer(), &Input::targetAmountMinor, 10'000), 400,
                    "validation_error"},
        RefusedCase{"TransferIntoAnotherCurrency", with(transfer(), &Input::targetCurrency, "USD"), 400,
                    "validation_error"},
        RefusedCase{"TransferToItself", with(transfer(), &Input::targetAccountID, "bank"), 400, "validation_error"},
        RefusedCase{"ExchangeIntoTheSameCurrency", with(exchange(), &Input::targetCurrency, "IDR"), 400,
                    "validation_error"},
        RefusedCase{"ExchangeWithoutAReceivedAmount", with(exchange(), &Input::targetAmountMinor, std::nullopt), 400,
                    "validation_error"},
        RefusedCase{"RefundIntoAnAccount", with(refund(), &Input::targetAccountID, "bank"), 400, "validation_error"},
        RefusedCase{"OpeningWithACategory", with(opening(), &Input::categoryID, "sales"), 400, "validation_error"},
        RefusedCase{"OpeningOfAnIncome", with(opening(), &Input::originalTransactionID, "sale"), 400,
                    "validation_error"},
        RefusedCase{"ElevenReceipts",
                    with(income(), &Input::attachmentIDs, {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "10"}),
                    400, "validation_error"},
        RefusedCase{"TheSameReceiptTwice", with(income(), &Input::attachmentIDs, {"free", "free"}), 400,
                    "validation_error"},
        RefusedCase{"RefundOfNothing", with(refund(), &Input::originalTransactionID, std::nullopt), 400,
                    "refund_reference_required"},
        RefusedCase{"RefundOfABlankReference",
                    with(with(refund(), &Input::originalTransactionID, ""), &Input::externalReference, "  "), 400,
                    "refund_reference_required"}),
    [](const auto& each) { return each.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Access, RefusedEntry,
    testing::Values(
        RefusedCase{"DeactivatedMember", income(), 403, "inactive_member", "gone"},
        RefusedCase{"UnknownAccount", with(expense(), &Input::sourceAccountID, "nowhere"), 404, "not_found"},
        RefusedCase{"InvisibleAccount", with(expense(), &Input::sourceAccountID, "hidden"), 404, "not_found"},
        RefusedCase{"InvisibleTarget", with(income(), &Input::targetAccountID, "hidden"), 404, "not_found"},
        RefusedCase{"InvisibleTransferTarget", with(transfer(), &Input::targetAccountID, "hidden"), 404, "not_found"},
        RefusedCase{"UnknownCategory", with(income(), &Input::categoryID, "none"), 404, "not_found"},
        RefusedCase{"UnknownReceipt", with(income(), &Input::attachmentIDs, {"none"}), 404, "not_found"},
        RefusedCase{"UnknownOriginal", with(refund(), &Input::originalTransactionID, "none"), 404, "not_found"},
        RefusedCase{"InvisibleOriginal", with(with(refund(), &Input::sourceAccountID, "float"), &Input::note, ""), 404,
                    "not_found", "rudi"},
        RefusedCase{"VisibleWithoutAGrant", expense(), 403, "forbidden", "guest"},
        RefusedCase{"ArchivedAccount", with(income(), &Input::targetAccountID, "closed"), 409, "account_archived"},
        RefusedCase{"ArchivedDestination", with(transfer(), &Input::targetAccountID, "closed"), 409,
                    "account_archived"},
        RefusedCase{
            "FloatOfAnother", with(expense(), &Input::sourceAccountID, "float"), 403, "exclusive_operator", "mira",
            [](Books& company) { company.members[0].accountGrants->push_back({"float", {"view", "expense"}}); }},
        RefusedCase{"IncomeOnARefundAccount", with(income(), &Input::targetAccountID, "refunds"), 403, "forbidden"},
        RefusedCase{"ExchangeOnAFloat",
                    with(with(exchange(), &Input::sourceAccountID, "float"), &Input::targetAccountID, "float"), 403,
                    "forbidden", "rudi"},
        RefusedCase{"TransferWithoutTransferIn", with(returning(), &Input::targetAccountID, "branch"), 403, "forbidden",
                    "rudi"},
        RefusedCase{"FloatIntoRefundAccount", with(returning(), &Input::targetAccountID, "refunds"), 403, "forbidden",
                    "rudi",
                    [](Books& company) { company.members[1].accountGrants->push_back({"refunds", {"transferIn"}}); }},
        RefusedCase{"FundingWithoutItsPurpose", with(funding(), &Input::transferPurpose, std::nullopt), 400,
                    "validation_error"},
        RefusedCase{"PlainTransferWithAPurpose", with(transfer(), &Input::transferPurpose, "funding"), 400,
                    "validation_error"},
        RefusedCase{"ReturnCalledFunding", with(returning(), &Input::transferPurpose, "funding"), 400,
                    "validation_error", "rudi"},
        RefusedCase{"CurrencyNotHeld", with(expense(), &Input::currency, "EUR"), 400, "validation_error"},
        RefusedCase{"CurrencyNotHeldByTheTarget", with(transfer(), &Input::currency, "USD"), 400, "validation_error"},
        RefusedCase{"ReceivedCurrencyNotHeld", with(exchange(), &Input::targetCurrency, "EUR"), 400,
                    "validation_error"}),
    [](const auto& each) { return each.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Rules, RefusedEntry,
    testing::Values(
        RefusedCase{"TheDayAfterTomorrow", with(income(), &Input::date, "2026-03-12"), 400, "validation_error"},
        RefusedCase{"BeforeTheBooks", with(income(), &Input::date, "2025-12-31"), 409, "financial_before_start_date"},
        RefusedCase{"OpeningOnAnotherDay", with(opening(), &Input::date, "2026-01-02"), 409,
                    "financial_opening_date_mismatch"},
        RefusedCase{"SecondOpening", with(opening(), &Input::targetAccountID, "bank"), 409, "financial_opening_exists"},
        RefusedCase{"CategoryOfTheOtherKind", with(income(), &Input::categoryID, "rent"), 400, "validation_error"},
        RefusedCase{"ArchivedCategory", with(expense(), &Input::categoryID, "fax"), 409, "CATEGORY_ARCHIVED"},
        RefusedCase{"RefundOfAnOpening", with(refund(), &Input::originalTransactionID, "opening-bank"), 400,
                    "invalid_refund_original"},
        RefusedCase{"RefundInAnotherCurrency",
                    with(with(refund(), &Input::currency, "USD"), &Input::sourceAccountID, "bank"), 400,
                    "invalid_refund_original"},
        RefusedCase{"RefundOfAReversedIncome", refund(), 409, "refund_original_unavailable", "mira",
                    [](Books& company) { ASSERT_TRUE(company.reverse("sale", reversal(), actBy("mira", "undo"))); }},
        RefusedCase{"RefundBeforeTheIncome", with(refund(), &Input::date, "2026-03-08"), 400, "validation_error"},
        RefusedCase{"RefundOnAnAccountWithoutTheGrant", refund(), 409, "refund_original_unavailable", "mira",
                    [](Books& company) { std::erase(company.members[0].accountGrants->front().actions, "refund"); }},
        RefusedCase{"RefundPastTheIncome", refund(80'001), 409, "refund_limit"},
        RefusedCase{"RefundPastTheRestOfTheIncome", refund(50'001), 409, "refund_limit", "mira",
                    [](Books& company) { ASSERT_TRUE(company.record(refund(30'000), actBy("mira", "first"))); }},
        RefusedCase{"TheSameReferenceInSmallLetters", with(refund(), &Input::externalReference, " r-9 "), 409,
                    "duplicate_refund", "mira",
                    [](Books& company) {
                        ASSERT_TRUE(
                            company.record(with(refund(), &Input::externalReference, "R-9"), actBy("mira", "first")));
                    }},
        RefusedCase{"LinkedReceipt", with(income(), &Input::attachmentIDs, {"linked"}), 409, "attachment_linked"},
        RefusedCase{"FloatBelowZero", with(returning(), &Input::amountMinor, 20'001), 409, "insufficient_funds", "rudi",
                    [](Books& company) { ASSERT_TRUE(company.record(funding(20'000), actBy("mira", "first"))); }},
        RefusedCase{"ExpenseFromAnEmptyFloat", with(expense(), &Input::sourceAccountID, "float"), 409,
                    "insufficient_funds", "rudi"},
        RefusedCase{"BalancePastTheLimit", income(Money::maximumMinor - 999'999), 409, "balance_limit"}),
    [](const auto& each) { return each.param.name; });

TEST(Posting, TakesTomorrowForMembersWhoLiveATimeZoneAhead)
{
    auto company = books();
    EXPECT_TRUE(company.record(with(income(), &Input::date, "2026-03-11"), actBy("mira")));
}

TEST(Posting, FillsABalanceUpToTheLimitExactly)
{
    auto company = books();
    ASSERT_TRUE(company.record(income(Money::maximumMinor - 1'000'000), actBy("mira")));
    EXPECT_EQ(company.account("bank")->balance("IDR"), 9'000'000'000'000);
}

TEST(Posting, OpensAgainOnceTheOpeningIsReversed)
{
    auto company = books();
    ASSERT_TRUE(company.reverse("opening-bank", reversal(), actBy("mira", "undo")));
    EXPECT_TRUE(company.record(with(opening(), &Input::targetAccountID, "bank"), actBy("mira")));
    EXPECT_EQ(BookInvariants::broken(company), std::vector<std::string>{});
}

TEST(Posting, FreesReferenceAndIncomeOnceTheRefundIsReversed)
{
    auto company = books();
    const auto whole = with(refund(80'000), &Input::externalReference, "R-9");
    ASSERT_TRUE(company.record(whole, actBy("mira", "first")));
    ASSERT_TRUE(company.reverse("first", reversal(), actBy("mira", "undo")));
    EXPECT_TRUE(company.record(whole, actBy("mira", "second")));
}

}

}

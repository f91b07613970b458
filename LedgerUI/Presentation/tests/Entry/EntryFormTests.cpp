#include <algorithm>

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Entries/Drafts/EntryRules.h"
#include "LedgerCore/Domain/testing/SnapshotBuilder.h"
#include "LedgerUI/Presentation/Entry/EntryCategories.h"
#include "LedgerUI/Presentation/Entry/EntryEdits.h"
#include "LedgerUI/Presentation/Entry/EntryFormContent.h"
#include "LedgerUI/Presentation/Entry/EntryFormState.h"
#include "LedgerUI/Presentation/Entry/EntryRefundables.h"
#include "LedgerUI/Presentation/Entry/EntryReversal.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

SnapshotBuilder booksWithoutBalances()
{
    auto builder = snapshot();
    builder.account("bank", {"IDR", "USD"}).account("vault", {"USD", "SGD"}).employeeAccount("float", {"USD"}, "m1");
    return builder.grantAll();
}

SnapshotBuilder books()
{
    auto builder = booksWithoutBalances();
    builder.balance("bank", "IDR", 28'412'045'000).balance("bank", "USD", 100'000);
    builder.category("utilities", "expense", "Utilities").category("power", "expense", "Electricity", "utilities");
    builder.category("water", "expense", "Water supply", "utilities").category("rent", "expense", "Rent");
    builder.category("sales", "income", "Sales");
    return builder;
}

EntryEditing opened(std::string kind, std::optional<std::string> account, const LedgerSnapshot& held)
{
    return EntryEdits::opened({std::move(kind), std::move(account), {}}, held, "key-1");
}

EntryFormContent shown(const EntryEditing& editing, const LedgerSnapshot& held)
{
    return EntryForm::content(EntrySubmission{editing}, held, "2026-11-20", "en-US");
}

std::vector<std::string> idsOf(const std::vector<EntryCategory>& categories)
{
    std::vector<std::string> ids;
    for (const auto& each : categories)
        ids.push_back(each.id);
    return ids;
}

}

TEST(EntryForm, OpensOnTheAccountLastUsedForTheKind)
{
    auto held = books().expense("e1", "2026-11-01", "vault", "USD", 5, "rent").build();
    EXPECT_EQ(opened("expense", {}, held).draft.source, "vault");
    EXPECT_EQ(opened("expense", {}, held).draft.currency, "USD");
    EXPECT_EQ(opened("income", {}, held).draft.target, std::nullopt);
    EXPECT_EQ(opened("expense", "bank", held).draft.currency, "IDR");
}

TEST(EntryForm, KeepsWhatWasTypedWhenTheKindChanges)
{
    const auto held = books().build();
    auto now = EntryEdits::withAmount(opened("expense", "bank", held), "1,250");
    now = EntryEdits::withNote(EntryEdits::withCategory(now, "rent"), "November");
    now = EntryEdits::withKind(now, "income", held);
    EXPECT_EQ(now.draft.target, "bank");
    EXPECT_EQ(now.draft.source, std::nullopt);
    EXPECT_EQ(now.draft.categoryID, std::nullopt);
    EXPECT_EQ(now.draft.amount, "1,250");
    EXPECT_EQ(now.draft.note, "November");
}

TEST(EntryForm, ClearsTheAmountWithTheCurrencyAndSaysSo)
{
    const auto held = books().build();
    auto now = EntryEdits::withAmount(opened("expense", "bank", held), "1,250");
    now = EntryEdits::withCurrency(now, "USD", held);
    EXPECT_EQ(now.draft.amount, "");
    EXPECT_EQ(shown(now, held).sent.notice, QStringLiteral("Currency changed. Enter the amount again in: USD"));
    now = EntryEdits::withAmount(now, "5");
    EXPECT_EQ(shown(now, held).sent.notice, QString{});
}

TEST(EntryForm, SaysThatTheAmountReceivedWasClearedWithItsCurrency)
{
    const auto held = books().build();
    auto exchange = EntryEdits::withDestination(opened("exchange", "bank", held), "vault", held);
    exchange = EntryEdits::withTargetAmount(EntryEdits::withAmount(exchange, "1,600,000"), "100.00");
    ASSERT_EQ(exchange.draft.targetCurrency, "USD");

    const auto sentUsd = EntryEdits::withCurrency(exchange, "USD", held);
    EXPECT_EQ(sentUsd.draft.targetCurrency, "SGD");
    EXPECT_EQ(sentUsd.draft.targetAmount, "");
    EXPECT_EQ(shown(sentUsd, held).received.notice, QStringLiteral("Currency changed. Enter the amount again in: SGD"));

    auto toSgd = EntryEdits::withTargetAmount(EntryEdits::withTargetCurrency(exchange, "SGD"), "134.00");
    toSgd = EntryEdits::withDestination(toSgd, "bank", held);
    EXPECT_EQ(toSgd.draft.targetAmount, "");
    EXPECT_EQ(shown(toSgd, held).received.notice, QStringLiteral("Currency changed. Enter the amount again in: USD"));
}

TEST(EntryForm, ForgetsWithTheKindThatAnAmountWasCleared)
{
    const auto held = books().build();
    auto now = EntryEdits::withAmount(opened("expense", "bank", held), "1,250");
    now = EntryEdits::withKind(EntryEdits::withCurrency(now, "USD", held), "income", held);
    EXPECT_EQ(shown(now, held).sent.notice, QString{});
}

TEST(EntryForm, ClearsADestinationThatIsNoLongerOfferedAndNeverReplacesIt)
{
    const auto held = books().build();
    auto now = EntryEdits::withCurrency(opened("transfer", "bank", held), "USD", held);
    now = EntryEdits::withDestination(now, "float", held);
    EXPECT_EQ(shown(now, held).confirm, QStringLiteral("Confirm funding"));
    now = EntryEdits::withCurrency(now, "IDR", held);
    EXPECT_EQ(now.draft.target, std::nullopt);
    const auto content = shown(now, held);
    EXPECT_EQ(content.messages.at(EntryField::destination),
              QStringLiteral("Select a valid destination account again. Another account will not be selected "
                             "automatically."));
    EXPECT_EQ(content.received.accountPrompt, QStringLiteral("No destination account supports this currency"));
    EXPECT_EQ(content.confirm, QStringLiteral("Confirm transfer"));
}

TEST(EntryForm, ShowsTheBalanceThatSavingLeadsTo)
{
    const auto held = books().build();
    const auto idle = opened("expense", "bank", held);
    EXPECT_EQ(shown(idle, held).sent.balanceLabel, QStringLiteral("Current balance"));
    const auto typed = shown(EntryEdits::withAmount(idle, "4,385,200"), held);
    EXPECT_EQ(typed.sent.balanceLabel, QStringLiteral("Balance after saving"));
    EXPECT_EQ(typed.sent.balance, QStringLiteral("IDR\u00a0279,735,250"));
    const auto unread = shown(EntryEdits::withAmount(idle, "4.385.200"), held);
    EXPECT_EQ(unread.sent.balance, QStringLiteral("IDR\u00a0284,120,450"));
}

TEST(EntryForm, MarksABalanceThatCannotOrShouldNotBe)
{
    const auto held = books().build();
    const auto typed = [&](const char* amount, const char* kind) {
        return shown(EntryEdits::withAmount(opened(kind, "bank", held), amount), held).sent;
    };
    EXPECT_EQ(typed("5", "expense").balanceMark, EntryBalanceMark::none);
    EXPECT_EQ(typed("300,000,000", "expense").balanceMark, EntryBalanceMark::negative);
    EXPECT_EQ(typed("300,000,000", "expense").balanceLabel, QStringLiteral("Balance after saving is negative"));
    EXPECT_EQ(typed("89,999,999,999", "income").balanceMark, EntryBalanceMark::beyondLimit);
    EXPECT_EQ(typed("89,999,999,999", "income").balanceLabel.toStdString(),
              "The balance would exceed the supported range. The limit is IDR 90,000,000,000.");
}

TEST(EntryForm, NamesTheLimitThatAnAmountExceeds)
{
    const auto held = books().build();
    constexpr auto limit = "The amount exceeds the supported range. The limit is IDR 90,000,000,000.";
    auto now = EntryEdits::withAmount(opened("expense", "bank", held), "90,000,000,000");
    EXPECT_EQ(shown(now, held).sent.caution, QString{});
    now = EntryEdits::withAmount(now, "90,000,000,001");
    EXPECT_EQ(shown(now, held).sent.caution.toStdString(), limit) << "while it is being typed";
    now = EntryEdits::leftAmount(now, EntryField::amount, "en-US");
    EXPECT_EQ(shown(now, held).messages.at(EntryField::amount).toStdString(), limit);
}

/// What was found by looking at several fields, or in the books, is not said any more once one of them has changed.
TEST(EntryForm, SaysNothingOfWhatAChangeMayHaveSettled)
{
    auto builder = books().income("i1", "2026-11-10", "bank", "USD", 10'000, "sales");
    const auto held = builder.balance("float", "USD", 1'000).build();
    const auto judged = [&](EntryEditing editing) {
        const auto input = EntryRules::input(editing.draft, held, "en-US");
        editing.problems = input ? std::vector<EntryProblem>{} : input.error();
        return editing;
    };
    const auto says = [&](const EntryEditing& editing, EntryField field) {
        return shown(editing, held).messages.contains(field);
    };
    const auto spent =
        judged(EntryEdits::withDay(EntryEdits::withAmount(opened("expense", "float", held), "50"), "2026-11-20"));
    ASSERT_TRUE(says(spent, EntryField::amount)) << "the float holds less";
    EXPECT_FALSE(says(EntryEdits::withAccount(spent, "bank", held), EntryField::amount));
    EXPECT_TRUE(says(EntryEdits::withNote(spent, "Stamps"), EntryField::amount)) << "a note settles nothing";
    EXPECT_FALSE(
        says(EntryEdits::refreshed(spent, builder.balance("float", "USD", 9'000).build()), EntryField::amount));

    auto refund = EntryEdits::withCurrency(opened("refund", "bank", held), "USD", held);
    refund = EntryEdits::withOriginal(EntryEdits::withAmount(refund, "500"), "i1");
    refund = EntryEdits::withNote(EntryEdits::withDay(refund, "2026-11-05"), std::string{"a\0b", 3});
    refund = judged(refund);
    ASSERT_TRUE(says(refund, EntryField::amount)) << "the income was less";
    ASSERT_FALSE(shown(refund, held).day.message.isEmpty()) << "it came later";
    ASSERT_TRUE(says(refund, EntryField::note));
    EXPECT_TRUE(shown(EntryEdits::withDay(refund, "2026-11-12"), held).day.message.isEmpty());
    EXPECT_FALSE(says(EntryEdits::withOriginal(refund, {}), EntryField::amount));
    EXPECT_FALSE(says(EntryEdits::withNote(refund, "ab"), EntryField::note));
}

TEST(EntryForm, OffersAnOpeningOnlyWhereOneIsMissing)
{
    auto builder = booksWithoutBalances().entry("o1", "opening", "2026-01-01", {{"bank", "IDR", 500}});
    auto held = builder.build();
    auto now = opened("opening", {}, held);
    EXPECT_EQ(now.draft.target, std::nullopt) << "the place of the last opening is the one that takes no other";
    now = EntryEdits::withAccount(now, "bank", held);
    EXPECT_EQ(now.draft.currency, "USD");
    ASSERT_EQ(shown(now, held).sent.currencies.size(), 1U);
    EXPECT_EQ(shown(now, held).sent.currencies.front().code, "USD");
    EXPECT_EQ(shown(now, held).day.hint, QStringLiteral("No bookkeeping start date is confirmed: booked today"));
    EXPECT_EQ(shown(now, held).day.day, "2026-11-20");
    EXPECT_EQ(shown(now, held).direction,
              QStringLiteral("Record starting funds. This is not operating income.\nThere are entries from 1 January "
                             "2026 on: the opening balance is added to what they recorded."));
    const auto fresh = booksWithoutBalances().build();
    EXPECT_EQ(shown(opened("opening", "bank", fresh), fresh).direction,
              QStringLiteral("Record starting funds. This is not operating income."));

    held = builder.entry("o2", "opening", "2026-01-01", {{"bank", "USD", 500}}).build();
    const auto accounts = shown(opened("opening", {}, held), held).sent.accounts;
    EXPECT_EQ(std::ranges::count(accounts, "bank", &AccountChoice::id), 0);
    EXPECT_EQ(std::ranges::count(accounts, "vault", &AccountChoice::id), 1);
}

TEST(EntryForm, BooksOnTheChosenDayElseOnTheDayOfSaving)
{
    const auto held = books().build();
    auto now = EntryEdits::withCategory(EntryEdits::withAmount(opened("expense", "bank", held), "100"), "rent");
    const auto dayOf = [&](const EntryEditing& editing) {
        return EntryForm::command(EntrySubmission{editing}, VisibleBooks{held}, "2026-11-21", "en-US", "k")->date;
    };
    EXPECT_EQ(dayOf(now), "2026-11-21");
    now = EntryEdits::withDay(now, "2026-11-05");
    EXPECT_EQ(dayOf(now), "2026-11-05");
    EXPECT_EQ(shown(now, held).day.hint, QStringLiteral("Chosen bookkeeping date"));
    EXPECT_EQ(shown(EntryEdits::withDay(now, "2026-11-23"), held).day.message,
              QStringLiteral("The date cannot be after 21 November 2026."));
}

TEST(EntryForm, AfterATransferShowsBothAccounts)
{
    const auto held = books().build();
    auto now = EntryEdits::withCurrency(opened("transfer", "bank", held), "USD", held);
    now = EntryEdits::withAmount(EntryEdits::withDestination(now, "float", held), "250");
    const auto content = shown(now, held);
    ASSERT_EQ(content.effects.size(), 2U);
    EXPECT_EQ(content.effects[0].after, QStringLiteral("USD\u00a0750.00"));
    EXPECT_EQ(content.effects[1].after, QStringLiteral("USD\u00a0250.00"));
    EXPECT_EQ(content.purpose, QStringLiteral("This transfer is recorded as funding."));
}

TEST(EntryForm, ImpliesARateFromTheTwoAmountsOnly)
{
    EXPECT_EQ(rateText(1'200'000, "USD", 1'607'400, "SGD", "en").toStdString(), "SGD 1.340");
    EXPECT_EQ(rateText(1'607'400, "SGD", 1'200'000, "USD", "en").toStdString(), "USD 0.7465");
    EXPECT_EQ(rateText(100, "USD", 25'400, "VND", "vi").toStdString(), "VND 25.400");
    EXPECT_EQ(rateText(25'400, "VND", 100, "USD", "en").toStdString(), "USD 0.00003937");
    EXPECT_EQ(rateText(9'000'000'000'000, "VND", 1, "USD", "en").toStdString(), "USD 0.000000000000001111");
    EXPECT_EQ(rateText(0, "USD", 5, "SGD", "en").toStdString(), "–");
}

TEST(EntryForm, SaysWhyAKindIsOff)
{
    auto held = books().build();
    std::erase_if(held.accounts, [](const Account& each) { return each.id != "float"; });
    const auto content = shown(opened("expense", "float", held), held);
    ASSERT_EQ(content.kinds.size(), 4U);
    EXPECT_TRUE(content.kinds[0].isAvailable);
    EXPECT_FALSE(content.kinds[3].isAvailable);
    EXPECT_EQ(content.kindHint, QStringLiteral("Disabled types have no available authorized accounts. Contact your "
                                               "company administrator to configure access."));
}

TEST(EntryForm, TakesAFreshKeyOnlyForACommandThatDiffersFromTheRefusedOne)
{
    const auto held = books().build();
    auto now = EntryEdits::withCategory(EntryEdits::withAmount(opened("expense", "bank", held), "100"), "rent");
    EntrySubmission submission{now};
    const auto keyOf = [&] {
        return EntryForm::command(submission, VisibleBooks{held}, "2026-11-20", "en-US", "key-2")
            .value()
            .idempotencyKey;
    };
    EXPECT_EQ(keyOf(), "key-1");
    submission.send(EntryForm::command(submission, VisibleBooks{held}, "2026-11-20", "en-US", "key-2").value());
    submission.fail(APIError{.status = 409, .code = "balance_limit", .message = {}});
    EXPECT_EQ(keyOf(), "key-1");
    submission.edit(EntryEdits::withAmount(now, "90"));
    EXPECT_EQ(keyOf(), "key-2");
}

TEST(EntryForm, AsksBeforeClosingOnlyWhenSomethingWasEntered)
{
    const auto held = books().build();
    const auto initial = opened("expense", "bank", held);
    EXPECT_FALSE(EntryForm::hasDraft(EntryEdits::withKind(initial, "income", held).draft, initial.draft));
    EXPECT_TRUE(EntryForm::hasDraft(EntryEdits::withNote(initial, "x").draft, initial.draft));
    EXPECT_TRUE(EntryForm::hasDraft(EntryEdits::withAccount(initial, "vault", held).draft, initial.draft));
}

TEST(EntryForm, PrefillsTheCorrectEntryFromTheReversedOne)
{
    const auto held = books().transfer("t1", "2026-11-01", "bank", "float", "USD", 25'000, "funding").build();
    const auto draft = EntryEdits::correctionOf(held.transactions.front(), "id-ID");
    EXPECT_EQ(draft.source, "bank");
    EXPECT_EQ(draft.target, "float");
    EXPECT_EQ(draft.amount, "250,00");
    const auto reopened = EntryEdits::opened({"transfer", {}, draft}, held, "key-9");
    EXPECT_EQ(reopened.draft.idempotencyKey, "key-9");
    EXPECT_EQ(reopened.draft.date, "2026-11-01");
    EXPECT_TRUE(reopened.problems.empty());
}

TEST(EntryForm, DropsFromThePrefilledEntryWhatIsGone)
{
    auto builder = books().expense("e1", "2026-11-01", "bank", "USD", 500, "rent");
    auto held = builder.build();
    const auto draft = EntryEdits::correctionOf(held.transactions.front(), "en-US");
    std::erase_if(held.categories, [](const Category& each) { return each.id == "rent"; });
    const auto reopened = EntryEdits::opened({"expense", {}, draft}, held, "key-9");
    EXPECT_EQ(reopened.draft.categoryID, std::nullopt);
    EXPECT_EQ(shown(reopened, held).messages.at(EntryField::category),
              QStringLiteral("The previous category is no longer available. Select another one."));
}

TEST(EntryForm, RewritesAmountsForAnotherLanguage)
{
    EXPECT_EQ(EntryForm::rewritten("1,234.56", "en-US", "id-ID"), "1.234,56");
    EXPECT_EQ(EntryForm::rewritten("1.234,56", "vi-VN", "zh-CN"), "1,234.56");
    EXPECT_EQ(EntryForm::rewritten("1.234,56", "vi-VN", "id-ID"), "1.234,56");
}

TEST(EntryReversal, NamesTheYearOfAnEntryOfAnotherOne)
{
    const auto held = books().expense("e1", "2025-12-30", "bank", "USD", 5, "rent").build();
    const auto rows =
        EntryReversal::content(EntryReversal::opened({}), *held.entry("e1"), held, "2026-01-02", "en-US").rows;
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0].day, QStringLiteral("30 Dec 2025"));
    EXPECT_EQ(rows[1].day, QStringLiteral("2 Jan"));
}

TEST(EntryCategories, ShowPinsFirstElseTheMostUsed)
{
    auto builder = books();
    EXPECT_EQ(idsOf(EntryCategories::tiles(builder.build(), "expense", "en")),
              (std::vector<std::string>{"power", "water", "rent"}));
    builder.expense("e1", "2026-11-01", "bank", "USD", 1, "rent").expense("e2", "2026-11-01", "bank", "USD", 1, "rent");
    builder.expense("e3", "2026-11-01", "bank", "USD", 1, "water");
    EXPECT_EQ(idsOf(EntryCategories::tiles(builder.build(), "expense", "en")),
              (std::vector<std::string>{"rent", "water", "power"}));
    auto held = builder.build();
    held.currentMember.selectedCategoryIDs = {{"water", "sales", "gone", "utilities"}};
    EXPECT_EQ(idsOf(EntryCategories::tiles(held, "expense", "en")), (std::vector<std::string>{"water", "utilities"}));
}

TEST(EntryCategories, AreFoundByAnyPartOfTheirNameBelowTheirParent)
{
    auto held = books().build();
    held.categories[1].names["vi-VN"] = "Điện lực";
    const auto found = EntryCategories::matching(held, "expense", QStringLiteral("dien"), "vi-VN");
    EXPECT_EQ(idsOf(found), (std::vector<std::string>{"utilities", "power"}));
    EXPECT_EQ(found[1].name.mid(found[1].matchStart, found[1].matchLength), QStringLiteral("Điện"));
    EXPECT_EQ(idsOf(EntryCategories::matching(held, "expense", QStringLiteral("UTIL"), "en")),
              (std::vector<std::string>{"utilities", "power", "water"}));
    EXPECT_TRUE(EntryCategories::matching(held, "expense", QStringLiteral("sales"), "en").empty());
}

TEST(EntryRefundables, NameTheIncomeAndWhatItStillAllows)
{
    const auto held = books().income("i1", "2026-11-01", "bank", "USD", 30'000, "sales").note("INV-7").build();
    const auto rows = EntryForm::refundableRows(held, "USD", "en-US");
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows.front().text, QStringLiteral("1 November 2026, USD\u00a0300.00, Sales, INV-7"));
    EXPECT_EQ(rows.front().remaining, QStringLiteral("Still refundable: USD 300.00"));
}

TEST(EntryFormWords, SpeakFourLanguages)
{
    for (const auto& row : entryFormWords().rows()) {
        for (const auto text : {row.chinese, row.indonesian, row.vietnamese, row.english}) {
            EXPECT_FALSE(text.empty()) << row.key;
            EXPECT_EQ(text.contains("%1"), row.english.contains("%1")) << row.key;
        }
    }
}

/// The account can take no second opening, so that it is on no list any more.
TEST(EntryForm, ShowsAnUnconfirmedOpeningAsItWasSentAlsoWhereItWasRecorded)
{
    const auto held = books()
                          .entry("o1", EntryKind::opening, "2026-01-01", {{"vault", "SGD", 500}})
                          .balance("vault", "SGD", 500)
                          .build();
    KeptEntry kept;
    kept.outcomeUnknown = true;
    auto& sent = kept.input;
    sent.kind = EntryKind::opening;
    sent.date = "2026-01-02";
    sent.targetAccountID = "vault";
    sent.currency = "SGD";
    sent.amountMinor = 500;
    const auto submission = EntryEdits::restored(kept, held, "en-US");
    const auto content = EntryForm::content(submission, held, "2026-11-20", "en-US");
    EXPECT_EQ(std::ranges::count(content.sent.accounts, "vault", &AccountChoice::id), 1);
    EXPECT_EQ(std::ranges::count(content.sent.currencies, "SGD", &CurrencyChoice::code), 1);
    EXPECT_EQ(content.sent.amount.toStdString(), "5.00");
}

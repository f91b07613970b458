#include <gtest/gtest.h>

#include "LedgerCore/Domain/testing/SnapshotBuilder.h"
#include "LedgerUI/Presentation/Entry/EntryEdits.h"
#include "LedgerUI/Presentation/Entry/EntryFormContent.h"
#include "LedgerUI/Presentation/Entry/EntryHistory.h"
#include "LedgerUI/Presentation/tests/LedgerSample.h"

namespace {

constexpr auto today = "2026-11-20";

SnapshotBuilder books()
{
    auto builder = snapshot();
    builder.account("bank", {"IDR", "USD"}).account("vault", {"USD", "SGD"}).grantAll();
    builder.category("rent", "expense", "Rent").category("sales", "income", "Sales");
    return builder;
}

LedgerTransaction exchange(const char* id, const char* date, LedgerLeg given, LedgerLeg received)
{
    LedgerTransaction entry;
    entry.id = id;
    entry.kind = EntryKind::exchange;
    entry.date = date;
    entry.createdAt = std::string{date} + "T03:00:00Z";
    entry.legs = {std::move(given), std::move(received)};
    return entry;
}

EntryEditing opened(const char* kind, const char* account, const LedgerSnapshot& held)
{
    return EntryEdits::opened({kind, std::string{account}, {}}, held, "key-1");
}

EntryFormContent shown(const EntryEditing& editing, const SnapshotPointer& held)
{
    const EntryHistory history{held};
    return EntryForm::content(EntrySubmission{editing}, *held, today, "en-US", &history);
}

}

TEST(EntryHistory, WarnsOfTheSameAmountOnTheSameDayAndAccountOnly)
{
    auto builder = books();
    builder.expense("e1", today, "bank", "USD", 1'250, "rent").note("Gudang");
    const auto held = builder.share();
    auto editing = opened("expense", "bank", *held);
    editing.draft.currency = "USD";
    const auto caution = [&](const char* amount) {
        editing = EntryEdits::withAmount(editing, amount);
        return shown(editing, held).sent.caution.toStdString();
    };
    EXPECT_EQ(caution("12.50"),
              "There is an entry of the same day, account and amount already: Expense, Rent, Gudang.");
    EXPECT_EQ(caution("2*6.25"), caution("12.50"));
    EXPECT_EQ(caution("12.51"), "");
    editing = EntryEdits::withDay(editing, "2026-11-19");
    EXPECT_EQ(caution("12.50"), "");
    editing = EntryEdits::withDay(EntryEdits::withAccount(editing, "vault", *held), {});
    EXPECT_EQ(caution("12.50"), "");
    auto income = opened("income", "bank", *held);
    income.draft.currency = "USD";
    EXPECT_EQ(shown(EntryEdits::withAmount(income, "12.50"), held).sent.caution, QString{}) << "it goes the other way";
}

TEST(EntryHistory, ForgetsWhatWasReversed)
{
    auto builder = sampleLedger();
    const EntryHistory history{builder.share()};
    EXPECT_EQ(history.likelyDouble("2026-11-09", "Operating bank", "USD", -9'900), nullptr);
    EXPECT_EQ(history.likelyDouble("2026-11-09", "Operating bank", "USD", 9'900), nullptr);
    EXPECT_NE(history.likelyDouble("2026-11-02", "Operating bank", "USD", -43'850), nullptr);
}

TEST(EntryHistory, KnowsTheLastRateOfAPairInBothDirections)
{
    auto builder = books();
    builder.entry(exchange("x2", "2026-11-10", {"vault", "SGD", -13'400}, {"vault", "USD", 10'000}));
    builder.entry(exchange("x1", "2026-11-01", {"vault", "USD", -10'000}, {"vault", "SGD", 20'000}));
    const EntryHistory history{builder.share()};
    const auto last = history.lastExchange("USD", "SGD");
    ASSERT_TRUE(last.has_value());
    EXPECT_EQ(last->day, "2026-11-10");
    EXPECT_EQ(last->fromMinor, 10'000);
    EXPECT_EQ(last->toMinor, 13'400);
    EXPECT_FALSE(history.lastExchange("USD", "IDR").has_value());
    EXPECT_FALSE(isFarFrom(*last, 10'000, 14'740)) << "a tenth is not far yet";
    EXPECT_TRUE(isFarFrom(*last, 10'000, 14'741));
    EXPECT_TRUE(isFarFrom(*last, 10'000, 12'059));
    EXPECT_TRUE(isFarFrom(*last, 9'000'000'000'000, 9'000'000'000'000));
}

TEST(EntryHistory, SaysInTheFormThatARateIsFarFromTheLast)
{
    auto builder = books();
    builder.entry(exchange("x1", "2026-11-10", {"vault", "USD", -10'000}, {"vault", "SGD", 13'400}));
    const auto held = builder.share();
    auto editing = opened("exchange", "vault", *held);
    editing = EntryEdits::withCurrency(editing, "USD", *held);
    editing = EntryEdits::withDestination(editing, "vault", *held);
    editing = EntryEdits::withAmount(EntryEdits::withTargetAmount(editing, "1,340"), "100");
    const auto far = shown(editing, held);
    EXPECT_EQ(far.received.caution,
              QStringLiteral("Far from the last rate, SGD 1.340 on 10 November 2026. Check both amounts."));
    editing = EntryEdits::withTargetAmount(editing, "134");
    EXPECT_EQ(shown(editing, held).received.caution, QString{});
}

TEST(EntryArithmetic, ShowsItsResultBeforeItIsTaken)
{
    const auto held = books().balance("bank", "IDR", 10'000'000).share();
    auto editing = opened("expense", "bank", *held);
    const auto after = [&](const char* amount) { return shown(EntryEdits::withAmount(editing, amount), held).sent; };
    EXPECT_EQ(after("12*3500").result, QStringLiteral("= IDR 42,000"));
    EXPECT_EQ(after("12*3500").balance, QStringLiteral("IDR\u00A058,000"));
    EXPECT_EQ(after("42000").result, QString{});
    EXPECT_EQ(after("12*").result, QString{});
    EXPECT_EQ(after("12*").caution, QString{}) << "it is being typed";
    EXPECT_EQ(after("100/3").caution,
              QStringLiteral("The result has a fraction below the smallest unit of IDR. Round the amount yourself."));
    editing = EntryEdits::leftAmount(EntryEdits::withAmount(editing, "12*"), EntryField::amount, "en-US");
    EXPECT_EQ(shown(editing, held).messages.at(EntryField::amount),
              QStringLiteral("This calculation is not complete or cannot be read."));
}

TEST(EntryFollowing, KeepsWhereAndWhatForButNotWhat)
{
    const auto held = books().share();
    auto recorded = EntryEdits::withCategory(opened("expense", "bank", *held), "rent");
    recorded = EntryEdits::withNote(EntryEdits::withAmount(recorded, "12"), "first");
    recorded.draft.attachments = {"a1"};
    recorded = EntryEdits::withDay(recorded, "2026-11-18");
    const auto next = EntryEdits::following(recorded, *held, "key-2").draft;
    TransactionDraft expected;
    expected.kind = "expense";
    expected.date = "2026-11-18";
    expected.source = "bank";
    expected.currency = "IDR";
    expected.categoryID = "rent";
    expected.idempotencyKey = "key-2";
    EXPECT_EQ(next, expected);
}

TEST(LedgerRefund, IsWhatAnIncomeStillAllows)
{
    const auto book = bookOf(sampleLedger());
    EXPECT_EQ(refundOf(book, book.find("i1")), (LedgerRefund{"i1", "Operating bank", "USD", 230'000}));
    EXPECT_FALSE(refundOf(book, book.find("e1")).has_value());
    auto paidBack = sampleLedger();
    LedgerTransaction rest;
    rest.id = "r2";
    rest.kind = EntryKind::refund;
    rest.date = today;
    rest.originalTransactionID = "i1";
    rest.legs = {{"Operating bank", "USD", -230'000}};
    const auto all = bookOf(paidBack.entry(rest));
    EXPECT_FALSE(refundOf(all, all.find("i1")).has_value());
    const auto draft = EntryEdits::refunding(*refundOf(book, book.find("i1")), "id-ID");
    EXPECT_EQ(draft.amount, "2.300,00");
    EXPECT_EQ(draft.originalIncomeID, "i1");
    EXPECT_EQ(draft.source, "Operating bank");
}

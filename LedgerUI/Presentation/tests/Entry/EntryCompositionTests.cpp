#include "LedgerUI/Presentation/Entry/EntryComposition.h"

#include <gtest/gtest.h>

#include "LedgerCore/Domain/testing/SnapshotBuilder.h"
#include "LedgerUI/Presentation/Entry/EntryEdits.h"

namespace {

SnapshotPointer books()
{
    auto builder = snapshot();
    builder.account("bank", {"IDR", "USD"}).account("vault", {"USD"}).grantAll();
    builder.category("rent", "expense", "Rent").balance("bank", "IDR", 10'000'000);
    return std::make_shared<const LedgerSnapshot>(builder.build());
}

EntryComposition begun(const SnapshotPointer& held)
{
    return {held, EntrySubmission{EntryEdits::opened({"expense", "bank", {}}, *held, "key-1")}};
}

EntryEditing filled(const EntryComposition& entry)
{
    return EntryEdits::withCategory(EntryEdits::withAmount(entry.submission().form(), "1,250"), "rent");
}

}

TEST(EntryComposition, OffersAnewOnlyWhatGoesWithKindAndCurrency)
{
    const auto held = books();
    auto entry = begun(held);
    EXPECT_FALSE(entry.edit(filled(entry)));
    EXPECT_FALSE(entry.edit(EntryEdits::withNote(entry.submission().form(), "November")));
    EXPECT_TRUE(entry.edit(EntryEdits::withCurrency(entry.submission().form(), "USD", *held)));
    EXPECT_TRUE(entry.edit(EntryEdits::withKind(entry.submission().form(), "income", *held)));
}

TEST(EntryComposition, GivesTheCommandOnlyForADraftWithoutProblems)
{
    auto entry = begun(books());
    EXPECT_EQ(entry.checked("2026-11-20", "en-US", "key-2"), std::nullopt);
    EXPECT_FALSE(entry.submission().form().problems.empty()) << "the form says what is wrong";
    entry.edit(filled(entry));
    const auto input = entry.checked("2026-11-20", "en-US", "key-2");
    ASSERT_TRUE(input);
    EXPECT_EQ(input->idempotencyKey, "key-1");
    EXPECT_EQ(input->date, "2026-11-20");
    EXPECT_TRUE(entry.submission().form().problems.empty());
}

/// Closing asks for what was typed since the form came up; what was sent once was typed by a person in any case.
TEST(EntryComposition, KnowsWhatAPersonWouldLose)
{
    const auto held = books();
    auto entry = begun(held);
    EXPECT_FALSE(entry.hasDraft());
    entry.edit(filled(entry));
    EXPECT_TRUE(entry.hasDraft());
    auto input = entry.checked("2026-11-20", "en-US", "key-2");
    ASSERT_TRUE(input);
    const EntryComposition again{held, EntrySubmission::uncertain(entry.submission().form(), *input)};
    EXPECT_TRUE(again.hasDraft());

    entry.submission().send(*input);
    entry.submission().succeed();
    entry.goOn(held, "key-3");
    EXPECT_FALSE(entry.hasDraft()) << "the next entry has not been begun";
    EXPECT_EQ(entry.draft().categoryID, "rent");
    EXPECT_EQ(entry.draft().idempotencyKey, "key-3");
}

TEST(EntryComposition, KeepsAnAmountThroughAChangeOfLanguage)
{
    auto entry = begun(books());
    entry.edit(filled(entry));
    entry.adoptLanguage("en-US", "id-ID");
    EXPECT_EQ(entry.draft().amount, "1.250");
}

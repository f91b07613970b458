#include <gtest/gtest.h>

#include "LedgerCore/Domain/testing/SnapshotBuilder.h"
#include "LedgerUI/Presentation/Company/FinancialSettingsForm.h"
#include "LedgerUI/Presentation/Company/KindColors.h"

namespace {

constexpr auto today = "2026-11-20";

FinancialSettings settings(bool contributions, bool dividends)
{
    return {.revision = 3,
            .contributionsEnabled = contributions,
            .dividendsEnabled = dividends,
            .bookkeepingStartDate = {},
            .initializationMode = {},
            .initializedAt = {},
            .featuresConfigured = {}};
}

}

TEST(SwitchesForm, KeepsMyChangeBesideThatOfSomebodyElse)
{
    const auto before = SwitchesForm::of(snapshot().settings(settings(true, true)).build());
    const auto now = SwitchesForm::of(snapshot().settings(settings(true, false)).build());
    const SwitchesForm mine{.contributions = false, .dividends = true};
    EXPECT_EQ(mine.rebased(before, now), (SwitchesForm{.contributions = false, .dividends = false}));
    EXPECT_EQ(mine.changes(before), 1U);
    EXPECT_EQ(SwitchesForm::of(snapshot().build()), (SwitchesForm{.contributions = true, .dividends = true}))
        << "books without settings have both on";
}

TEST(SetupForm, StartsOnTheDayOfTheEarliestEntry)
{
    EXPECT_EQ(SetupForm::fresh(snapshot().build(), today).day, today);
    const auto books = snapshot().account("bank", {"USD"}).grantAll().income("t1", "2026-03-04", "bank", "USD", 1);
    const auto bounds = FinancialSettingsText::startBounds(books.build(), today);
    EXPECT_EQ(SetupForm::fresh(books.build(), today).day, "2026-03-04");
    EXPECT_TRUE(bounds.hold("2025-12-31"));
    EXPECT_FALSE(bounds.hold("0026-03-04")) << "a year that was not finished";
    EXPECT_FALSE(bounds.hold("2026-03-05")) << "the books hold an earlier entry";
    EXPECT_FALSE(FinancialSettingsText::startBounds(snapshot().build(), today).hold("2026-11-22"));
}

TEST(FinancialSettingsText, CountsOpeningsAndNamesTheNextAccount)
{
    auto books = snapshot().account("bank", {"USD", "IDR"}).account("vault", {"USD"}).grantAll();
    books.entry("o1", EntryKind::opening, "2026-01-01", {{"bank", "USD", 500}});
    const auto openings = FinancialSettingsText::openings(books.build());
    EXPECT_EQ(openings.active, 1U);
    EXPECT_EQ(openings.possible, 3U);
    EXPECT_EQ(openings.left, 2U);
    EXPECT_EQ(openings.nextAccount, "bank") << "in its other currency";
    EXPECT_EQ(FinancialSettingsText::openings(snapshot().account("bank", {"USD"}).build()).possible, 0U)
        << "without the right";

    FinancialSettings fromZero;
    fromZero.initializationMode = InitializationMode::fromZero;
    const auto none = FinancialSettingsText::openings(books.settings(fromZero).build());
    EXPECT_EQ(none.left, 0U) << "books that began from zero want none";
    EXPECT_FALSE(none.areWanted);
    EXPECT_EQ(none.active, 1U);
}

TEST(KindColors, AreTheCompanysEvenWhereTheMemberChoseAnother)
{
    auto books = snapshot().colors({{"income", "rose"}}).build();
    books.currentMember.transactionColors = {{{"income", "ink"}, {"expense", "ink"}}};
    EXPECT_EQ(KindColors::ofCompany("income", books).id, "rose");
    EXPECT_EQ(KindColors::ofCompany("expense", books).id, "rust") << "the kind's own";
}

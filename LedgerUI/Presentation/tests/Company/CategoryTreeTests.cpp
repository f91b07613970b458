#include <gtest/gtest.h>

#include "LedgerCore/Domain/testing/SnapshotBuilder.h"
#include "LedgerUI/Presentation/Categories/CategoryForm.h"
#include "LedgerUI/Presentation/Company/CategoryTree.h"
#include "LedgerUI/Presentation/Company/PresetChoices.h"
#include "LedgerUI/Presentation/Text/Words.h"

namespace {

constexpr auto english = "en-US";
constexpr auto today = "2026-11-20";

/// Utilities with electricity and water, then an archived one, then rent; and one income.
LedgerSnapshot books()
{
    SnapshotBuilder builder;
    builder.account("bank", {"USD"}).grantAll();
    builder.category("utilities", "expense", "Utilities").category("power", "expense", "Điện", "utilities");
    builder.category("water", "expense", "Water", "utilities").category("gifts", "expense", "Gifts");
    builder.category("rent", "expense", "Rent").category("sales", "income", "Sales");
    builder.expense("e1", "2026-11-01", "bank", "USD", 1, "power");
    builder.expense("e2", "2026-10-01", "bank", "USD", 1, "utilities");
    builder.expense("e3", "2025-11-20", "bank", "USD", 1, "water"); // a year and a day ago
    auto snapshot = builder.build();
    snapshot.categories[3].archived = true;
    return snapshot;
}

CategoryTree::View viewOf(std::string kind, const char* query = "")
{
    return {.kind = std::move(kind), .query = QString::fromUtf8(query), .showsArchived = false, .folded = {}};
}

std::string shown(const CategoryTree::View& view, const LedgerSnapshot& snapshot)
{
    const CategoryDirectory directory{snapshot.categories};
    const auto uses = CategoryTree::uses(snapshot, directory, today);
    QStringList lines;
    for (const auto& row : CategoryTree::rows(view, snapshot, directory, uses, english))
        lines << QString{qsizetype{2} * row.cells[0].depth, QLatin1Char{' '}} + row.cells[0].text + QLatin1Char{' '} +
                     row.cells[1].text;
    return lines.join(QLatin1Char{'\n'}).toStdString();
}

using Refusal = CategoryRules::Refusal;

}

TEST(CategoryTree, StandsWithWhatEachIsUsedFor)
{
    const auto snapshot = books();
    EXPECT_EQ(shown(viewOf("expense"), snapshot), "Utilities 2\n  Điện 1\n  Water –\nRent –");
    EXPECT_EQ(shown({.kind = "expense", .query = {}, .showsArchived = true, .folded = {"utilities"}}, snapshot),
              "Utilities 2\nGifts –\nRent –");
    EXPECT_EQ(shown(viewOf("income"), snapshot), "Sales –");
}

TEST(CategoryTree, IsSearchedInAllLanguagesWithoutDiacritics)
{
    const auto snapshot = books();
    EXPECT_EQ(
        shown({.kind = "expense", .query = QStringLiteral(" dien "), .showsArchived = false, .folded = {"utilities"}},
              snapshot),
        "Utilities 2\n  Điện 1");
    EXPECT_EQ(shown(viewOf("expense", "UTILITIES (VI)"), snapshot), "Utilities 2\n  Điện 1\n  Water –")
        << "children stay below a parent that matches";
}

TEST(CategoryTree, MovesWithinTheGroupAsItIsShown)
{
    const auto snapshot = books();
    const CategoryDirectory directory{snapshot.categories};
    const auto order = CategoryTree::moved(directory, "rent", -1, false);
    ASSERT_TRUE(order);
    EXPECT_EQ(order->orderedIDs, (std::vector<std::string>{"rent", "utilities"}));
    EXPECT_EQ(order->expectedIDs, (std::vector<std::string>{"utilities", "rent"}));
    EXPECT_EQ(CategoryRules::whyNotReorder(*order, snapshot.currentMember, snapshot.categories), std::nullopt);
    EXPECT_EQ(CategoryTree::moved(directory, "rent", -1, true)->orderedIDs,
              (std::vector<std::string>{"utilities", "rent", "gifts"}));
    EXPECT_FALSE(CategoryTree::moved(directory, "utilities", -1, false)) << "it is the first";
    EXPECT_FALSE(CategoryTree::moved(directory, "rent", 1, false)) << "it is the last";
    EXPECT_EQ(CategoryTree::movedTo(directory, "power", "water", false)->orderedIDs,
              (std::vector<std::string>{"water", "power"}));
    EXPECT_FALSE(CategoryTree::movedTo(directory, "power", "rent", false)) << "another group";
}

TEST(CategoryForm, SendsOnlyWhatDiffersAndSaysWhyNot)
{
    const auto snapshot = books();
    const auto saved = CategoryForm::of(snapshot.categories[1]);
    auto form = saved;
    form.names["en-US"] = "  ";
    form.parentID.clear();
    const auto update = form.update(saved);
    EXPECT_TRUE(update.updateParent);
    EXPECT_FALSE(update.parentID || update.symbol || update.archived);
    EXPECT_FALSE(update.names->contains("en-US"));
    EXPECT_EQ(form.whyNot(saved, snapshot), std::nullopt);
    form.names = saved.names;
    form.parentID = "gifts";
    EXPECT_EQ(form.whyNot(saved, snapshot), Refusal::parentInactive);
    auto fresh = CategoryForm::fresh("expense");
    EXPECT_EQ(fresh.whyNot(fresh, snapshot), Refusal::nameRequired);
    fresh.names["en-US"] = "Rent";
    EXPECT_EQ(fresh.whyNot(fresh, snapshot), Refusal::nameTaken);
    EXPECT_EQ(CategoryText::whyNotArchived(snapshot.categories[0], true, snapshot), Refusal::hasActiveChildren);
}

TEST(CategoryForm, KeepsWhatIsTypedOnTopOfSomebodyElsesChange)
{
    const auto before = CategoryForm::of(books().categories[1]);
    auto mine = before;
    mine.names["en-US"] = "Power";
    auto now = before;
    now.names["id-ID"] = "Listrik";
    now.symbol = "lightning";
    const auto both = mine.rebased(before, now);
    EXPECT_EQ(both.names.at("en-US"), "Power");
    EXPECT_EQ(both.names.at("id-ID"), "Listrik");
    EXPECT_EQ(both.symbol, "lightning");
}

TEST(PresetChoices, KnowWhatIsThereAndMakeTheRest)
{
    auto snapshot = books();
    const auto groups = PresetChoices::groups("expense", english);
    ASSERT_FALSE(groups.empty());
    const auto first = PresetChoices::presets("expense", groups.front().id, {}, snapshot, english);
    ASSERT_FALSE(first.empty());
    const auto present = [&] {
        const auto choices = PresetChoices::presets("expense", groups.front().id, {}, snapshot, english);
        return std::ranges::count(choices, true, &PresetChoice::isPresent);
    };
    EXPECT_EQ(present(), 0);
    snapshot.categories[4].presetID = first.front().id;
    EXPECT_EQ(present(), 1);
    snapshot.categories[4].archived = true;
    EXPECT_EQ(present(), 0) << "an archived one can be made again";
    const auto made = PresetChoices::creations({first.front().id}, "utilities");
    ASSERT_EQ(made.size(), 1U);
    EXPECT_EQ(made.front().names.size(), 4U);
    EXPECT_EQ(made.front().parentID, "utilities");
    const auto found =
        PresetChoices::presets("expense", {}, qString(made.front().names.at("vi-VN")), snapshot, english);
    EXPECT_TRUE(std::ranges::any_of(found, [&](const auto& each) { return each.id == first.front().id; }));
}

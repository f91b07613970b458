#include <algorithm>
#include <functional>

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Categories/CategoryDirectory.h"
#include "LedgerCore/Domain/Categories/CategoryRules.h"
#include "LedgerCore/Domain/Categories/EnterpriseCategoryCatalog.h"
#include "LedgerCore/Domain/testing/SnapshotBuilder.h"

namespace {

using CategoryRules::Refusal;
using Ids = std::vector<std::string>;

/// Expenses: office with paper and ink (archived), travel, old (archived) with trips (archived). Income: sales.
std::vector<Category> categories()
{
    auto books = snapshot()
                     .category("office", "expense", "Office")
                     .category("paper", "expense", "Paper", "office")
                     .category("ink", "expense", "Ink", "office")
                     .category("travel", "expense", "Travel")
                     .category("old", "expense", "Old")
                     .category("trips", "expense", "Trips", "old")
                     .category("sales", "income", "Sales")
                     .build();
    for (auto& each : books.categories)
        each.archived = each.id == "ink" || each.id == "old" || each.id == "trips";
    return std::move(books.categories);
}

Member manager()
{
    auto member = SnapshotBuilder::person("m1", "Mira", "finance");
    member.permissions = {{"manageCompany"}};
    return member;
}

CategoryCreate rent()
{
    return {.kind = "expense", .names = {{"en-US", "Rent"}}, .symbol = "house", .parentID = {}, .presetID = {}};
}

struct CreateCase {
    const char* name;
    std::function<void(CategoryCreate&)> change;
    std::optional<Refusal> refusal;
};

class CategoryCreation : public testing::TestWithParam<CreateCase> {};

TEST_P(CategoryCreation, IsJudged)
{
    auto command = rent();
    GetParam().change(command);
    EXPECT_EQ(CategoryRules::whyNotCreate(command, manager(), categories()), GetParam().refusal);
}

TextMap manyNames()
{
    TextMap names;
    for (char each = 'a'; each <= 'q'; ++each)
        names.emplace(std::string{"x"} + each, "Rent");
    return names;
}

INSTANTIATE_TEST_SUITE_P(
    Commands, CategoryCreation,
    testing::Values(
        CreateCase{"ByHand", [](auto&) {}, {}}, CreateCase{"Under", [](auto& c) { c.parentID = "office"; }, {}},
        CreateCase{"UnderNothing", [](auto& c) { c.parentID = ""; }, {}},
        CreateCase{"OddKind", [](auto& c) { c.kind = "transfer"; }, Refusal::unknownKind},
        CreateCase{"NoName", [](auto& c) { c.names.clear(); }, Refusal::nameRequired},
        CreateCase{"BlankNames", [](auto& c) { c.names = {{"en-US", "\xE2\x80\x83"}, {"id-ID", " "}}; },
                   Refusal::nameRequired},
        CreateCase{"OneNameBlank", [](auto& c) { c.names["id-ID"] = " "; }, {}},
        CreateCase{"ControlInName", [](auto& c) { c.names["en-US"] = "Re\x1Bnt"; }, Refusal::nameUnsound},
        CreateCase{"NameOfNoLanguage", [](auto& c) { c.names["<b>"] = "Rent"; }, Refusal::nameUnsound},
        CreateCase{"SeventeenLanguages", [](auto& c) { c.names = manyNames(); }, Refusal::nameUnsound},
        CreateCase{"TakenName", [](auto& c) { c.names = {{"en-US", " Travel"}}; }, Refusal::nameTaken},
        CreateCase{"SameInOneLanguageOnly", [](auto& c) { c.names = {{"en-US", "Travel"}, {"id-ID", "Cuti"}}; }, {}},
        CreateCase{"NameOfAnArchivedOne", [](auto& c) { c.names = {{"en-US", "Old"}}; }, {}},
        CreateCase{"NameOfAnotherGroup", [](auto& c) { c.names = {{"en-US", "Paper"}}; }, {}},
        CreateCase{"NoSymbol", [](auto& c) { c.symbol = ""; }, Refusal::symbolUnsound},
        CreateCase{"PathAsSymbol", [](auto& c) { c.symbol = "../tag"; }, Refusal::symbolUnsound},
        CreateCase{"UnknownPreset", [](auto& c) { c.presetID = "none"; }, Refusal::unknownPreset},
        CreateCase{"UnknownParent", [](auto& c) { c.parentID = "none"; }, Refusal::parentInvalid},
        CreateCase{"ParentOfTheOtherKind", [](auto& c) { c.parentID = "sales"; }, Refusal::parentInvalid},
        CreateCase{"ThirdLevel", [](auto& c) { c.parentID = "paper"; }, Refusal::parentInvalid},
        CreateCase{"ArchivedParent", [](auto& c) { c.parentID = "old"; }, Refusal::parentInactive}),
    [](const auto& each) { return each.param.name; });

struct UpdateCase {
    const char* name;
    const char* id;
    std::function<void(CategoryUpdate&)> change;
    std::optional<Refusal> refusal;
};

class CategoryChange : public testing::TestWithParam<UpdateCase> {};

TEST_P(CategoryChange, IsJudged)
{
    CategoryUpdate command;
    GetParam().change(command);
    EXPECT_EQ(CategoryRules::whyNotUpdate(GetParam().id, command, manager(), categories()), GetParam().refusal);
}

auto moved(std::optional<std::string> parentID)
{
    return [parentID = std::move(parentID)](CategoryUpdate& command) {
        command.updateParent = true;
        command.parentID = parentID;
    };
}

auto archived(bool archived)
{
    return [archived](CategoryUpdate& command) { command.archived = archived; };
}

auto named(const char* name)
{
    return [name](CategoryUpdate& command) { command.names = TextMap{{"en-US", name}}; };
}

INSTANTIATE_TEST_SUITE_P(
    Commands, CategoryChange,
    testing::Values(UpdateCase{"Unknown", "none", [](auto&) {}, Refusal::unknownCategory},
                    UpdateCase{"Nothing", "travel", [](auto&) {}, {}},
                    UpdateCase{"Rename", "travel", named("Trips"), {}},
                    UpdateCase{"RenameToASiblings", "travel", named("Office"), Refusal::nameTaken},
                    UpdateCase{"UnderAnother", "travel", moved("office"), {}},
                    UpdateCase{"UnderItself", "travel", moved("travel"), Refusal::parentInvalid},
                    UpdateCase{"WithChildren", "office", moved("travel"), Refusal::parentInvalid},
                    UpdateCase{"UnderTheOtherKind", "travel", moved("sales"), Refusal::parentInvalid},
                    UpdateCase{"UnderAnArchivedOne", "travel", moved("old"), Refusal::parentInactive},
                    UpdateCase{"ToTheTop", "paper", moved({}), {}},
                    UpdateCase{"ArchiveAParentInUse", "office", archived(true), Refusal::hasActiveChildren},
                    UpdateCase{"Archive", "paper", archived(true), {}},
                    UpdateCase{"ArchiveAgain", "ink", archived(true), {}},
                    UpdateCase{"RenameArchived", "ink", named("Toner"), Refusal::archived},
                    UpdateCase{"Restore", "ink", archived(false), {}},
                    UpdateCase{"RestoreUnderAnArchivedOne", "trips", archived(false), Refusal::parentInactive},
                    UpdateCase{"RestoreElsewhere",
                               "trips",
                               [](auto& c) {
                                   moved("travel")(c);
                                   c.archived = false;
                               },
                               {}}),
    [](const auto& each) { return each.param.name; });

Ids idsOf(CategoryDirectory::List list)
{
    Ids ids;
    for (const auto* each : list)
        ids.push_back(each->id);
    return ids;
}

/// The expense group in the order after the command.
Ids after(const CategoryReorder& command)
{
    auto list = categories();
    for (auto& changed : CategoryRules::reordered(command, list))
        *std::ranges::find(list, changed.id, &Category::id) = changed;
    return idsOf(CategoryDirectory{list}.siblings("expense", command.parentID, ArchivedCategories::included));
}

TEST(CategoryRules, ReorderWhatTheClientSawWithOrWithoutArchivedOnes)
{
    const CategoryReorder active{"expense", {}, {"travel", "office"}, {"office", "travel"}};
    EXPECT_EQ(CategoryRules::whyNotReorder(active, manager(), categories()), std::nullopt);
    EXPECT_EQ(after(active), (Ids{"travel", "office", "old"}));
    const CategoryReorder all{"expense", "", {"old", "travel", "office"}, {"office", "travel", "old"}};
    EXPECT_EQ(CategoryRules::whyNotReorder(all, manager(), categories()), std::nullopt);
    EXPECT_EQ(after(all), (Ids{"old", "travel", "office"}));
}

TEST(CategoryRules, RefuseToReorderWhatIsNoLongerSo)
{
    const auto whyNot = [](const CategoryReorder& command) {
        return CategoryRules::whyNotReorder(command, manager(), categories());
    };
    EXPECT_EQ(whyNot({"expense", {}, {"paper", "office"}, {"office", "paper"}}), Refusal::orderChanged);
    EXPECT_EQ(whyNot({"expense", {}, {"old", "office", "travel"}, {"old", "travel", "office"}}), Refusal::orderChanged);
    EXPECT_EQ(whyNot({"expense", {}, {"office", "travel"}, {"travel", "office"}}), std::nullopt)
        << "the order is already the wanted one: the command was sent again";
    EXPECT_EQ(whyNot({"expense", {}, {"office"}, {"office", "travel"}}), Refusal::orderUnsound);
    EXPECT_EQ(whyNot({"expense", {}, {"office", "office"}, {"office", "office"}}), Refusal::orderUnsound);
    EXPECT_EQ(whyNot({"expense", "none", {}, {}}), Refusal::parentInvalid);
    EXPECT_EQ(whyNot({"income", "office", {"paper"}, {"paper"}}), Refusal::parentInvalid);
    EXPECT_EQ(whyNot({"fees", {}, {}, {}}), Refusal::unknownKind);
    const auto stranger = SnapshotBuilder::person("m2", "Ana");
    EXPECT_EQ(CategoryRules::whyNotReorder({"income", {}, {}, {}}, stranger, categories()), Refusal::noAuthority);
}

TEST(CategoryRules, PutANewCategoryLastOfItsSiblings)
{
    auto list = categories();
    EXPECT_EQ(CategoryRules::created(rent(), "new", list).sortOrder, std::nullopt) << "as all of its siblings";
    for (auto& each : list)
        each.sortOrder = each.id == "office" ? 7 : 3;
    EXPECT_EQ(CategoryRules::created(rent(), "new", list).sortOrder, 8);
    auto first = rent();
    first.parentID = "travel";
    EXPECT_EQ(CategoryRules::created(first, "new", list).sortOrder, 0);
    CategoryUpdate move;
    moved("office")(move);
    EXPECT_EQ(CategoryRules::updated(list[3], move, list).sortOrder, 4) << "behind paper and ink";
}

TEST(CategoryRules, TakeFromThePresetWhatTheCommandLeavesOut)
{
    for (const auto& preset : EnterpriseCategoryCatalog::presets()) {
        CategoryCreate command;
        command.kind = preset.kind;
        command.presetID = preset.id;
        ASSERT_EQ(CategoryRules::whyNotCreate(command, manager(), {}), std::nullopt) << preset.id;
        const auto category = CategoryRules::created(command, "new", {});
        EXPECT_EQ(category.symbol, preset.symbol);
        EXPECT_EQ(category.names.at("vi-VN"), preset.names.text("vi-VN"));
        command.kind = command.kind == "income" ? "expense" : "income";
        EXPECT_EQ(CategoryRules::whyNotCreate(command, manager(), {}), Refusal::unknownPreset);
    }
}

TEST(CategoryRules, TakeANameForTheSameHoweverItsSignsWereTyped)
{
    auto list = categories();
    auto command = rent();
    command.names = {{"vi-VN", "Ti\u1EC1n thu\u00EA"}};
    list.push_back(CategoryRules::created(command, "new", list));
    command.names = {{"vi-VN", "Tie\u0302\u0300n thue\u0302"}};
    EXPECT_EQ(CategoryRules::whyNotCreate(command, manager(), list), Refusal::nameTaken);
    command.names = {{"vi-VN", "Ti\u1EC1n thue"}};
    EXPECT_EQ(CategoryRules::whyNotCreate(command, manager(), list), std::nullopt);
}

TEST(CategoryRules, KnowTheCategoryThatACommandSentTwiceHasMade)
{
    auto list = categories();
    EXPECT_EQ(CategoryRules::alreadyCreated(rent(), list), nullptr);
    list.push_back(CategoryRules::created(rent(), "new", list));
    ASSERT_NE(CategoryRules::alreadyCreated(rent(), list), nullptr);
    EXPECT_EQ(CategoryRules::whyNotCreate(rent(), manager(), list), Refusal::nameTaken);
    auto other = rent();
    other.symbol = "building";
    EXPECT_EQ(CategoryRules::alreadyCreated(other, list), nullptr);
    list.back().archived = true;
    EXPECT_EQ(CategoryRules::alreadyCreated(rent(), list), nullptr);
}

}

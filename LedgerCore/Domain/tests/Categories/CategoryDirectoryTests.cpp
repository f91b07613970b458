#include "LedgerCore/Domain/Categories/CategoryDirectory.h"

#include <gtest/gtest.h>

namespace {

Category category(std::string id, std::optional<int> sortOrder = {}, std::optional<std::string> parentID = {})
{
    Category made;
    made.kind = "expense";
    made.names = {{"en-US", id}};
    made.id = std::move(id);
    made.parentID = std::move(parentID);
    made.sortOrder = sortOrder;
    return made;
}

Category archived(Category category)
{
    category.archived = true;
    return category;
}

std::string ids(CategoryDirectory::List list)
{
    std::string text;
    for (const auto* each : list)
        text += (text.empty() ? "" : " ") + each->id;
    return text;
}

}

TEST(CategoryDirectory, OrdersParentsWithTheirChildrenByPositionThenByList)
{
    const std::vector<Category> list{category("rent"),
                                     category("paper", 2, "office"),
                                     category("travel", 2),
                                     category("ink", 1, "office"),
                                     category("office", 1),
                                     category("food"),
                                     category("desk", {}, "office"),
                                     category("meals", 2)};
    const CategoryDirectory directory{list};
    EXPECT_EQ(ids(directory.selectable("expense")), "office ink paper desk travel meals rent food");
    EXPECT_EQ(ids(directory.siblings("expense", std::nullopt, ArchivedCategories::included)),
              "office travel meals rent food");
    EXPECT_EQ(ids(directory.children("office", ArchivedCategories::included)), "ink paper desk");
    EXPECT_EQ(directory.parent(list[1]), &list[4]);
    EXPECT_EQ(directory.parent(list[4]), nullptr);
}

TEST(CategoryDirectory, LeavesArchivedCategoriesOutButNotTheirChildren)
{
    const std::vector<Category> list{archived(category("office")), category("ink", {}, "office"),
                                     archived(category("paper", {}, "office")), category("rent")};
    const CategoryDirectory directory{list};
    EXPECT_EQ(ids(directory.selectable("expense")), "ink rent");
    EXPECT_EQ(ids(directory.ordered("expense", ArchivedCategories::included)), "office ink paper rent");
    EXPECT_EQ(ids(directory.children("office", ArchivedCategories::leftOut)), "ink");
}

TEST(CategoryDirectory, KeepsTheFirstOfEachIdentifier)
{
    const std::vector<Category> list{category("a"), category("b"), category("a", 1, "b")};
    const CategoryDirectory directory{list};
    EXPECT_EQ(ids(directory.categories()), "a b");
    EXPECT_EQ(directory.find("a"), &list[0]);
    EXPECT_TRUE(directory.children("b", ArchivedCategories::included).empty());
}

TEST(CategoryDirectory, ListsEveryCategoryOnceEvenWhenParentsAreUnknownOrNameEachOther)
{
    auto income = category("sale", {}, "rent");
    income.kind = "income";
    const std::vector<Category> list{category("orphan", {}, "gone"), category("x", {}, "y"), category("y", {}, "x"),
                                     category("self", {}, "self"),   category("rent"),       income};
    const CategoryDirectory directory{list};
    EXPECT_EQ(ids(directory.selectable("expense")), "orphan rent x y self");
    EXPECT_EQ(ids(directory.selectable("income")), "sale");
    EXPECT_EQ(directory.parent(income), nullptr);
    EXPECT_EQ(directory.find(""), nullptr);
}

struct NameCase {
    const char* name;
    TextMap names;
    const char* locale;
    const char* expected;
};

class CategoryNames : public testing::TestWithParam<NameCase> {};

TEST_P(CategoryNames, AreNeverEmptyWhileOneExists)
{
    const auto& [name, names, locale, expected] = GetParam();
    std::vector<Category> list{category("a")};
    list[0].names = names;
    EXPECT_EQ(CategoryDirectory{list}.pathName(list[0], locale), expected);
}

INSTANTIATE_TEST_SUITE_P(
    Locales, CategoryNames,
    testing::Values(NameCase{"Tag", {{"id-ID", "Sewa"}, {"en-US", "Rent"}}, "id", "Sewa"},
                    NameCase{"ShortCode", {{"id", "Sewa"}, {"en", "Rent"}}, "id_ID", "Sewa"},
                    NameCase{"SimplifiedCode", {{"zh-Hans", "房租"}, {"en", "Rent"}}, "zh-Hant-TW", "房租"},
                    NameCase{"TagBeforeCode", {{"vi", "cũ"}, {"vi-VN", "Thuê"}}, "vi", "Thuê"},
                    NameCase{"EmptyFallsToEnglish", {{"vi-VN", ""}, {"id", "Sewa"}, {"en", "Rent"}}, "vi", "Rent"},
                    NameCase{"EnglishBeforeAnyOther", {{"de", "Miete"}, {"en-US", "Rent"}}, "vi", "Rent"},
                    NameCase{"UnknownLanguageIsChinese", {{"zh-CN", "房租"}, {"en-US", "Rent"}}, "fr", "房租"},
                    NameCase{"AnyOther", {{"de", ""}, {"id-ID", "Sewa"}}, "vi", "Sewa"},
                    NameCase{"None", {{"en-US", ""}}, "en", ""}),
    [](const auto& each) { return std::string{each.param.name}; });

TEST(CategoryDirectory, NamesTheWholePathForScreens)
{
    std::vector<Category> list{category("office"), category("ink", {}, "office")};
    list[0].names = {{"vi-VN", "Văn phòng"}, {"en-US", "Office"}};
    list[1].names = {{"en-US", "Ink"}};
    const CategoryDirectory directory{list};
    EXPECT_EQ(directory.fullPathName(list[1], "vi"), "Văn phòng › Ink");
    EXPECT_EQ(directory.fullPathName(list[0], "en"), "Office");
}

#include "LedgerCore/Domain/Categories/EnterpriseCategoryCatalog.h"

#include <algorithm>
#include <filesystem>
#include <set>

#include <gtest/gtest.h>

namespace {

std::string foundBy(std::string_view query)
{
    std::string ids;
    for (const auto* icon : EnterpriseCategoryCatalog::matchingIcons(query))
        ids += (ids.empty() ? "" : " ") + std::string{icon->id};
    return ids;
}

bool isComplete(const CatalogNames& names)
{
    const auto byLanguage = names.byLanguage();
    return byLanguage.size() == 4 &&
           std::ranges::none_of(byLanguage, [](const auto& each) { return each.second.empty(); });
}

std::set<std::string_view> iconIDs()
{
    std::set<std::string_view> ids;
    for (const auto& icon : EnterpriseCategoryCatalog::icons())
        ids.insert(icon.id);
    return ids;
}

}

TEST(EnterpriseCategoryCatalog, HoldsItsRowsOnceUnderIdentifiersOfTheirOwn)
{
    namespace Catalog = EnterpriseCategoryCatalog;
    EXPECT_EQ(Catalog::presets().size(), 173);
    EXPECT_EQ(Catalog::icons().size(), 218);
    EXPECT_EQ(Catalog::groups().size() + Catalog::iconGroups().size(), 27);

    std::set<std::string_view> ids(Catalog::groups().begin(), Catalog::groups().end());
    ids.insert(Catalog::iconGroups().begin(), Catalog::iconGroups().end());
    for (const auto& preset : Catalog::presets())
        ids.insert(preset.id);
    ids.merge(iconIDs());
    EXPECT_EQ(ids.size(), 173 + 218 + 27);
}

TEST(EnterpriseCategoryCatalog, PresetsAreWholeAndListedUnderGroupsOfTheirKind)
{
    const auto icons = iconIDs();
    std::set<std::string_view> usedGroups;
    for (const auto& preset : EnterpriseCategoryCatalog::presets()) {
        EXPECT_TRUE(isComplete(preset.names)) << preset.id;
        EXPECT_TRUE(icons.contains(preset.symbol)) << preset.id;
        EXPECT_TRUE(preset.group.starts_with(preset.kind)) << preset.id;
        EXPECT_TRUE(preset.kind == "income" || preset.kind == "expense") << preset.id;
        usedGroups.insert(preset.group);
    }
    const auto& groups = EnterpriseCategoryCatalog::groups();
    EXPECT_EQ(usedGroups, (std::set<std::string_view>(groups.begin(), groups.end())));
}

TEST(EnterpriseCategoryCatalog, NamesOfOneKindAreToldApartInEveryLanguage)
{
    for (const auto* locale : {"zh", "id", "vi", "en"}) {
        std::set<std::pair<std::string_view, std::string_view>> presets;
        for (const auto& preset : EnterpriseCategoryCatalog::presets())
            presets.emplace(preset.kind, preset.names.text(locale));
        EXPECT_EQ(presets.size(), 173) << locale;
        std::set<std::string_view> icons;
        for (const auto& icon : EnterpriseCategoryCatalog::icons())
            icons.insert(icon.names.text(locale));
        EXPECT_EQ(icons.size(), 218) << locale;
    }
}

TEST(EnterpriseIconLibrary, OffersOnlyDrawingsOfTheIconSet)
{
    const std::filesystem::path drawings{"/usr/share/bootstrap-icons/svg"};
    const auto& groups = EnterpriseCategoryCatalog::iconGroups();
    for (const auto& icon : EnterpriseCategoryCatalog::icons()) {
        EXPECT_TRUE(std::filesystem::exists(drawings / (std::string{icon.id} + ".svg"))) << icon.id;
        EXPECT_TRUE(isComplete(icon.names)) << icon.id;
        EXPECT_NE(std::ranges::find(groups, icon.group), groups.end()) << icon.id;
    }
}

TEST(EnterpriseIconLibrary, FindsIconsInAnyLanguageCaseAndAccent)
{
    EXPECT_EQ(EnterpriseCategoryCatalog::matchingIcons(" \n").size(), 218);
    EXPECT_EQ(foundBy(" HEO ĐẤT "), "piggy-bank");
    EXPECT_EQ(foundBy("heo dat"), "piggy-bank");
    EXPECT_EQ(foundBy("tabungan"), "piggy-bank");
    EXPECT_EQ(foundBy("存钱"), "piggy-bank");
    EXPECT_EQ(foundBy("petrol"), "fuel-pump");
    EXPECT_EQ(foundBy("no such icon"), "");
}

TEST(EnterpriseCategoryCatalog, NamesGroupsAndRows)
{
    EXPECT_EQ(EnterpriseCategoryCatalog::groupName("expense.people", "vi_VN"), "Nhân sự");
    EXPECT_EQ(EnterpriseCategoryCatalog::groupName("icon.trade", "fr"), "商贸");
    EXPECT_EQ(EnterpriseCategoryCatalog::groupName("truck", "en"), "truck");
    EXPECT_EQ(EnterpriseCategoryCatalog::englishName("office-rent"), "Office rent");
    EXPECT_EQ(EnterpriseCategoryCatalog::englishName("truck"), "Truck");
    EXPECT_EQ(EnterpriseCategoryCatalog::englishName("income.sales"), "Sales");
    ASSERT_NE(EnterpriseCategoryCatalog::preset("wages"), nullptr);
    EXPECT_EQ(EnterpriseCategoryCatalog::preset("wages")->names.byLanguage().at("id-ID"), "Gaji dan upah");
}

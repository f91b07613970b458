#include "LedgerCore/Domain/Text/Collation.h"

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Names = std::vector<std::string>;

struct OrderCase {
    const char* name;
    const char* locale;
    Names expected;
};

class NameOrder : public testing::TestWithParam<OrderCase> {};

TEST_P(NameOrder, IsThatOfTheLanguage)
{
    const auto& [name, locale, expected] = GetParam();
    auto compared = expected;
    std::ranges::reverse(compared);
    auto keyed = compared;
    std::ranges::sort(compared,
                      [&](const auto& left, const auto& right) { return Collation::isBefore(left, right, locale); });
    EXPECT_EQ(compared, expected);
    std::ranges::sort(keyed, {}, [&](const auto& each) { return Collation::sortKey(each, locale); });
    EXPECT_EQ(keyed, expected);
}

INSTANTIATE_TEST_SUITE_P(
    Languages, NameOrder,
    testing::Values(OrderCase{"Vietnamese", "vi-VN", {"dầu", "Dịch vụ", "Đảo", "điện", "Em", "ơn", "phí"}},
                    OrderCase{"English", "en-US", {"Đảo", "Dịch vụ", "Éclair", "Till 2", "till 10", "Zebra"}},
                    OrderCase{"Indonesian", "id_ID", {"air", "Bank", "kas", "Sewa"}},
                    OrderCase{"ChineseByPinyin", "zh-CN", {"办公费", "材料", "差旅费", "房租", "水电"}},
                    OrderCase{
                        "LongNames", "en", {std::string(200, 'a') + " first", std::string(200, 'a') + " second", "b"}},
                    // Half of a letter is no text, and must still have one place.
                    OrderCase{"BrokenBytes", "vi", {"a", "b", "b\xE1\xBA"}}),
    [](const auto& each) { return std::string{each.param.name}; });

TEST(Collation, TellsTextsApartThatReadTheSame)
{
    const std::string composed = "\u00E9";
    const std::string decomposed = "e\u0301";
    EXPECT_TRUE(Collation::isBefore(decomposed, composed, "en"));
    EXPECT_FALSE(Collation::isBefore(composed, decomposed, "en"));
    EXPECT_FALSE(Collation::isBefore(composed, composed, "en"));
    EXPECT_LT(Collation::sortKey(decomposed, "en"), Collation::sortKey(composed, "en"));
}

}

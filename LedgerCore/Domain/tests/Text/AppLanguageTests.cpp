#include "LedgerCore/Domain/Text/AppLanguage.h"

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Text/WordTable.h"

namespace {

struct Resolution {
    const char* name;
    std::vector<std::string> preferred;
    const char* expected;
};

class LanguageResolution : public testing::TestWithParam<Resolution> {};

TEST_P(LanguageResolution, TakesTheFirstThatIsSpokenHere)
{
    EXPECT_EQ(AppLanguage::resolve(GetParam().preferred), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Lists, LanguageResolution,
                         testing::Values(Resolution{"Empty", {}, "zh-CN"}, Resolution{"French", {"fr-FR"}, "zh-CN"},
                                         Resolution{"SecondWithUnderscore", {"fr-FR", "vi_VN"}, "vi-VN"},
                                         Resolution{"FirstWins", {"id", "en-US"}, "id-ID"},
                                         Resolution{"TraditionalChinese", {"zh-Hant-TW"}, "zh-CN"},
                                         Resolution{"Shouted", {"EN-gb"}, "en-US"},
                                         Resolution{"LongerWord", {"english"}, "zh-CN"},
                                         Resolution{"OnlyPrefix", {"idn-ID", "en"}, "en-US"},
                                         Resolution{"EmptyText", {"", "vi"}, "vi-VN"}),
                         [](const auto& each) { return std::string{each.param.name}; });

TEST(AppLanguage, MapsToResourceCodes)
{
    EXPECT_EQ(AppLanguage::resourceCode("id"), "id");
    EXPECT_EQ(AppLanguage::resourceCode("en_AU"), "en");
    EXPECT_EQ(AppLanguage::resourceCode("vi-VN"), "vi");
    EXPECT_EQ(AppLanguage::resourceCode("de"), "zh-Hans");
}

TEST(AppLanguage, SupportsItsFourTagsExactly)
{
    for (const auto tag : {"zh-CN", "en-US", "id-ID", "vi-VN"})
        EXPECT_TRUE(AppLanguage::isSupported(tag));
    for (const auto tag : {"", "zh", "en_US", "EN-US", "fr-FR"})
        EXPECT_FALSE(AppLanguage::isSupported(tag));
}

const WordTable words{{{"greeting", "你好，%1", "Halo %1", "Chào %1", "Hello %1"},
                       {"move", "从%1到%2", "%1 ke %2", "%1 đến %2", "%2 from %1, 100%"}}};

TEST(WordTable, ChoosesTheColumnByThePlainPrefixAndFallsBackToChinese)
{
    EXPECT_EQ(words.text("greeting", "id-ID"), "Halo %1");
    EXPECT_EQ(words.text("greeting", "vi"), "Chào %1");
    EXPECT_EQ(words.text("greeting", "en-AU"), "Hello %1");
    for (const auto* other : {"zh-CN", "fr", "EN", ""})
        EXPECT_EQ(words.text("greeting", other), "你好，%1");
}

TEST(WordTable, RendersAMissingKeyAsItself)
{
    EXPECT_EQ(words.text("absent", "en"), "absent");
    EXPECT_EQ(words.filled("absent %1", "en", {"x"}), "absent x");
    EXPECT_FALSE(words.contains("absent"));
}

TEST(WordTable, FillsNumberedPlaceholdersInAnyOrder)
{
    EXPECT_EQ(words.filled("move", "en", {"bank", "cash"}), "cash from bank, 100%");
    EXPECT_EQ(words.filled("move", "zh", {"银行", "%1"}), "从银行到%1") << "an argument is no pattern";
    EXPECT_EQ(words.filled("move", "id", {"bank"}), "bank ke %2");
}

}

#include "LedgerCore/Domain/Text/WordTable.h"

#include <optional>

#include <gtest/gtest.h>

TEST(WordTable, FindsTheRowsThatWouldFailAPersonOfOneLanguage)
{
    using Flaw = LanguageTexts::Flaw;
    struct Case {
        LanguageTexts texts;
        std::optional<Flaw> flaw;
    };
    for (const auto& [texts, flaw] :
         {Case{{"%1笔，共%2", "%1 dari %2", "%2 có %1", "%1 of %2"}, std::nullopt}, // in any order
          Case{{"100%", "100 % ya", "100%", "100% %"}, std::nullopt},               // percent signs
          Case{{"", "a", "a", "a"}, Flaw::languageMissing}, Case{{"a", "", "a", "a"}, Flaw::languageMissing},
          Case{{"a", "a", "", "a"}, Flaw::languageMissing}, Case{{"a", "a", "a", ""}, Flaw::languageMissing},
          Case{{"%2", "%1", "%1", "%1"}, Flaw::placeholdersDiffer},
          Case{{"%1", "1", "%1", "%1"}, Flaw::placeholdersDiffer},
          Case{{"%1", "%1", "%1 %1", "%1"}, Flaw::placeholdersDiffer},
          Case{{"%1", "%1", "%1", "one"}, Flaw::placeholdersDiffer}}) {
        EXPECT_EQ(texts.flaw(), flaw) << texts.chinese << " | " << texts.indonesian << " | " << texts.vietnamese
                                      << " | " << texts.english;
    }
}

TEST(WordTable, FillsPlaceholdersOnceAndLeavesTheRest)
{
    const WordTable table{{"sum", "%2：%1", "%1, %2", "%1; %2", "%1 of %2 (100%)"}};
    EXPECT_EQ(table.filled("sum", "zh-CN", {"%2", "b"}), "b：%2") << "what is filled in is not read again";
    EXPECT_EQ(table.filled("sum", "en-US", {"a"}), "a of %2 (100%)");
    EXPECT_EQ(table.text("sum", "vi_VN"), "%1; %2");
    EXPECT_EQ(table.text("other", "id-ID"), "other");
}

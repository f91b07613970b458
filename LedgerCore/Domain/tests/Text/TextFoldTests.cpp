#include "LedgerCore/Domain/Text/TextFold.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

struct Folding {
    const char* text;
    const char* folded;
};

class FoldedText : public testing::TestWithParam<Folding> {};

TEST_P(FoldedText, IsFoundWhateverItsCaseAndMarks)
{
    EXPECT_EQ(TextFold::folded(GetParam().text), GetParam().folded);
}

INSTANTIATE_TEST_SUITE_P(Texts, FoldedText,
                         testing::Values(Folding{"Office Rent 12", "office rent 12"}, Folding{"Điện", "dien"},
                                         Folding{"Phở TƯƠI", "pho tuoi"}, Folding{"Ngân hàng", "ngan hang"},
                                         Folding{"e\u0301", "e"}, Folding{"Ł Ø", "l o"}, Folding{"水电费", "水电费"},
                                         Folding{"ＡＢ", "ａｂ"}, Folding{"", ""}));

TEST(TextFold, TrimsUnicodeBlanksAtTheEndsOnly)
{
    EXPECT_EQ(TextFold::trimmed(" \t\r\n a b\u00A0\u3000\u2028"), "a b");
    EXPECT_EQ(TextFold::trimmed("\u3000"), "");
    EXPECT_EQ(TextFold::trimmed(""), "");
    EXPECT_EQ(TextFold::trimmed("\u200Bx"), "\u200Bx") << "a zero-width space is no white space";
    EXPECT_EQ(TextFold::trimmed("\xFF x"), "\xFF x");
}

TEST(TextFold, TellsWellFormedTextFromBytes)
{
    EXPECT_TRUE(TextFold::isValidUtf8("Điện 水 😀"));
    for (const auto* bytes : {"\xFF", "a\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80"})
        EXPECT_FALSE(TextFold::isValidUtf8(bytes));
}

TEST(TextFold, TellsTextsApartAsAReaderWould)
{
    EXPECT_TRUE(TextFold::areSame("Ti\u1EC1n", "Ti\u00EA\u0300n"));
    EXPECT_TRUE(TextFold::areSame("Ti\u1EC1n", "Tie\u0302\u0300n"));
    EXPECT_FALSE(TextFold::areSame("Ti\u1EC1n", "Ti\u00EAn"));
    EXPECT_FALSE(TextFold::areSame("Kas", "kas"));
    EXPECT_FALSE(TextFold::areSame("\xFF", "\xFE")) << "bytes that are no text";
    EXPECT_FALSE(TextFold::areSame("\xFF", "\uFFFD"));
}

TEST(TextFold, CountsCodePoints)
{
    EXPECT_EQ(TextFold::length(""), 0U);
    EXPECT_EQ(TextFold::length("Điện"), 4U);
    EXPECT_EQ(TextFold::length("水😀"), 2U);
}

RC_GTEST_PROP(TextFoldProperties, AnyBytesAreFoldedAndTrimmedWithoutHarm, (const std::string& text))
{
    const auto trimmed = TextFold::trimmed(text);
    RC_ASSERT(text.find(trimmed) != std::string::npos);
    RC_ASSERT(TextFold::trimmed(trimmed) == trimmed);
    RC_ASSERT(TextFold::folded(TextFold::folded(text)) == TextFold::folded(text));
}

}

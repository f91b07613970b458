#include "LedgerCore/Domain/Text/Naming.h"

#include <string>

#include <gtest/gtest.h>

TEST(Naming, TakesOneLineThatSaysSomething)
{
    EXPECT_TRUE(Naming::isName("  Nguyễn Thị Hương "));
    EXPECT_TRUE(Naming::isName("شركة\u200F 1")) << "a mark turns nothing";
    for (const auto* each : {"\u200B", "\u200B\u00AD", " \u2060 \uFEFF", "\u3164", "\u3000"})
        EXPECT_FALSE(Naming::isName(each)) << "nothing of it is seen: " << each;
    EXPECT_TRUE(Naming::isName(std::string(119, 'a') + "林")) << "code points count, not bytes";
    for (const std::string& each :
         {std::string{}, std::string{" \t"}, std::string{"two\nlines"}, std::string{"bell\a"}, std::string{"nul\0", 4},
          std::string{"\xC3("}, std::string{"next\u0085line"}, std::string{"two\u2028lines"},
          std::string{"invoice \u202Efdp.exe"}, std::string{"isolated\u2066"}, std::string(121, 'a')})
        EXPECT_FALSE(Naming::isName(each)) << each;
}

TEST(Naming, KnowsCountriesByTheirCodes)
{
    EXPECT_TRUE(Naming::isCountry("ID"));
    for (const auto* each : {"", "I", "id", "IDN", "I1", "ÀB"})
        EXPECT_FALSE(Naming::isCountry(each)) << each;
}

TEST(Naming, TakesAddressesThatMailCanBeSentTo)
{
    for (const auto* each : {"dewi@example.com", "a+b.c@x", "hương@ví-dụ.vn"})
        EXPECT_TRUE(Naming::isEmail(each)) << each;
    const auto tooLong = std::string(250, 'a') + "@x.id";
    for (const std::string& each :
         {std::string{}, std::string{"dewi"}, std::string{"@example.com"}, std::string{"dewi@"}, std::string{"a@b@c"},
          std::string{"a b@c.id"}, std::string{"a@c.id\r\nBcc: d@e.id"}, std::string{"Dewi <dewi@example.com>"},
          std::string{"a@c.id,b@c.id"}, std::string{"a@.id"}, std::string{"a@c."}, std::string{"a\u202E@c.id"},
          std::string{"a@c.id\u0085"}, tooLong})
        EXPECT_FALSE(Naming::isEmail(each)) << each;
}

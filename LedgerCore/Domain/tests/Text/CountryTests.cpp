#include "LedgerCore/Domain/Text/Country.h"

#include <algorithm>

#include <gtest/gtest.h>

TEST(Country, IsNamedInEachLanguage)
{
    EXPECT_EQ(Country::name("DE", "zh-CN"), "德国");
    EXPECT_EQ(Country::name("DE", "id-ID"), "Jerman");
    EXPECT_EQ(Country::name("DE", "vi-VN"), "Đức");
    EXPECT_EQ(Country::name("DE", "en-US"), "Germany");
    EXPECT_EQ(Country::name("no country", "en-US"), "no country");
}

TEST(Country, AreListedInTheOrderOfTheirNames)
{
    const auto place = [](const std::vector<std::string>& codes, const char* code) {
        return std::ranges::find(codes, code) - codes.begin();
    };
    const auto english = Country::all("en-US");
    EXPECT_GT(english.size(), 240U);
    EXPECT_LT(place(english, "CN"), place(english, "DE"));
    const auto vietnamese = Country::all("vi-VN");
    EXPECT_LT(place(vietnamese, "VN"), static_cast<std::ptrdiff_t>(vietnamese.size()));
    EXPECT_LT(place(vietnamese, "CA"), place(vietnamese, "DE")) << "Canada, Đức";
}

#include "LedgerCore/Domain/Money/Money.h"

#include <limits>
#include <set>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "LedgerCore/Domain/Money/BasisPoints.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"

namespace {

using enum MoneyError;
using Parsed = std::expected<std::int64_t, MoneyError>;

struct ParseCase {
    const char* name;
    const char* text;
    const char* currency;
    const char* locale;
    Parsed expected;

    friend std::ostream& operator<<(std::ostream& out, const ParseCase& each) { return out << each.text; }
};

class MoneyParse : public testing::TestWithParam<ParseCase> {};

TEST_P(MoneyParse, ReadsAnAmountOrSaysTheFirstThingThatIsWrong)
{
    EXPECT_EQ(Money::parse(GetParam().text, GetParam().currency, GetParam().locale), GetParam().expected);
}

Parsed bad(MoneyError error)
{
    return std::unexpected(error);
}

INSTANTIATE_TEST_SUITE_P(
    Amounts, MoneyParse,
    testing::Values(ParseCase{"GroupedEnglish", "1,234.56", "USD", "en", 123456},
                    ParseCase{"GroupedIndonesian", "1.234,56", "USD", "id-ID", 123456},
                    ParseCase{"GroupedVietnamese", "1.500.000", "VND", "vi", 1500000},
                    ParseCase{"GroupedChinese", "1,234.5", "CNY", "zh-Hans", 123450},
                    ParseCase{"EnglishInIndonesia", "1,234.56", "USD", "en-ID", 123456},
                    ParseCase{"Ungrouped", "1234", "USD", "en", 123400},
                    ParseCase{"OneDecimal", "0.5", "USD", "en", 50}, ParseCase{"LeadingZeros", "007", "JPY", "en", 7},
                    ParseCase{"Padded", " \t12\n", "JPY", "en", 12},
                    ParseCase{"PaddedWithUnicodeBlanks", "\u00A012\u3000", "JPY", "zh", 12},
                    ParseCase{"Negative", "-12.30", "EUR", "en", -1230},
                    ParseCase{"Positive", "+12.30", "EUR", "en", 1230}, ParseCase{"NegativeZero", "-0", "USD", "en", 0},
                    ParseCase{"Largest", "90000000000.00", "USD", "en", 9'000'000'000'000},
                    ParseCase{"LargestNegative", "-9,000,000,000,000", "JPY", "en", -9'000'000'000'000}),
    [](const auto& each) { return std::string{each.param.name}; });

INSTANTIATE_TEST_SUITE_P(
    Refusals, MoneyParse,
    testing::Values(ParseCase{"OtherLocalesSeparator", "1.234,56", "USD", "en", bad(invalidFormat)},
                    ParseCase{"OtherLocalesGrouping", "1,234,567", "VND", "vi", bad(invalidFormat)},
                    ParseCase{"DecimalAsGrouping", "1.234", "USD", "en", bad(excessPrecision)},
                    ParseCase{"Empty", "", "USD", "en", bad(invalidFormat)},
                    ParseCase{"Blank", "   ", "USD", "en", bad(invalidFormat)},
                    ParseCase{"OnlySign", "-", "USD", "en", bad(invalidFormat)},
                    ParseCase{"TwoSigns", "+-5", "USD", "en", bad(invalidFormat)},
                    ParseCase{"BlankAfterSign", "- 5", "USD", "en", bad(invalidFormat)},
                    ParseCase{"MinusOfDisplay", "\u22125", "USD", "en", bad(invalidFormat)},
                    ParseCase{"NoInteger", ".5", "USD", "en", bad(invalidFormat)},
                    ParseCase{"NoIntegerIndonesian", ",5", "USD", "id", bad(invalidFormat)},
                    ParseCase{"NoFraction", "12.", "USD", "en", bad(invalidFormat)},
                    ParseCase{"NoFractionInYen", "12.", "JPY", "en", bad(invalidFormat)},
                    ParseCase{"TwoDecimalMarks", "1.2.3", "USD", "en", bad(invalidFormat)},
                    ParseCase{"ShortGroup", "12,34", "USD", "en", bad(invalidFormat)},
                    ParseCase{"LongFirstGroup", "1234,567", "USD", "en", bad(invalidFormat)},
                    ParseCase{"LeadingGrouping", ",123", "USD", "en", bad(invalidFormat)},
                    ParseCase{"TrailingGrouping", "123,", "USD", "en", bad(invalidFormat)},
                    ParseCase{"LettersInGroup", "1,23a", "USD", "en", bad(invalidFormat)},
                    ParseCase{"Symbol", "$5", "USD", "en", bad(invalidFormat)},
                    ParseCase{"InnerBlank", "1 234", "USD", "en", bad(invalidFormat)},
                    ParseCase{"FullWidthDigits", "１２", "CNY", "zh", bad(invalidFormat)},
                    ParseCase{"LettersInFraction", "1.2x", "USD", "en", bad(invalidFormat)},
                    ParseCase{"LettersInALongFraction", "1.2345x", "USD", "en", bad(invalidFormat)},
                    ParseCase{"ThirdDecimal", "0.001", "USD", "en", bad(excessPrecision)},
                    ParseCase{"YenHasNoDecimals", "12.0", "JPY", "en", bad(excessPrecision)},
                    ParseCase{"PrecisionBeforeRange", "99999999999999999999.001", "USD", "en", bad(excessPrecision)},
                    ParseCase{"OneTooMany", "90000000000.01", "USD", "en", bad(outOfRange)},
                    ParseCase{"OneTooManyBelow", "-90000000000.01", "USD", "en", bad(outOfRange)},
                    ParseCase{"TwentyFiveDigits", "1234567890123456789012345", "USD", "en", bad(outOfRange)},
                    ParseCase{"UnknownCurrency", "5", "XYZ", "en", bad(unsupportedCurrency)},
                    ParseCase{"UnknownCurrencyBeforeText", "", "XYZ", "en", bad(unsupportedCurrency)},
                    ParseCase{"CurrencyInLowerCase", "5", "usd", "en", bad(unsupportedCurrency)}),
    [](const auto& each) { return std::string{each.param.name}; });

struct FormatCase {
    const char* name;
    std::int64_t minor;
    const char* currency;
    const char* locale;
    const char* plain;
    const char* shown;
};

class MoneyFormat : public testing::TestWithParam<FormatCase> {};

TEST_P(MoneyFormat, WritesForMachinesAndForPeople)
{
    EXPECT_EQ(Money::decimalString(GetParam().minor, GetParam().currency), GetParam().plain);
    EXPECT_EQ(Money::format(GetParam().minor, GetParam().currency, GetParam().locale), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    Amounts, MoneyFormat,
    testing::Values(FormatCase{"Cents", 5, "USD", "en", "0.05", "USD 0.05"},
                    FormatCase{"Zero", 0, "USD", "en", "0.00", "USD 0.00"},
                    FormatCase{"MinusOneCent", -1, "USD", "en", "-0.01", "USD −0.01"},
                    FormatCase{"Negative", -123450, "USD", "en", "-1234.50", "USD −1,234.50"},
                    FormatCase{"NoGroupYet", 99999, "USD", "en", "999.99", "USD 999.99"},
                    FormatCase{"TwoGroups", 123456789, "EUR", "vi-VN", "1234567.89", "EUR 1.234.567,89"},
                    FormatCase{"WholeRupiah", 150000000, "IDR", "id", "1500000.00", "IDR 1.500.000"},
                    FormatCase{"RupiahAndSen", 150000050, "IDR", "id", "1500000.50", "IDR 1.500.000,50"},
                    FormatCase{"WholeRupiahInEnglish", -100, "IDR", "en", "-1.00", "IDR −1"},
                    FormatCase{"Dong", 1500000, "VND", "vi", "1500000", "VND 1.500.000"},
                    FormatCase{"YenZero", 0, "JPY", "zh-CN", "0", "JPY 0"},
                    FormatCase{"Unknown", 5, "XYZ", "en", "0.05", "XYZ 0.05"},
                    FormatCase{"Lowest", std::numeric_limits<std::int64_t>::min(), "USD", "en", "-92233720368547758.08",
                               "USD −92,233,720,368,547,758.08"},
                    FormatCase{"LowestWithoutDecimals", std::numeric_limits<std::int64_t>::min(), "JPY", "id",
                               "-9223372036854775808", "JPY −9.223.372.036.854.775.808"}),
    [](const auto& each) { return std::string{each.param.name}; });

constexpr std::array locales{"zh-CN", "en-US", "id-ID", "vi-VN"};

RC_GTEST_PROP(MoneyProperties, EveryAmountIsReadBackAsItWasWritten, ())
{
    const auto minor = *rc::gen::inRange<std::int64_t>(0, Money::maximumMinor + 1);
    for (const auto& currency : CurrencyInfo::supported()) {
        for (const auto* locale : locales) {
            const auto digits = Money::formatDigits(minor, currency.code, locale);
            RC_ASSERT((Money::parse(digits, currency.code, locale) == minor));
            RC_ASSERT(Money::formatDigits(-minor, currency.code, locale) == (minor == 0 ? digits : "−" + digits));
            RC_ASSERT((Money::parse("-" + digits, currency.code, locale) == -minor));
        }
        RC_ASSERT((Money::parse(Money::decimalString(-minor, currency.code), currency.code, "en") == -minor));
    }
}

RC_GTEST_PROP(MoneyProperties, AnyTextIsReadWithinTheLimitOrRefused, (const std::string& text))
{
    for (const auto* locale : locales) {
        const auto read = Money::parse(text, "USD", locale);
        if (read) {
            RC_ASSERT(Money::isWithinLimit(*read));
            const bool readsItsOwn = Money::parse(Money::decimalString(*read, "USD"), "USD", "en") == *read;
            RC_ASSERT(readsItsOwn);
        }
    }
}

TEST(Money, AddsUnlessTheSumDoesNotFit)
{
    constexpr auto highest = std::numeric_limits<std::int64_t>::max();
    constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
    EXPECT_EQ(Money::add(-5, 7), 2);
    EXPECT_EQ(Money::add(highest, lowest), -1);
    EXPECT_EQ(Money::add(highest - 1, 1), highest);
    EXPECT_EQ(Money::add(highest, 1), std::nullopt);
    EXPECT_EQ(Money::add(lowest, -1), std::nullopt);
}

TEST(Money, LimitsMagnitudesOnBothSides)
{
    EXPECT_TRUE(Money::isWithinLimit(9'000'000'000'000));
    EXPECT_FALSE(Money::isWithinLimit(9'000'000'000'001));
    EXPECT_TRUE(Money::isWithinLimit(-9'000'000'000'000));
    EXPECT_FALSE(Money::isWithinLimit(-9'000'000'000'001));
    EXPECT_FALSE(Money::isWithinLimit(std::numeric_limits<std::int64_t>::min()));
}

TEST(BasisPoints, AreReadWithTwoDecimalsWithinTheWhole)
{
    EXPECT_EQ(BasisPoints::parse("12.5", "en"), 1250);
    EXPECT_EQ(BasisPoints::parse(" 33,33\u3000", "vi"), 3333);
    EXPECT_EQ(BasisPoints::parse("0", "zh"), 0);
    EXPECT_EQ(BasisPoints::parse("100.00", "en"), 10000);
    for (const auto* text : {"", "100.01", "-1", "33.333", "12,5", "50 %", "99999999999999999999"})
        EXPECT_EQ(BasisPoints::parse(text, "en"), std::nullopt) << text;
}

TEST(BasisPoints, AreWrittenWithoutZerosThatSayNothing)
{
    EXPECT_EQ(BasisPoints::text(1250, "en"), "12.5");
    EXPECT_EQ(BasisPoints::text(3333, "id"), "33,33");
    EXPECT_EQ(BasisPoints::text(10000, "en"), "100");
    EXPECT_EQ(BasisPoints::text(5, "vi"), "0,05");
    EXPECT_EQ(BasisPoints::text(0, "zh"), "0");
    for (int points = 0; points <= BasisPoints::whole; ++points)
        ASSERT_EQ(BasisPoints::parse(BasisPoints::text(points, "id"), "id"), points);
}

TEST(MoneyError, IsSaidInTheLanguageOfTheLocale)
{
    EXPECT_EQ(friendlyMessage(excessPrecision, "en-GB"),
              "The amount has more decimal places than this currency supports.");
    EXPECT_EQ(friendlyMessage(excessPrecision, "ID"), "Jumlah desimal melebihi ketelitian mata uang.");
    EXPECT_EQ(friendlyMessage(invalidFormat, "vi_VN"),
              "Định dạng số tiền không hợp lệ. Dùng dấu phân cách theo ngôn ngữ hiện tại.");
    EXPECT_EQ(friendlyMessage(outOfRange, "de"), "金额超出支持范围。");
}

TEST(MoneyError, HasASentenceOfItsOwnInEveryLanguage)
{
    std::set<std::string_view> sentences;
    for (const auto error : {invalidFormat, excessPrecision, outOfRange, unsupportedCurrency}) {
        for (const auto* locale : locales)
            sentences.insert(friendlyMessage(error, locale));
    }
    EXPECT_EQ(sentences.size(), 16);
    EXPECT_FALSE(sentences.contains(""));
}

TEST(CurrencyInfo, OffersEighteenOfWhichTwoHaveNoDecimals)
{
    std::set<std::string> codes;
    std::set<std::string> whole;
    for (const auto& each : CurrencyInfo::supported()) {
        EXPECT_EQ(each.code.size(), 3) << each.code;
        EXPECT_FALSE(each.name.empty() || each.symbol.empty()) << each.code;
        codes.insert(each.code);
        if (each.scale == 0)
            whole.insert(each.code);
        else
            EXPECT_EQ(each.scale, 2) << each.code;
    }
    EXPECT_EQ(codes.size(), 18);
    EXPECT_EQ(whole, (std::set<std::string>{"JPY", "VND"}));
}

TEST(CurrencyInfo, StandsInForAnUnknownCode)
{
    EXPECT_EQ(CurrencyInfo::forCode("XYZ"), (CurrencyInfo{"XYZ", 2, "XYZ", "XYZ"}));
    EXPECT_EQ(CurrencyInfo::forCode("jpy").scale, 2) << "codes are exact";
    EXPECT_EQ(CurrencyInfo::forCode("JPY").name, "Japanese yen");
}

}

#include <optional>
#include <string>
#include <variant>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "LedgerCore/Domain/Money/AmountExpression.h"
#include "LedgerCore/Domain/Money/Money.h"

namespace {

using AmountExpression::Error;

struct ExpressionCase {
    std::string name;
    std::string text;
    std::string currency = "USD";
    std::string locale = "en-US";
    std::variant<std::int64_t, Error> expected;
};

void PrintTo(const ExpressionCase& each, std::ostream* out)
{
    *out << each.text;
}

std::variant<std::int64_t, Error> evaluated(const ExpressionCase& each)
{
    const auto result = AmountExpression::evaluate(each.text, each.currency, each.locale);
    if (result)
        return *result;
    return result.error();
}

}

class AmountExpressions : public testing::TestWithParam<ExpressionCase> {};

TEST_P(AmountExpressions, ComeOutExactlyOrSayWhyNot)
{
    EXPECT_EQ(evaluated(GetParam()), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, AmountExpressions,
    testing::Values(
        ExpressionCase{"Product", "12*3500", "IDR", "id-ID", 4'200'000},
        ExpressionCase{"TighterSignsFirst", "2+3*4-6/2", "USD", "en-US", 1'100},
        ExpressionCase{"FromLeftToRight", "100-30-20", "VND", "vi-VN", 50},
        ExpressionCase{"DivisionsFromLeft", "100/5/2", "JPY", "en-US", 10},
        ExpressionCase{"Brackets", "(1,200+300)/2", "USD", "en-US", 75'000},
        ExpressionCase{"BracketsInBrackets", "2*(3+(4-1)*2)", "USD", "en-US", 1'800},
        ExpressionCase{"IndonesianSeparators", "1.200,50+0,25", "USD", "id-ID", 120'075},
        ExpressionCase{"OtherLanguagesSeparators", "1.200,50+1", "USD", "en-US", Error::unreadable},
        ExpressionCase{"UnevenGroups", "1,20+1", "USD", "en-US", Error::unreadable},
        ExpressionCase{"StepsFinerThanTheCurrency", "0.333*3+0.001", "USD", "en-US", 100},
        ExpressionCase{"ThirdsThatMeetAgain", "100/3*3", "JPY", "en-US", 100},
        ExpressionCase{"RateOfManyDecimals", "1000*1.0845", "USD", "en-US", 108'450},
        ExpressionCase{"RemainderBelowTheUnit", "100/3", "USD", "en-US", Error::notExact},
        ExpressionCase{"HalfADong", "3/2", "VND", "vi-VN", Error::notExact},
        ExpressionCase{"LeadingMinus", "-5+10", "USD", "en-US", 500},
        ExpressionCase{"NegativeResult", "5-10", "USD", "en-US", -500},
        ExpressionCase{"MinusBeforeBrackets", "10-(-(2))", "USD", "en-US", 1'200},
        ExpressionCase{"WideDigits", "２+3", "USD", "zh-CN", Error::unreadable},
        ExpressionCase{"TypographicSigns", "（2＋3）× 4 ÷ 2 − 1", "USD", "zh-CN", 900},
        ExpressionCase{"ColonAndLetter", "3x10:2", "USD", "vi-VN", 1'500},
        ExpressionCase{"BlanksAroundSigns", " 7 * 8 ", "USD", "en-US", 5'600},
        ExpressionCase{"BlankInsideANumber", "1 200+1", "USD", "en-US", Error::unreadable},
        ExpressionCase{"AtTheLimit", "90000000000*1", "USD", "en-US", 9'000'000'000'000},
        ExpressionCase{"OneCentBeyond", "90000000000+0.01", "USD", "en-US", Error::outOfRange},
        ExpressionCase{"BeyondBelowZero", "0-90000000000-0.01", "USD", "en-US", Error::outOfRange},
        ExpressionCase{"BackFromBeyond", "90000000000*1000/1000", "USD", "en-US", 9'000'000'000'000},
        ExpressionCase{"StepBeyondEveryNumber", "9000000000000*9000000000000*9000000000000*9000000000000", "VND",
                       "en-US", Error::outOfRange},
        ExpressionCase{"SumOfTheWidestProducts",
                       "4611686018427387904*4611686018427387904*4+4611686018427387904*4611686018427387904*4", "USD",
                       "en-US", Error::outOfRange},
        ExpressionCase{"NumberOfManyDigits", "99999999999999999999999+1", "USD", "en-US", Error::outOfRange},
        ExpressionCase{"DivisionByZero", "5/(3-3)", "USD", "en-US", Error::dividesByZero},
        ExpressionCase{"Unfinished", "12*", "USD", "en-US", Error::unreadable},
        ExpressionCase{"OpenBracket", "(1+2", "USD", "en-US", Error::unreadable},
        ExpressionCase{"ClosedTooOften", "1+2)", "USD", "en-US", Error::unreadable},
        ExpressionCase{"NothingInBrackets", "()", "USD", "en-US", Error::unreadable},
        ExpressionCase{"TwoNumbers", "1 2", "USD", "en-US", Error::unreadable},
        ExpressionCase{"NoSignBetweenBrackets", "(2)(3)", "USD", "en-US", Error::unreadable},
        ExpressionCase{"Words", "rent*2", "USD", "en-US", Error::unreadable},
        ExpressionCase{"Nothing", "", "USD", "en-US", Error::unreadable},
        ExpressionCase{"UnknownCurrency", "1+1", "XYZ", "en-US", Error::unsupportedCurrency},
        ExpressionCase{"HostileBrackets", std::string(200, '('), "USD", "en-US", Error::unreadable},
        ExpressionCase{"HostileSigns", std::string(250, '-') + "1", "USD", "en-US", Error::unreadable},
        ExpressionCase{"HostileLength", std::string(100'000, '1') + "+1", "USD", "en-US", Error::unreadable}),
    [](const auto& each) { return each.param.name; });

TEST(AmountExpression, IsMoreThanANumberWithItsSign)
{
    for (const auto* text : {"12*3500", "(5)", "-5+3", "7-", "3 × 4", "2026-11-20"})
        EXPECT_TRUE(AmountExpression::isOne(text)) << text;
    for (const auto* text : {"", "-5", "+5", "−5", "1,200.50", "1 200", "abc", "-", "()"})
        EXPECT_FALSE(AmountExpression::isOne(text)) << text;
}

TEST(AmountExpression, AgreesWithWhatMoneyWrites)
{
    const auto written = [](std::int64_t minor) { return "(" + Money::decimalString(minor, "USD") + ")"; };
    EXPECT_TRUE(rc::check([&](int left, int right) {
        const auto sum = AmountExpression::evaluate(written(left) + "+" + written(right), "USD", "en-US");
        RC_ASSERT(sum.value() == std::int64_t{left} + right);
        const auto back = AmountExpression::evaluate(written(left) + "*7/7-" + written(right), "USD", "en-US");
        RC_ASSERT(back.value() == std::int64_t{left} - right);
    }));
}

TEST(AmountExpression, NeverLeavesTheRangeWhateverIsTyped)
{
    EXPECT_TRUE(rc::check([] {
        const auto keys = rc::gen::elementOf(std::string{"0123456789.,+-*/() x:"});
        const auto result = AmountExpression::evaluate(*rc::gen::container<std::string>(keys), "IDR", "id-ID");
        const bool isWithin = Money::isWithinLimit(result.value_or(0)); // the macro would read both sides of an "or"
        RC_ASSERT(isWithin);
    }));
}

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Forms/AmountTyping.h"

namespace {

/// A field that a person types into: "|" in the expected texts is the caret.
class Typing {
public:
    explicit Typing(std::string locale, const char* start = "") : m_locale{std::move(locale)}
    {
        m_state.text = QString::fromUtf8(start);
        m_state.caret = static_cast<int>(m_state.text.size());
    }
    Typing& keys(const char* keys)
    {
        for (const auto key : QString::fromUtf8(keys)) {
            auto text = m_state.text;
            text.insert(m_state.caret, key);
            m_state = AmountTyping::typed(m_state, text, m_state.caret + 1, m_locale);
        }
        return *this;
    }
    Typing& caretTo(int caret)
    {
        m_state.caret = caret;
        return *this;
    }
    Typing& backspace()
    {
        auto text = m_state.text;
        text.remove(m_state.caret - 1, 1);
        m_state = AmountTyping::typed(m_state, text, m_state.caret - 1, m_locale);
        return *this;
    }
    Typing& forwardDelete()
    {
        auto text = m_state.text;
        text.remove(m_state.caret, 1);
        m_state = AmountTyping::typed(m_state, text, m_state.caret, m_locale);
        return *this;
    }
    std::string shown()
    {
        auto text = m_state.text;
        return text.insert(m_state.caret, QLatin1Char{'|'}).toStdString();
    }

private:
    std::string m_locale;
    AmountText m_state;
};

struct PasteCase {
    std::string name;
    const char* clipboard;
    std::string currency;
    std::string locale;
    const char* text; // null: refused
};

class AmountPaste : public testing::TestWithParam<PasteCase> {};

struct SettleCase {
    std::string name;
    const char* text;
    std::string currency;
    std::string locale;
    const char* settled;
};

class AmountSettle : public testing::TestWithParam<SettleCase> {};

std::string nameOf(const testing::TestParamInfo<PasteCase>& each)
{
    return each.param.name;
}

}

TEST(AmountTyping, GroupsDigitsAsTheyAreTyped)
{
    EXPECT_EQ(Typing("en").keys("4385200").shown(), "4,385,200|");
    EXPECT_EQ(Typing("vi-VN").keys("7500000").shown(), "7.500.000|");
    EXPECT_EQ(Typing("en").keys("1234.5").shown(), "1,234.5|");
    EXPECT_EQ(Typing("id").keys("1234,50").shown(), "1.234,50|");
}

TEST(AmountTyping, KeepsTheCaretBetweenTheSameDigits)
{
    EXPECT_EQ(Typing("en", "123,456").caretTo(2).keys("9").shown(), "1,29|3,456");
    EXPECT_EQ(Typing("en", "1,234,567").caretTo(3).backspace().shown(), "1|34,567");
    EXPECT_EQ(Typing("en", "1,234").backspace().shown(), "123|");
}

TEST(AmountTyping, StepsOverASeparatorThatIsDeleted)
{
    EXPECT_EQ(Typing("en", "1,234").caretTo(2).backspace().shown(), "1|,234");
    EXPECT_EQ(Typing("en", "1,234").caretTo(1).forwardDelete().shown(), "1,|234");
    EXPECT_EQ(Typing("en", "1,234").caretTo(1).forwardDelete().forwardDelete().shown(), "1|34");
}

TEST(AmountTyping, LeavesSeparatorsTypedByHandAlone)
{
    EXPECT_EQ(Typing("id").keys("12.50").shown(), "12.50|");
    EXPECT_EQ(Typing("en").keys("12,5000").shown(), "12,5000|");
    EXPECT_EQ(Typing("en").keys("1,234,567").shown(), "1,234,567|");
    EXPECT_FALSE(Money::parse("12.50", "USD", "id").has_value());
}

TEST(AmountTyping, StartsGroupingAgainInAnEmptiedField)
{
    EXPECT_EQ(Typing("en").keys("1,").backspace().backspace().keys("5000").shown(), "5,000|");
}

TEST(AmountTyping, KeepsWhatIsNoNumber)
{
    EXPECT_EQ(Typing("en").keys("12x45").shown(), "12x45|");
    EXPECT_EQ(Typing("en").keys("-1500").shown(), "-1500|");
    EXPECT_EQ(Typing("en").keys("1.2.3").shown(), "1.2.3|");
}

TEST_P(AmountPaste, IsRewrittenOnlyWhereItCanBeReadInOneWay)
{
    const auto& each = GetParam();
    const auto text = AmountTyping::pasted(QString::fromUtf8(each.clipboard), each.currency, each.locale);
    ASSERT_EQ(text.has_value(), each.text != nullptr);
    if (text)
        EXPECT_EQ(text->toStdString(), each.text);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, AmountPaste,
    testing::Values(
        PasteCase{"OwnForm", "1,234.56", "USD", "en", "1,234.56"},
        PasteCase{"OtherFormWhole", "1.234,56", "USD", "en", "1,234.56"},
        PasteCase{"OtherFormGroups", "4.385.200", "IDR", "en", "4,385,200"},
        PasteCase{"OtherFormDecimals", "12,50", "USD", "en", "12.50"},
        PasteCase{"EnglishIntoIndonesian", "1,234.56", "USD", "id", "1.234,56"},
        PasteCase{"CodeAndBlanks", " USD 1,234.56\n", "USD", "en", "1,234.56"},
        PasteCase{"AmbiguousStaysOwn", "1,234", "USD", "en", "1,234"},
        PasteCase{"AmbiguousPointStaysOwn", "1.234", "USD", "en", "1.234"},
        PasteCase{"UnevenStays", "1.23.456", "USD", "en", "1.23.456"},
        PasteCase{"NoDecimalsInYen", "12,50", "JPY", "en", "12,50"},
        PasteCase{"Plain", "4385200", "IDR", "vi", "4385200"},
        PasteCase{"OtherCurrency", "EUR 5", "USD", "en", nullptr}, PasteCase{"Words", "about 5", "USD", "en", nullptr},
        PasteCase{"Negative", "-5", "USD", "en", nullptr}, PasteCase{"TwoLines", "100\n200", "USD", "en", nullptr},
        PasteCase{"TwoLinesOfThree", "1\r\n200", "USD", "en", nullptr},
        PasteCase{"TwoCells", "100\t200", "USD", "en", nullptr},
        PasteCase{"TelephoneNumber", "0812 3456 7890", "IDR", "id", nullptr},
        PasteCase{"UnevenBlanks", "12 50", "USD", "en", nullptr},
        PasteCase{"DoubleBlank", "1  250", "USD", "en", nullptr},
        PasteCase{"BlanksInThrees", "1 250 000", "IDR", "id", "1.250.000"},
        PasteCase{"NarrowBlanks", "1\u202f250\u202f000,50", "EUR", "en", "1,250,000.50"},
        PasteCase{"Rupiah", "Rp 1.250.000", "IDR", "en", "1,250,000"},
        PasteCase{"RupiahWithPoint", "Rp.1.250.000,-", "IDR", "id", "1.250.000"},
        PasteCase{"Dong", "4.500.000 ₫", "VND", "en", "4,500,000"},
        PasteCase{"DongNoBreak", "4.500.000\u00a0đ", "VND", "vi", "4.500.000"},
        PasteCase{"Yuan", "¥88.50", "CNY", "zh", "88.50"}, PasteCase{"Dollar", "$1,234.56", "USD", "id", "1.234,56"},
        PasteCase{"LowerCaseCode", "usd 5", "USD", "en", "5"}, PasteCase{"OtherSymbol", "$5", "IDR", "en", nullptr},
        PasteCase{"OtherDollar", "S$5", "USD", "en", nullptr},
        PasteCase{"Brackets", "(1,250,000)", "IDR", "en", "1,250,000"},
        PasteCase{"MarkInBrackets", "(Rp 1.250.000)", "IDR", "id", "1.250.000"},
        PasteCase{"HalfABracket", "(1,250,000", "IDR", "en", nullptr},
        PasteCase{"Dash", "1250000,-", "IDR", "id", "1250000"}),
    nameOf);

TEST(AmountTyping, TakesATypedMarkOffWhereItIsTheCurrencys)
{
    const auto left = [](const char* text, const char* currency) {
        return AmountTyping::settled(QString::fromUtf8(text), currency, "id-ID").toStdString();
    };
    EXPECT_EQ(left("Rp 1.250.000", "IDR"), "1.250.000");
    EXPECT_EQ(left("$12,50", "USD"), "12,50");
    EXPECT_EQ(left("Rp 1.250.000", "USD"), "Rp 1.250.000") << "another currency";
    EXPECT_EQ(left("12.50", "USD"), "12.50") << "typed without a mark it may mean either";
    EXPECT_EQ(left("a dozen", "USD"), "a dozen");
}

TEST(AmountTyping, TellsWhyAPasteIsRefused)
{
    const auto why = [](const char* clipboard) {
        return AmountTyping::pasted(QString::fromUtf8(clipboard), "IDR", "id").error();
    };
    for (const auto* negative : {"-5", "−5.000", "– 5", "-Rp 1.250.000", "Rp -1.250.000,-"})
        EXPECT_EQ(why(negative), PasteRefusal::negative) << negative;
    for (const auto* several : {"100\n200", "100\t200", "-1\r\n-2"})
        EXPECT_EQ(why(several), PasteRefusal::several) << several;
    for (const auto* other : {"USD 5", "-USD 5", "--5", "-", "about 5", ""})
        EXPECT_EQ(why(other), PasteRefusal::notAnAmount) << other;
}

TEST_P(AmountSettle, NeverChangesTheValue)
{
    const auto& each = GetParam();
    const auto text = QString::fromUtf8(each.text);
    const auto settled = AmountTyping::settled(text, each.currency, each.locale).toStdString();
    EXPECT_EQ(settled, each.settled);
    EXPECT_EQ(Money::parse(settled, each.currency, each.locale), Money::parse(each.text, each.currency, each.locale));
}

INSTANTIATE_TEST_SUITE_P(Texts, AmountSettle,
                         testing::Values(SettleCase{"Cents", "12000", "USD", "en", "12,000.00"},
                                         SettleCase{"Rupiah", "4385200", "IDR", "id", "4.385.200"},
                                         SettleCase{"RupiahAndSen", "10,5", "IDR", "id", "10,50"},
                                         SettleCase{"Zeros", "007", "JPY", "en", "7"},
                                         SettleCase{"TooPrecise", "1.234", "USD", "en", "1.234"},
                                         SettleCase{"OtherLanguage", "12,50", "USD", "en", "12,50"},
                                         SettleCase{"Negative", "-5", "USD", "en", "-5"}),
                         [](const auto& each) { return each.param.name; });

#include "LedgerCore/Domain/Money/AmountExpression.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <optional>
#include <string>
#include <utility>

#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Money/DecimalText.h"
#include "LedgerCore/Domain/Money/Money.h"

namespace {

using AmountExpression::Error;
using Wide = __int128;

constexpr std::size_t longest = 256;     // characters of one expression
constexpr int deepest = 32;              // brackets inside one another
constexpr std::size_t mostDecimals = 12; // of one number
constexpr std::int64_t largestNumber = 9'000'000'000'000'000'000;

struct Spelling {
    std::string_view text;
    char meaning;
};
constexpr std::array spellings{Spelling{"×", '*'},  Spelling{"·", '*'},  Spelling{"x", '*'},  Spelling{"X", '*'},
                               Spelling{"÷", '/'},  Spelling{":", '/'},  Spelling{"−", '-'},  Spelling{"–", '-'},
                               Spelling{"＋", '+'}, Spelling{"－", '-'}, Spelling{"＊", '*'}, Spelling{"／", '/'},
                               Spelling{"（", '('}, Spelling{"）", ')'}};
constexpr std::array<std::string_view, 5> blanks{" ", "\t", "\u00A0", "\u202F", "\u3000"};

/// One spelling for each sign, without blanks except those that stand between two numbers.
std::string plainSigns(std::string_view text)
{
    std::string plain;
    while (!text.empty()) {
        const auto begins = [text](std::string_view each) { return text.starts_with(each); };
        if (const auto* sign = std::ranges::find_if(spellings, begins, &Spelling::text); sign != spellings.end()) {
            plain += sign->meaning;
            text.remove_prefix(sign->text.size());
        } else if (const auto* blank = std::ranges::find_if(blanks, begins); blank != blanks.end()) {
            plain += ' ';
            text.remove_prefix(blank->size());
        } else {
            plain += text.front();
            text.remove_prefix(1);
        }
    }
    return plain;
}

/// A fraction in lowest terms, its denominator above zero.
struct Fraction {
    Wide numerator = 0;
    Wide denominator = 1;
};

using Value = std::expected<Fraction, Error>;

Wide magnitude(Wide value)
{
    return value < 0 ? -value : value;
}

Wide commonDivisor(Wide left, Wide right)
{
    left = magnitude(left);
    right = magnitude(right);
    while (right != 0)
        left = std::exchange(right, left % right);
    return left;
}

/// The product, as long as it stays far enough from the limit that its sign can be turned.
std::optional<Wide> product(Wide left, Wide right)
{
    Wide result = 0;
    constexpr auto limit = (Wide{1} << 126);
    if (__builtin_mul_overflow(left, right, &result) || result >= limit || result <= -limit)
        return std::nullopt;
    return result;
}

Value reduced(std::optional<Wide> numerator, std::optional<Wide> denominator)
{
    if (!numerator || !denominator)
        return std::unexpected(Error::outOfRange);
    if (*denominator == 0)
        return std::unexpected(Error::dividesByZero);
    const auto divisor = commonDivisor(*numerator, *denominator) * (*denominator < 0 ? -1 : 1);
    return Fraction{*numerator / divisor, *denominator / divisor};
}

Value times(const Fraction& left, const Fraction& right)
{
    return reduced(product(left.numerator, right.numerator), product(left.denominator, right.denominator));
}

Value sum(const Fraction& left, const Fraction& right, int sign)
{
    const auto first = product(left.numerator, right.denominator);
    const auto second = product(right.numerator, left.denominator);
    if (!first || !second)
        return std::unexpected(Error::outOfRange);
    return reduced(*first + sign * *second, product(left.denominator, right.denominator));
}

Wide power(std::size_t exponent)
{
    Wide value = 1;
    for (std::size_t step = 0; step < exponent; ++step)
        value *= 10;
    return value;
}

/// Reads an expression from left to right, the tighter signs first.
class Reader {
public:
    Reader(std::string_view text, DecimalText::Marks marks) : m_rest(text), m_marks(marks) {}

    Value whole()
    {
        auto value = terms(0);
        skipBlanks();
        if (value && !m_rest.empty())
            return std::unexpected(Error::unreadable);
        return value;
    }

private:
    Value terms(int depth)
    {
        auto value = factors(depth);
        while (value && (next() == '+' || next() == '-')) {
            const int sign = take() == '-' ? -1 : 1;
            const auto right = factors(depth);
            if (!right)
                return right;
            value = sum(*value, *right, sign);
        }
        return value;
    }

    Value factors(int depth)
    {
        auto value = single(depth);
        while (value && (next() == '*' || next() == '/')) {
            const bool divides = take() == '/';
            auto right = single(depth);
            if (!right)
                return right;
            if (divides)
                right = reduced(right->denominator, right->numerator);
            value = right ? times(*value, *right) : right;
        }
        return value;
    }

    Value single(int depth)
    {
        if (depth > deepest)
            return std::unexpected(Error::unreadable);
        if (next() == '+' || next() == '-') {
            const int sign = take() == '-' ? -1 : 1;
            const auto value = single(depth + 1);
            return value ? Value{Fraction{sign * value->numerator, value->denominator}} : value;
        }
        if (next() != '(')
            return number();
        take();
        const auto value = terms(depth + 1);
        if (value && next() != ')')
            return std::unexpected(Error::unreadable);
        if (value)
            take();
        return value;
    }

    Value number()
    {
        const auto isPart = [this](char each) {
            return (each >= '0' && each <= '9') || each == m_marks.decimal || each == m_marks.grouping;
        };
        skipBlanks();
        const auto end = static_cast<std::size_t>(std::ranges::find_if_not(m_rest, isPart) - m_rest.begin());
        const auto text = m_rest.substr(0, end);
        m_rest.remove_prefix(end);
        const auto point = text.find(m_marks.decimal);
        const auto decimals = point == std::string_view::npos ? 0 : text.size() - point - 1;
        if (decimals > mostDecimals)
            return std::unexpected(Error::outOfRange);
        const auto read = DecimalText::read(text, decimals, m_marks, largestNumber);
        if (!read)
            return std::unexpected(read.error() == DecimalText::Flaw::tooLarge ? Error::outOfRange : Error::unreadable);
        return reduced(*read, power(decimals));
    }

    void skipBlanks()
    {
        while (m_rest.starts_with(' '))
            m_rest.remove_prefix(1);
    }
    char next()
    {
        skipBlanks();
        return m_rest.empty() ? '\0' : m_rest.front();
    }
    char take()
    {
        const char taken = next();
        m_rest.remove_prefix(1);
        return taken;
    }

    std::string_view m_rest;
    DecimalText::Marks m_marks;
};

}

bool AmountExpression::isOne(std::string_view text)
{
    if (text.size() > longest)
        return false;
    auto plain = plainSigns(text);
    std::erase(plain, ' ');
    const bool hasSign = plain.starts_with('-') || plain.starts_with('+');
    const bool hasDigit = plain.find_first_of("0123456789") != std::string::npos;
    return hasDigit && plain.find_first_of("+-*/()", hasSign ? 1 : 0) != std::string::npos;
}

std::expected<std::int64_t, Error> AmountExpression::evaluate(std::string_view text, std::string_view currency,
                                                              std::string_view locale)
{
    if (!CurrencyInfo::isSupported(currency))
        return std::unexpected(Error::unsupportedCurrency);
    if (text.size() > longest)
        return std::unexpected(Error::unreadable);
    const auto marks = Money::separators(locale);
    const auto plain = plainSigns(text);
    const auto value = Reader{plain, {.decimal = marks.decimal, .grouping = marks.grouping}}.whole();
    if (!value)
        return std::unexpected(value.error());
    const auto minor = times(*value, {power(static_cast<std::size_t>(CurrencyInfo::scaleOf(currency))), 1});
    if (!minor || magnitude(minor->numerator) / minor->denominator > Money::maximumMinor)
        return std::unexpected(Error::outOfRange);
    if (minor->denominator != 1)
        return std::unexpected(Error::notExact);
    return Money::isWithinLimit(static_cast<std::int64_t>(minor->numerator))
               ? std::expected<std::int64_t, Error>{static_cast<std::int64_t>(minor->numerator)}
               : std::unexpected(Error::outOfRange);
}

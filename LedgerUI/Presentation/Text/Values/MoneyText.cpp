#include "LedgerUI/Presentation/Text/Values/MoneyText.h"

#include <string>

#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Text/WordTable.h"
#include "LedgerUI/Presentation/Text/Words.h"

const WordTable& spokenMoney()
{
    static const WordTable words{
        {"out", "支出 %1 %2", "keluar %1 %2", "chi %1 %2", "minus %1 %2"},
        {"in", "收入 %1 %2", "masuk %1 %2", "thu %1 %2", "plus %1 %2"},
        {"below", "负 %1 %2", "minus %1 %2", "âm %1 %2", "minus %1 %2"},
        {"there", "%1 %2", "%1 %2", "%1 %2", "%1 %2"},
    };
    return words;
}

namespace {

using Sign = MoneyText::Sign;

constexpr QChar minusSign{0x2212};

MoneyText written(std::int64_t minor, std::string_view currency, std::string_view locale, std::string_view spokenKey)
{
    auto digits = Money::formatDigits(minor, currency, locale);
    if (minor < 0)
        digits.erase(0, std::string_view{"−"}.size());
    const auto name = EntryWords::currency(currency, locale);
    return {.currency = qString(currency),
            .digits = qString(digits),
            .sign = minor < 0 ? Sign::minus : Sign::none,
            .spoken = wordIn(locale, spokenMoney(), spokenKey, {digits, name}),
            .minor = minor};
}

using Wide = __int128;

Wide power(int exponent)
{
    Wide value = 1;
    for (int step = 0; step < exponent; ++step)
        value *= 10;
    return value;
}

/// How many decimals show four digits of a ratio, however small it is: at most 18 for the amounts that exist.
int decimalsFor(Wide numerator, Wide denominator)
{
    int decimals = 0;
    while (numerator * power(decimals) / denominator < 1000)
        ++decimals;
    return decimals;
}

QString grouped(const std::string& digits, char grouping)
{
    QString text;
    for (std::size_t at = 0; at < digits.size(); ++at) {
        if (at > 0 && (digits.size() - at) % 3 == 0)
            text += QLatin1Char{grouping};
        text += QLatin1Char{digits[at]};
    }
    return text;
}

}

QString MoneyText::figure() const
{
    switch (sign) {
    case Sign::plus:
        return QLatin1Char('+') + digits;
    case Sign::minus:
        return minusSign + digits;
    case Sign::none:
        break;
    }
    return digits;
}

QString MoneyText::text() const
{
    return currency.isEmpty() ? figure() : currency + QChar{QChar::Nbsp} + figure();
}

QString MoneyText::plain() const
{
    return sign == Sign::minus ? QLatin1Char('-') + digits : digits;
}

MoneyText movementText(std::int64_t minor, std::string_view currency, std::string_view locale)
{
    auto text = written(minor, currency, locale, minor < 0 ? "out" : minor > 0 ? "in" : "there");
    if (minor > 0)
        text.sign = Sign::plus;
    return text;
}

MoneyText balanceText(std::int64_t minor, std::string_view currency, std::string_view locale)
{
    return written(minor, currency, locale, minor < 0 ? "below" : "there");
}

MoneyText unknownMoney(std::string_view currency)
{
    return {.currency = qString(currency), .digits = QStringLiteral("–"), .sign = Sign::none, .spoken = {}};
}

QString rateText(std::int64_t fromMinor, const std::string& from, std::int64_t toMinor, const std::string& to,
                 std::string_view locale)
{
    if (fromMinor <= 0 || toMinor <= 0)
        return QStringLiteral("–");
    // One unit of `from` in units of `to`, both amounts brought to the same scale. Amounts have at most 13 digits.
    const auto numerator = Wide{toMinor} * power(CurrencyInfo::scaleOf(from));
    const auto denominator = Wide{fromMinor} * power(CurrencyInfo::scaleOf(to));
    const int decimals = decimalsFor(numerator, denominator);
    const auto scaled = (numerator * power(decimals) * 2 + denominator) / (denominator * 2);
    auto digits = std::to_string(static_cast<std::uint64_t>(scaled));
    const auto places = static_cast<std::size_t>(decimals);
    if (digits.size() < places + 1)
        digits.insert(0, places + 1 - digits.size(), '0');
    const auto marks = Money::separators(locale);
    auto text = grouped(digits.substr(0, digits.size() - places), marks.grouping);
    if (places > 0)
        text += QLatin1Char{marks.decimal} + QString::fromStdString(digits.substr(digits.size() - places));
    return QStringLiteral("%1 %2").arg(qString(to), text);
}

#include "LedgerUI/Presentation/Text/Values/RateText.h"

#include <string>

#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Text/Words.h"

namespace {

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

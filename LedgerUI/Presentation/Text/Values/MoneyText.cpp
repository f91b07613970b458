#include "LedgerUI/Presentation/Text/Values/MoneyText.h"

#include <string>

#include "LedgerCore/Domain/Entries/EntryWords.h"
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

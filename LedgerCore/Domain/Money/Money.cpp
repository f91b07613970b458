#include "LedgerCore/Domain/Money/Money.h"

#include <utility>

#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Money/DecimalText.h"

namespace {

std::size_t decimalsOf(std::string_view currency)
{
    return static_cast<std::size_t>(CurrencyInfo::scaleOf(currency));
}

DecimalText::Marks marksOf(std::string_view locale)
{
    const auto marks = Money::separators(locale);
    return {.decimal = marks.decimal, .grouping = marks.grouping};
}

MoneyError errorOf(DecimalText::Flaw flaw)
{
    switch (flaw) {
    case DecimalText::Flaw::malformed:
        return MoneyError::invalidFormat;
    case DecimalText::Flaw::tooPrecise:
        return MoneyError::excessPrecision;
    case DecimalText::Flaw::tooLarge:
        return MoneyError::outOfRange;
    }
    std::unreachable();
}

}

Money::Separators Money::separators(std::string_view locale)
{
    if (locale.starts_with("id") || locale.starts_with("vi"))
        return {',', '.'};
    return {'.', ','};
}

std::string Money::decimalString(std::int64_t minor, std::string_view currency)
{
    return DecimalText::plain(minor, decimalsOf(currency));
}

std::string Money::formatDigits(std::int64_t minor, std::string_view currency, std::string_view locale)
{
    const bool wholeRupiah = currency == "IDR" && minor % 100 == 0;
    return wholeRupiah ? DecimalText::grouped(minor / 100, 0, marksOf(locale))
                       : DecimalText::grouped(minor, decimalsOf(currency), marksOf(locale));
}

std::string Money::format(std::int64_t minor, std::string_view currency, std::string_view locale)
{
    std::string text{currency};
    text += ' ';
    text += formatDigits(minor, currency, locale);
    return text;
}

std::expected<std::int64_t, MoneyError> Money::parse(std::string_view text, std::string_view currency,
                                                     std::string_view locale)
{
    if (!CurrencyInfo::isSupported(currency))
        return std::unexpected(MoneyError::unsupportedCurrency);
    const auto minor = DecimalText::read(text, decimalsOf(currency), marksOf(locale), maximumMinor);
    if (!minor)
        return std::unexpected(errorOf(minor.error()));
    return *minor;
}

std::optional<std::int64_t> Money::add(std::int64_t left, std::int64_t right)
{
    std::int64_t sum = 0;
    if (__builtin_add_overflow(left, right, &sum))
        return std::nullopt;
    return sum;
}

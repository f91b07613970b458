#include "LedgerCore/Domain/Money/Money.h"

#include <algorithm>
#include <charconv>
#include <ranges>
#include <vector>

#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Text/TextFold.h"

namespace {

bool isDigits(std::string_view text)
{
    return std::ranges::all_of(text, [](char each) { return each >= '0' && each <= '9'; });
}

std::vector<std::string_view> split(std::string_view text, char separator)
{
    std::vector<std::string_view> pieces;
    while (true) {
        const auto at = text.find(separator);
        pieces.push_back(text.substr(0, at));
        if (at == std::string_view::npos)
            return pieces;
        text.remove_prefix(at + 1);
    }
}

/// The integer digits without their grouping, or nothing when the groups are uneven or hold anything but digits.
std::optional<std::string> joinGroups(std::string_view integer, char grouping)
{
    const auto groups = split(integer, grouping);
    if (groups.size() > 1) {
        if (groups.front().empty() || groups.front().size() > 3)
            return std::nullopt;
        if (!std::ranges::all_of(groups | std::views::drop(1), [](auto group) { return group.size() == 3; }))
            return std::nullopt;
    }
    std::string joined;
    for (const auto group : groups)
        joined += group;
    if (!isDigits(joined))
        return std::nullopt;
    return joined;
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
    const auto scale = static_cast<std::size_t>(CurrencyInfo::scaleOf(currency));
    const auto bits = static_cast<std::uint64_t>(minor);
    auto digits = std::to_string(minor < 0 ? std::uint64_t{0} - bits : bits);
    if (digits.size() < scale + 1)
        digits.insert(0, scale + 1 - digits.size(), '0');
    if (scale > 0)
        digits.insert(digits.size() - scale, 1, '.');
    return minor < 0 ? "-" + digits : digits;
}

std::string Money::formatDigits(std::int64_t minor, std::string_view currency, std::string_view locale)
{
    const auto marks = separators(locale);
    const auto plain = decimalString(minor, currency);
    std::string_view digits = plain;
    std::string text;
    if (digits.starts_with('-')) {
        digits.remove_prefix(1);
        text = "−";
    }
    const auto point = digits.find('.');
    const auto integer = digits.substr(0, point);
    for (std::size_t at = 0; at < integer.size(); ++at) {
        if (at > 0 && (integer.size() - at) % 3 == 0)
            text += marks.grouping;
        text += integer[at];
    }
    const bool wholeRupiah = currency == "IDR" && minor % 100 == 0;
    if (point != std::string_view::npos && !wholeRupiah) {
        text += marks.decimal;
        text += digits.substr(point + 1);
    }
    return text;
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
    using enum MoneyError;
    if (!CurrencyInfo::isSupported(currency))
        return std::unexpected(unsupportedCurrency);
    text = TextFold::trimmed(text);
    if (text.empty())
        return std::unexpected(invalidFormat);
    const bool negative = text.front() == '-';
    if (negative || text.front() == '+')
        text.remove_prefix(1);

    const auto marks = separators(locale);
    const auto pieces = split(text, marks.decimal);
    if (pieces.size() > 2 || pieces.front().empty())
        return std::unexpected(invalidFormat);
    auto digits = joinGroups(pieces.front(), marks.grouping);
    if (!digits)
        return std::unexpected(invalidFormat);

    const auto scale = static_cast<std::size_t>(CurrencyInfo::scaleOf(currency));
    const auto fraction = pieces.size() == 2 ? pieces.back() : std::string_view{};
    if (pieces.size() == 2) {
        if (fraction.empty() || !isDigits(fraction))
            return std::unexpected(invalidFormat);
        if (fraction.size() > scale)
            return std::unexpected(excessPrecision);
    }
    *digits += fraction;
    digits->append(scale - fraction.size(), '0');

    std::int64_t value = 0;
    const auto* const end = digits->data() + digits->size();
    const auto read = std::from_chars(digits->data(), end, value);
    if (read.ec != std::errc{} || read.ptr != end || value > maximumMinor)
        return std::unexpected(outOfRange);
    return negative ? -value : value;
}

std::optional<std::int64_t> Money::add(std::int64_t left, std::int64_t right)
{
    std::int64_t sum = 0;
    if (__builtin_add_overflow(left, right, &sum))
        return std::nullopt;
    return sum;
}

#include "LedgerCore/Domain/Money/DecimalText.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <ranges>
#include <vector>

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

/// The digits of the magnitude, at least one more than there are decimals.
std::string digitsOf(std::int64_t value, std::size_t decimals)
{
    const auto bits = static_cast<std::uint64_t>(value);
    auto digits = std::to_string(value < 0 ? std::uint64_t{0} - bits : bits);
    if (digits.size() < decimals + 1)
        digits.insert(0, decimals + 1 - digits.size(), '0');
    return digits;
}

}

std::string DecimalText::plain(std::int64_t value, std::size_t decimals)
{
    auto digits = digitsOf(value, decimals);
    if (decimals > 0)
        digits.insert(digits.size() - decimals, 1, '.');
    return value < 0 ? "-" + digits : digits;
}

std::string DecimalText::grouped(std::int64_t value, std::size_t decimals, Marks marks)
{
    const auto digits = digitsOf(value, decimals);
    const auto integer = digits.size() - decimals;
    std::string text{value < 0 ? "−" : ""};
    for (std::size_t at = 0; at < integer; ++at) {
        if (at > 0 && (integer - at) % 3 == 0)
            text += marks.grouping;
        text += digits[at];
    }
    if (decimals > 0)
        text += marks.decimal + digits.substr(integer);
    return text;
}

std::expected<std::int64_t, DecimalText::Flaw> DecimalText::read(std::string_view text, std::size_t decimals,
                                                                 Marks marks, std::int64_t most)
{
    using enum Flaw;
    text = TextFold::trimmed(text);
    if (text.empty())
        return std::unexpected(malformed);
    const bool negative = text.front() == '-';
    if (negative || text.front() == '+')
        text.remove_prefix(1);

    const auto pieces = split(text, marks.decimal);
    if (pieces.size() > 2 || pieces.front().empty())
        return std::unexpected(malformed);
    auto digits = joinGroups(pieces.front(), marks.grouping);
    if (!digits)
        return std::unexpected(malformed);
    const auto fraction = pieces.size() == 2 ? pieces.back() : std::string_view{};
    if (pieces.size() == 2 && (fraction.empty() || !isDigits(fraction)))
        return std::unexpected(malformed);
    if (fraction.size() > decimals)
        return std::unexpected(tooPrecise);
    *digits += fraction;
    digits->append(decimals - fraction.size(), '0');

    std::int64_t value = 0;
    const auto* const end = digits->data() + digits->size();
    const auto done = std::from_chars(digits->data(), end, value);
    if (done.ec != std::errc{} || done.ptr != end || value > most)
        return std::unexpected(tooLarge);
    return negative ? -value : value;
}

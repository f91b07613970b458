#include "LedgerUI/Presentation/Charts/ChartScale.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Text/WordTable.h"

namespace {

constexpr std::int64_t largest = std::int64_t{1} << 61;

std::int64_t minorPerUnit(std::string_view currency)
{
    std::int64_t factor = 1;
    for (int digit = 0; digit < CurrencyInfo::scaleOf(currency); ++digit)
        factor *= 10;
    return factor;
}

/// How many multiples of `step` lie between both ends, the ends included.
std::int64_t tickCount(std::int64_t lowest, std::int64_t highest, std::int64_t step)
{
    return highest / step - lowest / step + 1; // both divisions go towards zero, which lies between the ends
}

/// A word by which a language shortens large numbers.
struct ShortUnit {
    int power; // of ten
    LanguageTexts name;
};

/// A blank before the name is one that does not break; an empty name means that the language has no such word.
constexpr std::array<ShortUnit, 6> shortUnits{{
    {12, {"万亿", "\u00a0T", "\u00a0nghìn\u00a0tỷ", "\u00a0T"}},
    {9, {"", "\u00a0M", "\u00a0tỷ", "\u00a0B"}},
    {8, {"亿", "", "", ""}},
    {6, {"", "\u00a0jt", "\u00a0tr", "\u00a0M"}},
    {4, {"万", "", "", ""}},
    {3, {"", "\u00a0rb", "\u00a0N", "\u00a0k"}},
}};

/// The unit in which values up to `magnitude` (in whole units of the currency) are told.
const ShortUnit* unitFor(std::int64_t magnitude, std::string_view locale)
{
    const auto found = std::ranges::find_if(shortUnits, [&](const ShortUnit& unit) {
        std::int64_t factor = 1;
        for (int digit = 0; digit < unit.power; ++digit)
            factor *= 10;
        return magnitude >= factor && !unit.name.text(locale).empty();
    });
    return found == shortUnits.end() ? nullptr : &*found;
}

/// The decimals of `value` divided by ten to the `places`, without zeros at the end.
int decimalsOf(std::int64_t value, int places)
{
    while (places > 0 && value % 10 == 0) {
        value /= 10;
        --places;
    }
    return places;
}

std::string grouped(std::string digits, char mark)
{
    for (auto at = static_cast<std::ptrdiff_t>(digits.size()) - 3; at > 0; at -= 3)
        digits.insert(static_cast<std::size_t>(at), 1, mark);
    return digits;
}

/// `value` divided by ten to the `places`, cut to `decimals`, which lose nothing.
std::string shortened(std::int64_t value, int places, int decimals, std::string_view locale)
{
    auto digits = std::to_string(value < 0 ? -value : value);
    const auto least = static_cast<std::size_t>(places) + 1;
    if (digits.size() < least)
        digits.insert(0, least - digits.size(), '0');
    const auto point = digits.size() - static_cast<std::size_t>(places);
    const auto marks = Money::separators(locale);
    std::string text = value < 0 ? "−" : "";
    text += grouped(digits.substr(0, point), marks.grouping);
    if (decimals > 0)
        text += marks.decimal + digits.substr(point, static_cast<std::size_t>(decimals));
    return text;
}

}

std::vector<std::int64_t> ChartScale::ticks() const
{
    std::vector<std::int64_t> values;
    if (step <= 0)
        return values;
    for (auto multiple = lowest / step; multiple <= highest / step; ++multiple)
        values.push_back(multiple * step);
    return values;
}

double ChartScale::position(std::int64_t value) const
{
    if (highest == lowest)
        return 0;
    return static_cast<double>(value - lowest) / static_cast<double>(highest - lowest);
}

ChartScale ChartScales::spanning(std::int64_t lowest, std::int64_t highest, std::string_view currency, int mostTicks)
{
    require(lowest >= -largest && highest <= largest, "a chart's values leave room for their difference");
    ChartScale scale{.lowest = std::min<std::int64_t>(lowest, 0), .highest = std::max<std::int64_t>(highest, 0)};
    if (scale.lowest == scale.highest)
        return scale;
    constexpr std::array<std::int64_t, 3> leadingDigits{1, 2, 5};
    for (auto power = minorPerUnit(currency);; power *= 10) {
        for (const auto digit : leadingDigits) {
            if (power > largest / digit) { // a single line at zero is all that such steps would leave
                scale.step = power;
                return scale;
            }
            scale.step = digit * power;
            if (tickCount(scale.lowest, scale.highest, scale.step) <= std::max(mostTicks, 2))
                return scale;
        }
    }
}

std::vector<std::string> ChartScales::labels(const ChartScale& scale, std::string_view currency,
                                             std::string_view locale)
{
    const auto perUnit = minorPerUnit(currency);
    const auto ticks = scale.ticks();
    const auto magnitude = [](std::int64_t value) { return value < 0 ? -value : value; };
    std::int64_t most = 0;
    for (const auto tick : ticks)
        most = std::max(most, magnitude(tick) / perUnit);
    const auto* unit = unitFor(most, locale);
    const int places = unit == nullptr ? 0 : unit->power;
    const int decimals = decimalsOf(scale.step / perUnit, places);
    std::vector<std::string> texts;
    texts.reserve(ticks.size());
    for (const auto tick : ticks) {
        auto text = tick == 0 ? std::string{"0"} : shortened(tick / perUnit, places, decimals, locale);
        if (tick != 0 && unit != nullptr)
            text += unit->name.text(locale);
        texts.push_back(std::move(text));
    }
    return texts;
}

#include "LedgerCore/Domain/Money/BasisPoints.h"

#include "LedgerCore/Domain/Money/DecimalText.h"
#include "LedgerCore/Domain/Money/Money.h"

namespace {

constexpr std::size_t decimals = 2;

}

std::optional<int> BasisPoints::parse(std::string_view percentage, std::string_view locale)
{
    const auto marks = Money::separators(locale);
    const auto points =
        DecimalText::read(percentage, decimals, {.decimal = marks.decimal, .grouping = marks.grouping}, whole);
    if (!points || *points < 0)
        return std::nullopt;
    return static_cast<int>(*points);
}

std::string BasisPoints::text(int points, std::string_view locale)
{
    const auto marks = Money::separators(locale);
    auto text = DecimalText::grouped(points, decimals, {.decimal = marks.decimal, .grouping = marks.grouping});
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == marks.decimal)
        text.pop_back();
    return text;
}

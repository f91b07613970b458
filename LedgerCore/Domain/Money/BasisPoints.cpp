#include "LedgerCore/Domain/Money/BasisPoints.h"

#include "LedgerCore/Domain/Money/Money.h"

std::optional<int> BasisPoints::parse(std::string_view percentage, std::string_view locale)
{
    // A percentage with two decimals is written like an amount of a currency with two: its minor units are the points.
    const auto points = Money::parse(percentage, "CNY", locale);
    if (!points || *points < 0 || *points > whole)
        return std::nullopt;
    return static_cast<int>(*points);
}

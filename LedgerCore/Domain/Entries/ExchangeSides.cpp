#include "LedgerCore/Domain/Entries/ExchangeSides.h"

std::optional<ExchangeSides> ExchangeSides::of(const LedgerTransaction& entry, std::string_view from,
                                               std::string_view to)
{
    ExchangeSides sides{.day = entry.date};
    for (const auto& leg : entry.legs) {
        const auto magnitude = leg.amountMinor < 0 ? -leg.amountMinor : leg.amountMinor;
        if (leg.currency == from)
            sides.fromMinor = magnitude;
        else if (leg.currency == to)
            sides.toMinor = magnitude;
    }
    return entry.legs.size() == 2 && sides.fromMinor > 0 && sides.toMinor > 0 ? std::optional{sides} : std::nullopt;
}

bool isFarFrom(const ExchangeSides& earlier, std::int64_t fromMinor, std::int64_t toMinor)
{
    // Both rates brought over one denominator; amounts have at most 13 digits.
    __extension__ using Wide = __int128;
    const auto now = Wide{toMinor} * earlier.fromMinor;
    const auto then = Wide{earlier.toMinor} * fromMinor;
    return (now > then ? now - then : then - now) * 10 > then;
}

#include "LedgerUI/Presentation/Entry/EntryHistory.h"

#include <algorithm>
#include <tuple>

namespace {

bool isInForce(const LedgerTransaction& entry)
{
    return !entry.reversedBy && entry.kind != EntryKind::reversal;
}

/// The two sides of an exchange between two currencies; nothing where it has other legs.
std::optional<EntryHistory::Exchange> sidesOf(const LedgerTransaction& entry, std::string_view from,
                                              std::string_view to)
{
    EntryHistory::Exchange sides{.day = entry.date};
    for (const auto& leg : entry.legs) {
        const auto magnitude = leg.amountMinor < 0 ? -leg.amountMinor : leg.amountMinor;
        if (leg.currency == from)
            sides.fromMinor = magnitude;
        else if (leg.currency == to)
            sides.toMinor = magnitude;
    }
    return entry.legs.size() == 2 && sides.fromMinor > 0 && sides.toMinor > 0 ? std::optional{sides} : std::nullopt;
}

}

const LedgerTransaction* EntryHistory::likelyDouble(std::string_view day, std::string_view accountID,
                                                    std::string_view currency, std::int64_t minor) const
{
    if (m_day != day) {
        m_day = day;
        m_ofDay.clear();
        for (const auto& entry : m_snapshot->transactions) {
            if (entry.date == day && isInForce(entry))
                m_ofDay.push_back(&entry);
        }
    }
    const auto isDouble = [&](const LedgerTransaction* entry) {
        return std::ranges::any_of(entry->legs, [&](const LedgerLeg& leg) {
            return leg.amountMinor == minor && leg.accountID == accountID && leg.currency == currency;
        });
    };
    const auto found = std::ranges::find_if(m_ofDay, isDouble);
    return found == m_ofDay.end() ? nullptr : *found;
}

std::optional<EntryHistory::Exchange> EntryHistory::lastExchange(std::string_view from, std::string_view to) const
{
    if (!m_exchanges) {
        m_exchanges.emplace();
        for (const auto& entry : m_snapshot->transactions) {
            if (entry.kind == EntryKind::exchange && isInForce(entry))
                m_exchanges->push_back(&entry);
        }
        std::ranges::sort(*m_exchanges, std::ranges::greater{}, [](const LedgerTransaction* each) {
            return std::tie(each->date, each->createdAt, each->id);
        });
    }
    for (const auto* entry : *m_exchanges) {
        if (auto sides = sidesOf(*entry, from, to))
            return sides;
    }
    return std::nullopt;
}

bool isFarFrom(const EntryHistory::Exchange& earlier, std::int64_t fromMinor, std::int64_t toMinor)
{
    // Both rates brought over one denominator; amounts have at most 13 digits.
    using Wide = __int128;
    const auto now = Wide{toMinor} * earlier.fromMinor;
    const auto then = Wide{earlier.toMinor} * fromMinor;
    return (now > then ? now - then : then - now) * 10 > then;
}

#include "LedgerUI/Presentation/Entry/EntryHistory.h"

#include <algorithm>
#include <tuple>

#include "LedgerCore/Domain/Entries/EntryStanding.h"

const LedgerTransaction* EntryHistory::likelyDouble(std::string_view day, std::string_view accountID,
                                                    std::string_view currency, std::int64_t minor) const
{
    if (m_day != day) {
        m_day = day;
        m_ofDay.clear();
        for (const auto& entry : m_snapshot->transactions) {
            if (entry.date == day && EntryStanding::isInForce(entry))
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

std::optional<ExchangeSides> EntryHistory::lastExchange(std::string_view from, std::string_view to) const
{
    if (!m_exchanges) {
        m_exchanges.emplace();
        for (const auto& entry : m_snapshot->transactions) {
            if (entry.kind == EntryKind::exchange && EntryStanding::isInForce(entry))
                m_exchanges->push_back(&entry);
        }
        std::ranges::sort(*m_exchanges, std::ranges::greater{}, [](const LedgerTransaction* each) {
            return std::tie(each->date, each->createdAt, each->id);
        });
    }
    for (const auto* entry : *m_exchanges) {
        if (auto sides = ExchangeSides::of(*entry, from, to))
            return sides;
    }
    return std::nullopt;
}

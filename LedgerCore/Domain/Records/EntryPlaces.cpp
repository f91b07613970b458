#include "LedgerCore/Domain/Records/EntryPlaces.h"

#include <algorithm>
#include <bit>
#include <functional>
#include <utility>

namespace {

std::uint32_t hashOf(std::string_view id)
{
    return static_cast<std::uint32_t>(std::hash<std::string_view>{}(id));
}

constexpr std::size_t fewestSlots = 16;

}

void EntryPlaces::extend(const EntryList& entries)
{
    grow(entries.size());
    for (; m_size < entries.size(); ++m_size) {
        const auto& id = entries[m_size].id;
        const auto hash = hashOf(id);
        auto& slot = m_slots[slotOf(entries, id, hash)];
        if (slot.place == none)
            slot = {.hash = hash, .place = m_size};
    }
}

std::uint32_t EntryPlaces::find(const EntryList& entries, std::string_view id) const
{
    return m_slots.empty() ? none : m_slots[slotOf(entries, id, hashOf(id))].place;
}

std::size_t EntryPlaces::slotOf(const EntryList& entries, std::string_view id, std::uint32_t hash) const
{
    const auto last = m_slots.size() - 1;
    auto at = hash & last;
    while (m_slots[at].place != none && (m_slots[at].hash != hash || entries[m_slots[at].place].id != id))
        at = (at + 1) & last;
    return at;
}

void EntryPlaces::grow(std::size_t entries)
{
    const auto wanted = std::max(fewestSlots, std::bit_ceil(2 * entries));
    if (wanted <= m_slots.size())
        return;
    for (const auto& slot : std::exchange(m_slots, std::vector<Slot>(wanted))) {
        if (slot.place != none)
            put(slot);
    }
}

void EntryPlaces::put(Slot slot)
{
    const auto last = m_slots.size() - 1;
    auto at = slot.hash & last;
    while (m_slots[at].place != none)
        at = (at + 1) & last;
    m_slots[at] = slot;
}

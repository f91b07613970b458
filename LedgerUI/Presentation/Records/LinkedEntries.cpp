#include "LedgerUI/Presentation/Records/LinkedEntries.h"

LinkedEntries::LinkedEntries(const LedgerSnapshot& snapshot, const std::unordered_set<std::string_view>& ids)
    : m_snapshot{snapshot}
{
    if (ids.empty())
        return;
    for (const auto& entry : snapshot.transactions) {
        if (ids.contains(entry.id))
            m_entries.emplace(entry.id, &entry);
    }
}

const LedgerTransaction* LinkedEntries::find(std::string_view id) const
{
    const auto found = m_entries.find(id);
    return found == m_entries.end() ? nullptr : found->second;
}

RecordEntry LinkedEntries::reached(std::string_view id) const
{
    if (id.empty())
        return std::unexpected("remark.noCash");
    if (!find(id))
        return std::unexpected("remark.entryNotSeen");
    return std::string{id};
}

const Account* LinkedEntries::account(std::string_view id) const
{
    const auto* entry = find(id);
    return entry && !entry->legs.empty() ? m_snapshot.account(entry->legs.front().accountID) : nullptr;
}

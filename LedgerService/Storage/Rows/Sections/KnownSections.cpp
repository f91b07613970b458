#include "LedgerService/Storage/Rows/Sections/KnownSections.h"

#include <algorithm>
#include <utility>

#include "LedgerService/Storage/Rows/Sections/CapitalRepository.h"
#include "LedgerService/Storage/Rows/Sections/DividendRepository.h"

namespace LedgerService {

namespace {

/// A section of fewer changes is read as quickly as it is looked up.
constexpr int fewChanges = 32;

CapitalState emptySection(const CapitalChange*)
{
    return CapitalHistory::stateAfter({});
}

DividendState emptySection(const DividendChange*)
{
    return DividendHistory::stateAfter({});
}

}

template <class Change, class State>
auto KnownSectionsOf<Change, State>::find(std::string_view companyID) const -> std::optional<Known>
{
    const std::scoped_lock lock{m_guard};
    const auto found = m_known.find(companyID);
    if (found == m_known.end())
        return std::nullopt;
    found->second.used = ++m_uses;
    return found->second;
}

template <class Change, class State>
auto KnownSectionsOf<Change, State>::read(Connection& connection, std::string_view companyID) const -> Reading
{
    std::shared_ptr<const State> base;
    std::vector<Change> changes;
    if (auto known = find(companyID)) {
        changes = m_source.changesFrom(connection, companyID, known->last.revision);
        if (!changes.empty() && changes.front() == known->last) {
            if (changes.size() == 1)
                return {.state = std::move(known->state), .last = std::move(known->last)};
            base = std::move(known->state);
            changes.erase(changes.begin());
        }
    }
    if (!base) // nothing is known, or of a later state than this transaction sees, or of another company
        changes = m_source.changesFrom(connection, companyID, 0);
    auto state = base ? *base : emptySection(static_cast<const Change*>(nullptr));
    for (const auto& change : changes)
        m_source.apply(change, state);
    return {.state = std::make_shared<const State>(std::move(state)),
            .last = changes.empty() ? std::nullopt : std::optional{std::move(changes.back())}};
}

template <class Change, class State>
void KnownSectionsOf<Change, State>::keep(std::string_view companyID, Reading reading)
{
    if (!reading.last || reading.last->revision < fewChanges)
        return;
    const auto size = static_cast<std::size_t>(reading.last->revision);
    const std::scoped_lock lock{m_guard};
    auto found = m_known.find(companyID);
    if (found != m_known.end()) {
        if (found->second.last.revision > reading.last->revision)
            return; // another thread has seen more
        m_changes -= static_cast<std::size_t>(found->second.last.revision);
        m_known.erase(found);
    }
    m_known.emplace(companyID, Known{*std::move(reading.last), std::move(reading.state), ++m_uses});
    m_changes += size;
    while (m_changes > m_mostChanges)
        dropOldest();
}

template <class Change, class State>
void KnownSectionsOf<Change, State>::dropOldest()
{
    const auto oldest = std::ranges::min_element(m_known, {}, [](const auto& each) { return each.second.used; });
    m_changes -= static_cast<std::size_t>(oldest->second.last.revision);
    m_known.erase(oldest);
}

template <class Change, class State>
std::shared_ptr<const State> KnownSectionsOf<Change, State>::committed(Connection& connection,
                                                                       std::string_view companyID)
{
    auto reading = read(connection, companyID);
    auto state = reading.state;
    keep(companyID, std::move(reading));
    return state;
}

template <class Change, class State>
std::shared_ptr<const State> KnownSectionsOf<Change, State>::underWay(Connection& connection,
                                                                      std::string_view companyID) const
{
    return read(connection, companyID).state;
}

template class KnownSectionsOf<CapitalChange, CapitalState>;
template class KnownSectionsOf<DividendChange, DividendState>;

KnownSections::KnownSections(std::size_t mostChanges)
    : capital({CapitalRepository::changesFrom, CapitalHistory::apply}, mostChanges),
      dividends({DividendRepository::changesFrom, DividendHistory::apply}, mostChanges)
{
}

}

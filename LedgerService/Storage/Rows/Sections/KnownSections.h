#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Capital/CapitalHistory.h"
#include "LedgerCore/Domain/Dividends/DividendHistory.h"

namespace LedgerService {

class Connection;

/// The sections of one kind as this process read them last, for the companies that used theirs last. A section only
/// grows, change by change, so that what is known stays true and only what came since is read: what a command costs
/// does not grow with its section. Used by several threads.
template <class Change, class State>
class KnownSectionsOf {
public:
    /// How a section is read and made; both from the first revision that is wanted on.
    struct Source {
        std::vector<Change> (*changesFrom)(Connection& connection, std::string_view companyID, int revision);
        void (*apply)(const Change& change, State& state);
    };

    KnownSectionsOf(Source source, std::size_t mostChanges) : m_source(source), m_mostChanges(mostChanges) {}

    /// The section as a transaction that only reads has it, known from then on.
    std::shared_ptr<const State> committed(Connection& connection, std::string_view companyID);

    /// The section as a transaction that writes has it. Since that may be undone, nothing of it becomes known.
    std::shared_ptr<const State> underWay(Connection& connection, std::string_view companyID) const;

private:
    struct Known {
        Change last; // by which the section is recognised: another company may have come to bear the id
        std::shared_ptr<const State> state;
        std::uint64_t used = 0;
    };
    struct Reading {
        std::shared_ptr<const State> state;
        std::optional<Change> last; // unset while the section has no changes
    };

    [[nodiscard]] std::optional<Known> find(std::string_view companyID) const;
    [[nodiscard]] Reading read(Connection& connection, std::string_view companyID) const;
    void keep(std::string_view companyID, Reading reading);
    void dropOldest();

    Source m_source;
    std::size_t m_mostChanges;
    mutable std::mutex m_guard;
    mutable std::uint64_t m_uses = 0;
    mutable std::map<std::string, Known, std::less<>> m_known;
    std::size_t m_changes = 0; // of all that is known
};

/// What this process knows of the sections of a database's companies.
struct KnownSections {
    /// `mostChanges`: of all known sections of a kind together.
    explicit KnownSections(std::size_t mostChanges = 100'000);

    KnownSectionsOf<CapitalChange, CapitalState> capital;
    KnownSectionsOf<DividendChange, DividendState> dividends;
};

}

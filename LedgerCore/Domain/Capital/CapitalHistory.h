#pragma once

#include <span>
#include <string>
#include <variant>

#include "LedgerCore/Domain/Records/CapitalState.h"
#include "LedgerCore/Domain/Records/Requests/CapitalCommand.h"
#include "LedgerCore/Domain/Records/Requests/SectionChange.h"

/// One accepted change to a company's capital section. Changes are only ever added: the section is what they make of an
/// empty one, each in its turn.
struct CapitalChange {
    int revision = 0;   // of the section from this change on; the first is 1
    std::string action; // a `CapitalAction`
    std::string date;   // bookkeeping day
    std::string note;
    std::string memberID; // who made it
    std::string createdAt;
    /// What came to stand in the section. A participant stands in the place of the one with its id.
    std::variant<CapitalParticipant, CapitalContribution, CapitalBaseline, CapitalOwnershipVersion, SidebarVisibility>
        made;

    bool operator==(const CapitalChange&) const = default;
};

namespace CapitalHistory {

/// The change that a command makes which `CapitalRules` accept on this section.
CapitalChange changeFor(const CapitalCommand& command, const CapitalState& state, const SectionStamp& stamp);

void apply(const CapitalChange& change, CapitalState& state);

/// The section after these changes. One that nobody has changed is at revision 0 and listed in the side bar.
CapitalState stateAfter(std::span<const CapitalChange> changes);

/// Whether a change of this action makes what this one made.
bool isOfItsAction(const CapitalChange& change);

}

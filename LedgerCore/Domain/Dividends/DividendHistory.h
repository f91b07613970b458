#pragma once

#include <span>
#include <string>
#include <variant>
#include <vector>

#include "LedgerCore/Domain/Dividends/DividendContext.h"
#include "LedgerCore/Domain/Records/Requests/SectionChange.h"

/// That an allocation no longer counts.
struct DividendCancellation {
    std::string batchID;

    bool operator==(const DividendCancellation&) const = default;
};

/// One accepted change to a company's dividend section. Changes are only ever added: the section is what they make of
/// an empty one, each in its turn.
struct DividendChange {
    int revision = 0;   // of the section from this change on; the first is 1
    std::string action; // a `DividendAction`
    std::string date;   // bookkeeping day
    std::string note;
    std::string memberID; // who made it
    std::string createdAt;
    /// What came to stand in the section. Participants stand in the places of those with their ids.
    std::variant<std::vector<DividendParticipant>, DividendBatch, DividendCancellation, DividendMovement,
                 SidebarVisibility>
        made;

    bool operator==(const DividendChange&) const = default;
};

namespace DividendHistory {

/// The change that a command makes which `DividendRules` accept in this context.
DividendChange changeFor(const DividendCommand& command, const DividendContext& context, const SectionStamp& stamp);

void apply(const DividendChange& change, DividendState& state);

/// The section after these changes. One that nobody has changed is at revision 0 and listed in the side bar.
DividendState stateAfter(std::span<const DividendChange> changes);

/// Whether a change of this action makes what this one made.
bool isOfItsAction(const DividendChange& change);

}

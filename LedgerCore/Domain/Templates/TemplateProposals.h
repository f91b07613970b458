#pragma once

#include <vector>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Templates/TemplateSchedule.h"

/// An entry that waits for a person to record it or to skip its day.
struct TemplateProposal {
    TemplateOccurrence occurrence;
    std::string name; // of its template

    bool operator==(const TemplateProposal&) const = default;
};

namespace TemplateProposals {

/// Whether the signed-in member may record an entry by the template now.
bool mayRecord(const EntryTemplate& kept, const LedgerSnapshot& snapshot);

/// The open days up to today of the templates by which the signed-in member may record, the oldest first.
std::vector<TemplateProposal> open(const std::vector<EntryTemplate>& templates, const LedgerSnapshot& snapshot,
                                   std::string_view today);

}

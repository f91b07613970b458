#pragma once

#include <string_view>

#include "LedgerCore/Domain/Records/LedgerTransaction.h"

/// How an entry stands in the books: what it moved counts, was taken back, or takes something back.
namespace EntryStanding {

/// Whether it was recorded for its own sake and not taken back.
inline bool isInForce(const LedgerTransaction& entry)
{
    return !entry.reversedBy && entry.kind != EntryKind::reversal;
}

/// Whether `reversal` takes back `original`, which `memberID` had recorded, and somebody else did it.
inline bool isUndoneByOthers(const LedgerTransaction& original, const LedgerTransaction& reversal,
                             std::string_view memberID)
{
    return original.reversedBy && original.memberID == memberID && reversal.reversalOf == original.id &&
           reversal.memberID != memberID;
}

}

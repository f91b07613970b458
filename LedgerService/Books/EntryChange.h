#pragma once

#include <vector>

#include "LedgerCore/Domain/Entries/BalanceRules.h"
#include "LedgerCore/Domain/Records/LedgerTransaction.h"

namespace LedgerService {

/// A decided command: all that must be written, in one transaction. Besides the entry and the balances this means
/// linking each of `entry.attachmentIDs` to the entry and, when `entry.reversalOf` is set, marking that entry as
/// `reversedBy` this one.
struct EntryChange {
    LedgerTransaction entry;            // to append
    std::vector<BalanceAfter> balances; // one for each account and currency that the entry touches

    bool operator==(const EntryChange&) const = default;
};

}

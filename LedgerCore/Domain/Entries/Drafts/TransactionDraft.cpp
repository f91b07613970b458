#include "LedgerCore/Domain/Entries/Drafts/TransactionDraft.h"

#include "LedgerCore/Domain/Records/LedgerTransaction.h"

bool TransactionDraft::onlyArrives() const
{
    return kind == EntryKind::income || kind == EntryKind::opening;
}

bool TransactionDraft::hasCategory() const
{
    return kind == EntryKind::expense || kind == EntryKind::income;
}

bool TransactionDraft::hasDestination() const
{
    return kind == EntryKind::transfer || kind == EntryKind::exchange;
}

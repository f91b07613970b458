#pragma once

#include <string_view>

#include <QString>

#include "LedgerCore/Domain/Entries/Drafts/EntryDraft.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// An entry that was begun and not recorded, as it is offered again.
namespace BegunEntry {

/// To go on with: amounts in the separators of `locale`, its key as it was.
TransactionDraft continued(const EntryDraft& draft, std::string_view locale);

/// "You had begun an entry: Expense · Electricity · Operating bank · USD 12.50 · 2026-11-22 19:40"
QString offer(const EntryDraft& draft, const LedgerSnapshot& snapshot, std::string_view locale);

}

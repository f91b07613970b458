#pragma once

#include <optional>

#include "LedgerUI/Presentation/Ledger/Listing/LedgerFilter.h"
#include "LedgerUI/Presentation/Print/PrintHead.h"

/// What went through one account in a period, as a bank would state it.
namespace AccountStatement {

/// For each currency what was there before, every movement from the oldest on with the balance after it, and what is
/// there at the end. Nothing for a filter that is not one account alone, at most with currencies and a period, or for
/// books that no report can be made of.
std::optional<PrintedDocument> document(const LedgerBook& book, const LedgerFilter& filter, const PrintMoment& moment);

}

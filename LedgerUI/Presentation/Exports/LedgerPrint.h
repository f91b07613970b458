#pragma once

#include "LedgerUI/Presentation/Ledger/LedgerListing.h"
#include "LedgerUI/Presentation/Print/PrintHead.h"

/// The ledger as it goes to paper.
namespace LedgerPrint {

/// The entries that are shown, in their order, with the totals below them. Narrowed to one account, and beside it at
/// most by currencies and the period, it is that account's statement.
PrintedDocument list(const LedgerListing& listing, const PrintMoment& moment);

/// One entry with everything that is known of it.
PrintedDocument entry(const LedgerBook& book, std::uint32_t at, const PrintMoment& moment);

}

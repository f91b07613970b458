#pragma once

#include <string_view>

#include "LedgerUI/Presentation/Records/CapitalQuestion.h"
#include "LedgerUI/Presentation/Records/RecordRow.h"

/// What was recorded of capital and dividends lately.
namespace LatestRecords {

/// The last ones of the currency that stand in the period, the latest first: a day, what it was and of whom, and the
/// amount. A row's identifier is its entry's in the ledger, or "-" and a number where no money moved.
RecordRows rows(const LedgerSnapshot& snapshot, const CapitalQuestion& question, std::string_view today,
                std::string_view locale);

}

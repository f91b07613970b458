#pragma once

#include <string_view>

#include "LedgerUI/Presentation/Records/CapitalQuestion.h"
#include "LedgerUI/Presentation/Records/RecordRow.h"

/// What was recorded of capital and dividends lately.
namespace LatestRecords {

/// The last ones of the currency that stand in the period, the latest first: a day, what it was and of whom, and the
/// amount.
RecordRows rows(const LedgerSnapshot& snapshot, const CapitalQuestion& question, std::string_view today,
                std::string_view locale);

}

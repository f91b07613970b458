#pragma once

#include <optional>
#include <string_view>

#include "LedgerUI/Presentation/Records/RecordPrint.h"

/// Dividends as they go to paper. Nothing where the records break a rule: part of the figures would mislead.
namespace DividendPrint {

/// What the tab shows of all allocations at once: each with its lines, the advances, and what settled them in the
/// period.
std::optional<PrintedDocument> section(const RecordPrint::Ground& ground);

/// How one participant stood at the end of the period: the sums, each allocation with what settled it, the advances,
/// and the movements of the period, the oldest first. Nothing for somebody unknown.
std::optional<PrintedDocument> statement(const RecordPrint::Ground& ground, std::string_view participantID);

}

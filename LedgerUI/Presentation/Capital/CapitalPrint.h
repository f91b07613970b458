#pragma once

#include <optional>

#include "LedgerUI/Presentation/Records/RecordPrint.h"

/// The page's first two tabs as they go to paper. Nothing where the records break a rule: part of the figures would
/// mislead.
namespace CapitalPrint {

/// The owners with their figures, the versions of their shares, and the latest records.
std::optional<PrintedDocument> overview(const RecordPrint::Ground& ground);

/// The contributions of the period, and what was paid in before these books.
std::optional<PrintedDocument> contributions(const RecordPrint::Ground& ground);

}

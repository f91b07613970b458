#pragma once

#include <array>
#include <string_view>
#include <vector>

#include "LedgerUI/Presentation/Reports/Sheets/ReportSheet.h"

namespace ReportParts {

/// Those of the page, in their order.
inline constexpr std::array all{ReportPart::overview, ReportPart::income, ReportPart::matrix, ReportPart::movements};

/// The stable name of a report: of its tab, and in the names of files.
std::string_view idOf(ReportPart part);

/// The tables of a report, those with rows.
std::vector<const ReportGrid*> tables(const ReportSheet& sheet, ReportPart part);

/// The currencies that its figures are about.
std::vector<std::string> currencies(const ReportSheet& sheet, ReportPart part);

}

#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Reports/Report.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportGrid.h"

namespace ReportPeriodGrids {

/// Of the row of a period.
std::string idOf(const Period& period);

/// Income, expense, net and closing balance of each period of a report, the newest first, each figure with the entries
/// behind it. `periods` are those of the report; balances add up from `firstDay` on.
ReportGrid table(const Report& report, const std::vector<Period>& periods, std::chrono::year_month_day firstDay,
                 std::string_view locale);

}

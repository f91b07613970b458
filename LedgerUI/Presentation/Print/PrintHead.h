#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Calendar/Period.h"
#include "LedgerUI/Presentation/Print/PrintedDocument.h"

/// When a document was asked for, by the clock on the wall.
struct PrintMoment {
    std::string day;  // "2026-11-20"
    std::string time; // "14:32"
};

/// What is said above the tables of every document.
namespace PrintHead {

PrintedFact period(const Period& period, std::string_view locale);
/// All accounts where none are named.
PrintedFact accounts(const std::vector<std::string>& names, std::string_view locale);
PrintedFact currency(std::string_view code, std::string_view locale);
PrintedFact asOf(const PrintMoment& moment, std::string_view locale);

/// "2026-11-01_2026-11-30", or the day of the moment for all time: for the names of files.
QString days(const Period& period, const PrintMoment& moment);

}

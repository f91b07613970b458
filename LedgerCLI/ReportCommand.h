#pragma once

#include <set>
#include <string>

#include "LedgerCLI/CommandAnswer.h"
#include "LedgerCore/Domain/Calendar/Period.h"
#include "LedgerCore/Domain/Reports/ReportSource.h"

namespace LedgerCLI {

namespace ReportCommand {

struct Request {
    std::string currency;
    std::string from; // days
    std::string to;
    Period::Span by = Period::Span::month;              // `dates` for one period
    std::set<std::string, std::less<>> accountIDs = {}; // none: all accounts
};

/// Opening, income and expense by category, every other movement, and closing, a period at a time.
CommandResult run(const ReportSource& source, const Request& request, const OutputStyle& style);

}

}

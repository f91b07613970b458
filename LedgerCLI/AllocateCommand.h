#pragma once

#include <string>
#include <vector>

#include "LedgerCLI/CommandAnswer.h"
#include "LedgerCore/Domain/Records/DividendState.h"

struct LedgerSnapshot;

namespace LedgerCLI {

namespace AllocateCommand {

struct Request {
    std::string total; // as typed, with a decimal point
    std::string currency;
    std::vector<DividendShare> shares; // none: the participants' own ratios
};

/// How a dividend would be split among the participants.
CommandResult run(const LedgerSnapshot& snapshot, Request request, const OutputStyle& style);

}

}

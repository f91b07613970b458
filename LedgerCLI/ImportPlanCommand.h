#pragma once

#include <string_view>

#include "LedgerCLI/CommandAnswer.h"

struct LedgerSnapshot;

namespace LedgerCLI {

namespace ImportPlanCommand {

/// What the file would record, or everything that is wrong with it. Writes nothing.
CommandResult run(std::string_view file, const LedgerSnapshot& snapshot, const OutputStyle& style);

}

}

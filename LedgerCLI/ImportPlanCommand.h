#pragma once

#include <string>
#include <string_view>

#include "LedgerCLI/CommandAnswer.h"

struct LedgerSnapshot;

namespace LedgerCLI {

namespace ImportPlanCommand {

/// What the file would record if it were sent on the day, or everything that is wrong with it: what cannot be read,
/// and in a file that can, what the service would refuse. Writes nothing.
CommandResult run(std::string_view file, const LedgerSnapshot& snapshot, const std::string& today,
                  const OutputStyle& style);

}

}

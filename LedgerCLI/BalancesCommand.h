#pragma once

#include "LedgerCLI/CommandAnswer.h"

struct LedgerSnapshot;

namespace BalancesCommand {

/// What each account holds in each of its currencies, in snapshot order.
CommandAnswer run(const LedgerSnapshot& snapshot, const OutputStyle& style);

}

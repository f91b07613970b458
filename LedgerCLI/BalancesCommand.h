#pragma once

#include <vector>

#include "LedgerCLI/CommandAnswer.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/PartialSnapshot.h"

namespace LedgerCLI {

namespace BalancesCommand {

/// Accounts say themselves what they hold.
using Source = PartialSnapshot<Json::Unread<std::vector<LedgerTransaction>>>;

/// What each account holds in each of its currencies, in snapshot order.
CommandAnswer run(const Source& source, const OutputStyle& style);

}

}

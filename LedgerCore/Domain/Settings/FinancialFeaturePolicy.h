#pragma once

#include <vector>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Settings/CapitalModuleTab.h"

/// Which of the owners'-capital features a company has switched on, and which of them a member is shown. Books
/// without financial settings have both on.
namespace FinancialFeaturePolicy {

bool contributionsEnabled(const LedgerSnapshot& snapshot);
bool dividendsEnabled(const LedgerSnapshot& snapshot);

/// The tabs shown to the current member, in their order. A feature that is off stays readable while it has records;
/// the overview is shown beside any other tab.
std::vector<CapitalModuleTab> activeTabs(const LedgerSnapshot& snapshot);

bool showsCapitalNavigation(const LedgerSnapshot& snapshot);

}

#pragma once

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Settings/FinancialFeaturePolicy.h"

/// What the member sees of capital and dividends. A tab can be theirs by their role while its records are not.
namespace CapitalSections {

/// An empty section where none was sent to who may see it; null for everybody else.
const CapitalState* capital(const LedgerSnapshot& snapshot);
const DividendState* dividends(const LedgerSnapshot& snapshot);

/// Whether the member sees the records of a tab: on the overview of one section at least.
bool isSeen(CapitalModuleTab tab, const LedgerSnapshot& snapshot);

}

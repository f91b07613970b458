#pragma once

#include <span>

#include <string_view>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Settings/TransactionColorOptions.h"

/// The company's colours for its kinds of entry, without what members chose for themselves.
namespace KindColors {

/// In the order in which they are offered.
std::span<const std::string_view> kinds();

const TransactionColorOption& ofCompany(std::string_view kind, const LedgerSnapshot& snapshot);

}

#pragma once

#include "LedgerUI/Presentation/Ledger/Listing/PageLink.h"

/// What pages can be asked to do by links between the ledger and the records of owners' money.
namespace PageAction {
inline constexpr const char* showEntry = "showEntry";               // ledger: one entry
inline constexpr const char* showContribution = "showContribution"; // dividends: one contribution of an owner
inline constexpr const char* showMovement = "showMovement";         // dividends: what settles an allocation or advance
}

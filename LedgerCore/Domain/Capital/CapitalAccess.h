#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// Where a member may book owners' contributions.
namespace CapitalAccess {

/// Whether contributions may be booked into this account as far as the account and its grants are concerned.
bool takesContributions(const Account& account, const Member& member);

/// The accounts into which the current member may book a contribution, in snapshot order; of one currency when one is
/// given. Pointers point into the snapshot.
std::vector<const Account*> accounts(const LedgerSnapshot& snapshot, std::optional<std::string_view> currency);

}

#pragma once

#include <optional>
#include <string_view>

#include "LedgerCore/Domain/Records/Category.h"
#include "LedgerCore/Domain/Records/Requests/MemberCommands.h"
#include "LedgerService/Commands/CommandAct.h"
#include "LedgerService/Refusal.h"

namespace LedgerService {

/// Changes to memberships. All expect a writing transaction; with a refusal nothing was written.
namespace Members {

/// Changes what a member of the company is and may do. The tokens of whoever is deactivated end with it.
std::optional<Refusal> change(const CommandAct& act, std::string_view memberID, const MemberUpdate& update);

/// Gives the acting person another name, in every company that the person belongs to.
std::optional<Refusal> rename(const CommandAct& act, const ProfileUpdate& update);

/// Has the category offered first to the acting member, or no longer.
std::optional<Refusal> select(const CommandAct& act, const CategorySelection& selection);

}

}

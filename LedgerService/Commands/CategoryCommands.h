#pragma once

#include <expected>
#include <string>
#include <string_view>

#include "LedgerCore/Domain/Records/Category.h"
#include "LedgerService/Commands/CommandAct.h"
#include "LedgerService/Refusal.h"

namespace LedgerService {

/// Making, changing and ordering categories.
namespace CategoryCommands {

/// The category's id; an active one that is exactly what the command asks for is taken for the outcome of an earlier
/// sending.
std::expected<std::string, Refusal> create(const CommandAct& act, const CategoryCreate& command);

std::expected<void, Refusal> update(const CommandAct& act, std::string_view categoryID, const CategoryUpdate& command);

std::expected<void, Refusal> reorder(const CommandAct& act, const CategoryReorder& command);

}

}

#pragma once

#include <string_view>

#include "LedgerCore/Domain/Entries/ReversalRules.h"
#include "LedgerCore/Domain/Text/WordTable.h"

/// What a person reads about an entry that cannot be reversed.
namespace ReversalWords {

const WordTable& words();

std::string_view key(ReversalRules::Refusal refusal);

}

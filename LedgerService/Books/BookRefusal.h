#pragma once

#include "LedgerCore/Domain/Entries/Posting/PostingRefusal.h"
#include "LedgerCore/Domain/Entries/Reversals/ReversalRules.h"
#include "LedgerService/Refusal.h"

namespace LedgerService {

/// What the books refuse, with the status and the code that clients know.
namespace BookRefusal {

Refusal of(PostingReason reason);
Refusal of(ReversalRules::Refusal refusal);

}

}

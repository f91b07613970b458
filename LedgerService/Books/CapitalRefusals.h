#pragma once

#include "LedgerCore/Domain/Capital/CapitalRules.h"
#include "LedgerService/Refusal.h"

namespace LedgerService {

/// What the rules of the section refuse, with the status and the code that clients know.
namespace CapitalRefusals {

Refusal of(CapitalRefusal refusal);

}

}

#pragma once

#include "LedgerCore/Domain/Dividends/DividendRules.h"
#include "LedgerService/Refusal.h"

namespace LedgerService {

/// What the rules of the section refuse, with the status and the code that clients know.
namespace DividendRefusals {

Refusal of(DividendRefusal refusal);

}

}

#pragma once

#include "LedgerCore/Domain/Access/MembershipRules.h"
#include "LedgerService/Refusal.h"

namespace LedgerService {

namespace MembershipRefusal {

/// What the rules on rights refuse, with the code that clients know.
Refusal of(MembershipRules::Refusal refusal);

}

}

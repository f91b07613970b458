#pragma once

#include "LedgerCore/Domain/Access/AccountRules.h"
#include "LedgerCore/Domain/Categories/CategoryRules.h"
#include "LedgerCore/Domain/Settings/FinancialSettingsCommand.h"
#include "LedgerCore/Domain/Templates/TemplateRules.h"
#include "LedgerService/Refusal.h"

namespace LedgerService {

/// What is refused of setting a company up, with the code that clients know.
namespace SetupRefusal {

Refusal of(AccountRules::Refusal reason);
Refusal of(CategoryRules::Refusal reason);
Refusal of(FinancialSettingsRules::Refusal reason);
Refusal of(TemplateRules::Refusal reason);

}

}

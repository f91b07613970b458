#pragma once

#include <string_view>

#include <QString>

#include "LedgerCore/Domain/Capital/CapitalRules.h"
#include "LedgerCore/Domain/Dividends/DividendRules.h"

/// What a person reads where a change to capital or dividends is not accepted. What the service would say of it is said
/// in the same words.
QString refusalText(CapitalRefusal refusal, std::string_view locale);
QString refusalText(DividendRefusal refusal, std::string_view locale);

#pragma once

#include <string>
#include <string_view>

#include "LedgerCore/Domain/Text/WordTable.h"

namespace LedgerService {

/// What the demonstration company calls its people, accounts and business, in its own language.
namespace DemoWords {

/// Company, people, accounts, trading partners ("partner0" to "partner7") and months ("month1" to "month12").
const WordTable& names();

/// Notes of entries. "%1" is the month, "%2" a number such as an invoice's, "%3" a trading partner.
const WordTable& notes();

}

}

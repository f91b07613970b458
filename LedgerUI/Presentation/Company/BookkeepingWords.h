#pragma once

#include "LedgerCore/Domain/Text/WordTable.h"

/// How the books are kept: their first day, opening balances, switches and colours.
const WordTable& bookkeepingWords();

#pragma once

#include "LedgerCore/Domain/Text/WordTable.h"

/// What the entry form and the reversal dialog say of themselves, beside the shared entry wording.
const WordTable& entryFormWords();

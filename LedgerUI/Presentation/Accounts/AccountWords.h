#pragma once

#include "LedgerCore/Domain/Text/WordTable.h"

/// What the page of accounts says.
const WordTable& accountWords();

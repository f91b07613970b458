#pragma once

#include "LedgerCore/Domain/Text/WordTable.h"

/// What the form of an account says, and how the rules' refusals read in it.
const WordTable& accountFormWords();

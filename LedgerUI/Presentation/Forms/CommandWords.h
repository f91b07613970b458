#pragma once

#include "LedgerCore/Domain/Text/WordTable.h"

/// What every form that sends a command says of the sending itself, beside the shared entry wording.
const WordTable& commandWords();

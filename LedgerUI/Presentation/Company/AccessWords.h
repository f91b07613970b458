#pragma once

#include "LedgerCore/Domain/Text/WordTable.h"

/// What rights are called, and why some cannot be given or taken.
const WordTable& accessWords();

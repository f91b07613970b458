#pragma once

#include "LedgerCore/Domain/Text/WordTable.h"

/// What the tab of categories says.
const WordTable& categoryWords();

#pragma once

#include "LedgerCore/Domain/Text/WordTable.h"

/// The texts of the list of requests that were not confirmed.
const WordTable& requestWords();

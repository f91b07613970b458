#pragma once

#include "LedgerCore/Domain/Text/WordTable.h"

/// What the user reads about failures that are neither the service's nor those of reaching it.
const WordTable& storeMessages();

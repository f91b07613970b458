#pragma once

#include "LedgerCore/Domain/Text/WordTable.h"

/// What the user reads about failures of the service and of reaching it, by `APIError::messageKey`.
const WordTable& serviceMessages();

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "LedgerCore/Domain/Text/WordTable.h"

/// What the user reads about failures of the service and of reaching it, by `APIError::messageKey`.
const WordTable& serviceMessages();

/// What the user reads about failures that are neither the service's nor those of reaching it.
const WordTable& storeMessages();

/// How far an import came that did not come to its end, and how it goes on.
std::string importStoppedText(std::size_t confirmed, std::string_view locale);

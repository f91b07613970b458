#pragma once

#include <QString>

#include "LedgerCore/Domain/Text/WordTable.h"

/// What the entry form and the reversal dialog say of themselves, beside the shared entry wording.
const WordTable& entryFormWords();

/// A text of the entry form, of whichever of its tables holds the key, in the language of `locale`.
QString entryWord(std::string_view key, std::string_view locale);

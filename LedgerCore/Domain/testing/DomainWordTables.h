#pragma once

#include <array>

#include "LedgerCore/Domain/Entries/EntryCopy.h"
#include "LedgerCore/Domain/Entries/EntryProblem.h"
#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerCore/Domain/Entries/ReversalWords.h"
#include "LedgerCore/Domain/Imports/LedgerImportWords.h"

/// Every table of texts that the domain holds; a new one is added here.
inline std::array<const WordTable*, 5> domainWordTables()
{
    return {&EntryWords::words(), &EntryCopy::words(), &EntryProblem::words(), &ReversalWords::words(),
            &LedgerImportWords::table()};
}

#pragma once

#include "LedgerCore/Domain/Text/WordTable.h"

/// Wording that the entry form shares with the screens around it.
namespace EntryCopy {

const WordTable& words();

}
